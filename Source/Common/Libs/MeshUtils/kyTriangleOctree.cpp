#include "MeshUtils/kyTriangleOctree.h"

#include "MeshUtils/ClosestInTree.h"
#include "MeshUtils/Octree.h"

struct kyTriangleOctree::Tree
{
    SurfaceTriangles triangles;
    BoxTree boxes;
};

kyTriangleOctree::kyTriangleOctree(const osg::GeometryPtr& geometry)
    : geometry_(geometry), tree_(std::make_unique<Tree>())
{}

kyTriangleOctree::~kyTriangleOctree() = default;
kyTriangleOctree::kyTriangleOctree(kyTriangleOctree&&) noexcept = default;
kyTriangleOctree& kyTriangleOctree::operator=(kyTriangleOctree&&) noexcept = default;

void kyTriangleOctree::build()
{
    tree_->triangles = SurfaceTriangles(geometry_);
    tree_->boxes = buildOctree(tree_->triangles);
}

bool kyTriangleOctree::getClosestPoint(const osg::Pnt3f& point, kyPointOnGeometry& result) const
{
    return findClosest(tree_->boxes, tree_->triangles, point, result);
}
