#include "MeshUtils/kyMeshPointQuery.h"

#include "MeshUtils/BoundingVolumes.h"
#include "MeshUtils/ClosestInTree.h"
#include "MeshUtils/RayInTree.h"

struct kyMeshPointQuery::Tree
{
    SurfaceTriangles triangles;
    BoxTree boxes;

    void search(const Ray& ray, const std::array<float, 3>& origin, RaySearch& search) const
    {
        if (SearchSpace::isNear(origin)) {
            searchRay(boxes, triangles.packed(), RayBoxes(ray, origin), search);
            return;
        }
        for (const SortedTriangle& triangle : triangles.packed())
            search.offer(triangle);
    }
};

namespace
{

bool isDirection(const osg::Vec3f& direction)
{
    return isFinite(osg::Pnt3f(direction)) && direction != osg::Vec3f();
}

} // namespace

kyMeshPointQuery::kyMeshPointQuery() : tree_(std::make_unique<Tree>()) {}
kyMeshPointQuery::~kyMeshPointQuery() = default;
kyMeshPointQuery::kyMeshPointQuery(kyMeshPointQuery&&) noexcept = default;
kyMeshPointQuery& kyMeshPointQuery::operator=(kyMeshPointQuery&&) noexcept = default;

void kyMeshPointQuery::build(const osg::GeometryPtr& geometry)
{
    tree_->triangles = SurfaceTriangles(geometry);
    tree_->boxes = buildBoundingVolumes(tree_->triangles);
}

bool kyMeshPointQuery::isValid() const
{
    return !tree_->triangles.isEmpty();
}

bool kyMeshPointQuery::findClosestPoint(const osg::Pnt3f& point, kyPointOnGeometry& result) const
{
    return findClosest(tree_->boxes, tree_->triangles, point, result);
}

bool kyMeshPointQuery::castRay(const osg::Pnt3f& origin, const osg::Vec3f& direction,
                               float maxDistance, kyPointOnGeometry& result, float& distance) const
{
    result = kyPointOnGeometry();
    if (!isValid() || !isFinite(origin) || !isDirection(direction) || !(maxDistance > 0))
        return false;
    const Ray ray(origin, direction);
    RaySearch search(ray, maxDistance);
    tree_->search(ray, tree_->boxes.space.place(origin), search);
    if (!search.hasFound())
        return false;
    result = tree_->triangles.pointAt(search.triangle(), search.hit().weights);
    distance = static_cast<float>(search.hit().distance);
    return true;
}
