#pragma once

#include "MeshUtils/kyPointOnGeometry.h"

#include <memory>

/// An octree over the triangles of a geometry, for closest points: each triangle lies in the cell
/// of its middle, and each cell knows the box of its triangles.
class kyTriangleOctree
{
public:
    /// The geometry may be null; nothing is found then. It must live as long as the tree is asked.
    explicit kyTriangleOctree(const osg::GeometryPtr& geometry);
    ~kyTriangleOctree();
    kyTriangleOctree(kyTriangleOctree&&) noexcept;
    kyTriangleOctree& operator=(kyTriangleOctree&&) noexcept;

    /// Reads the geometry as it is now; a change after that is not seen until the next build.
    /// O(n log n) in triangles.
    void build();

    /// The same as kyMeshPointQuery::findClosestPoint, bit for bit; nothing before `build`.
    /// Safe from many threads at once.
    bool getClosestPoint(const osg::Pnt3f& point, kyPointOnGeometry& result) const;

private:
    struct Tree;

    osg::GeometryPtr geometry_;
    std::unique_ptr<Tree> tree_;
};
