#pragma once

#include "MeshUtils/kyPointOnGeometry.h"

/// Closest points with nothing made ready: for a handful of points on one geometry.
class kyGeoSampler
{
public:
    /// The point of the geometry's surface that is closest to `point`: bit for bit what
    /// kyMeshPointQuery::findClosestPoint finds, and where it finds nothing.
    ///
    /// startTriangle  measured first, which can save time and never changes the answer; -1 for none
    ///
    /// Linear in triangles. Safe from many threads at once.
    static bool getClosestPoint(const osg::GeometryPtr& geometry, const osg::Pnt3f& point,
                                kyPointOnGeometry& result, int startTriangle = -1);
};
