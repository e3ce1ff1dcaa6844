#pragma once

#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"

/// Closed surfaces of any size, without UVs, for what has to find its own seams. The same on every
/// run.
namespace bench
{

/// A smooth body with a head, a tail and four legs, of about `triangleCount` triangles.
osg::RefPtr<osg::Node> closedBody(unsigned int triangleCount);

/// A gear wheel with a hub: planes and cylinders between sharp edges.
osg::RefPtr<osg::Node> closedGear(unsigned int triangleCount);

} // namespace bench
