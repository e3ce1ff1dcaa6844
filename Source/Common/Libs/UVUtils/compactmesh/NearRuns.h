#pragma once

#include "OpenSG/Vector.h"

#include <span>
#include <vector>

/// Cuts sorted positions into runs that the weld tolerance cannot tie together: positions of two
/// runs are never near each other, and none lies between two near ones of another run.
///
/// sorted  [place] by x, y, z without tolerance (isBefore)
///
/// Returns [place] whether the run of a place goes on at the next one. Runs may be longer than
/// they must be where very many positions nearly share a line. n log n at worst, linear where
/// coordinates are equal or further apart than the tolerance.
std::vector<char> findNearRuns(std::span<const osg::Pnt3f> sorted);
