#pragma once

#include "scene/SceneGeometry.h"

#include "MeshUtils/kyMeshPointQuery.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/RefPtr.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// Where the triangles of a target lie on a source, both in one frame.
struct NearestTriangles
{
    std::vector<std::uint32_t> triangles; ///< [triangle of the target] the nearest to its middle
    double distance = 0.0;                ///< the largest from a middle to the source
};

/// Finds triangles of a source, of which there has to be one.
class NearestTriangleSearch
{
public:
    /// O(s log s) for s triangles. The source isn't needed any more afterwards.
    explicit NearestTriangleSearch(const SceneGeometry& source);

    /// Searches on all threads. Where no number can tell the nearest triangle it is 0. O(t log s)
    /// for t triangles of the target.
    NearestTriangles of(const SceneGeometry& target) const;

private:
    osg::RefPtr<osg::Geometry> source_;
    kyMeshPointQuery query_;
};

} // namespace uvtool
