#pragma once

#include "OpenSG/Geometry.h"

namespace bench
{

/// The plainest merge of the corners of a triangle list: one look into a hash table of position and
/// UV (slot 0) for each corner. Returns how many different ones there are.
unsigned int countDistinctCorners(const osg::GeometryPtr& geometry);

} // namespace bench
