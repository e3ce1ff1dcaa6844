#pragma once

#include "OpenSG/Vector.h"

#include <span>
#include <vector>

/// Is a before b by x, then y, then z, without tolerance? NaNs come last (orderedBits).
bool isBefore(const osg::Pnt3f& a, const osg::Pnt3f& b);

/// The vertex numbers in ascending order of position; vertices at equal positions ascend by
/// number. This is the order of the vertices of a compact mesh. Linear, and quicker when all but a
/// few of the positions stand in order already.
std::vector<unsigned int> orderByPosition(std::span<const osg::Pnt3f> positions);
