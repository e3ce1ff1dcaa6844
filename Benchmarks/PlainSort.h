#pragma once

#include "OpenSG/Vector.h"

#include <vector>

namespace bench
{

/// The least that anyone needs who puts a mesh in order: one std::sort of its vertices by position,
/// and one of its triangles by their ids, which are sorted within each first. Both are copied.
///
/// triangles  [3 * triangle] vertices, in any numbering
void sortPlainly(std::vector<osg::Pnt3f> positions, const std::vector<unsigned int>& triangles);

} // namespace bench
