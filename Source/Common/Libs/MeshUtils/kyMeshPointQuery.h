#pragma once

#include "MeshUtils/kyPointOnGeometry.h"

#include <memory>

/// A bounding volume hierarchy over the triangles of a geometry, for closest points and rays.
///
/// Triangles are counted as osg::TriangleIterator does. Those with an id beyond the positions or a
/// corner that is not finite are left out. One without an area counts as its longest edge, or as a
/// point; so does a sliver whose angle at a corner is below 2^-22.
///
/// Distances are measured in double, of the floats as they are. All finite floats will do: meshes
/// from 1e-45 to 1e38 in size and any distance from them, though a point or an origin of a ray
/// farther away than 2^60 times the largest coordinate is compared with every triangle.
///
/// Equal distances go to the triangle of the lowest number, and a point that is closest to a shared
/// edge or vertex is equally far from all triangles there, to the last bit. So the answers do not
/// depend on how the tree came out, and are those of kyTriangleOctree and kyGeoSampler.
class kyMeshPointQuery
{
public:
    kyMeshPointQuery();
    ~kyMeshPointQuery();
    kyMeshPointQuery(kyMeshPointQuery&&) noexcept;
    kyMeshPointQuery& operator=(kyMeshPointQuery&&) noexcept;

    /// Reads the geometry as it is now; a change after that is not seen until the next build. The
    /// geometry must live as long as questions are asked. Not safe beside questions on the same
    /// object. O(n log n) in triangles.
    void build(const osg::GeometryPtr& geometry);
    /// Whether there is something to find: not before `build`, nor for a null geometry or one
    /// without usable triangles.
    [[nodiscard]] bool isValid() const;

    /// The closest point of the surface. Returns false, with a result without a geometry, if there
    /// is none or a coordinate of the point is not finite.
    ///
    /// result  what it holds on entry serves as a guess: the answer for a point nearby makes the
    ///         search fast. It never changes what is found. Points in the order of a space-filling
    ///         curve, each with the last answer in `result`, are found fastest.
    ///
    /// Safe from many threads at once.
    bool findClosestPoint(const osg::Pnt3f& point, kyPointOnGeometry& result) const;

    /// The nearest place where a ray meets the surface, from either side, at a distance of at least
    /// 0 and less than maxDistance, which may be infinite. No ray slips through between triangles
    /// that share an edge or a vertex. One that runs within the plane of a triangle may pass it by.
    ///
    /// direction  of any length but 0
    /// distance   to the hit, in units of the mesh whatever the length of the direction
    ///
    /// Returns false, with a result without a geometry and the distance as it was, if there is no
    /// hit or the ray is not finite. Safe from many threads at once.
    bool castRay(const osg::Pnt3f& origin, const osg::Vec3f& direction, float maxDistance,
                 kyPointOnGeometry& result, float& distance) const;

private:
    struct Tree;

    std::unique_ptr<Tree> tree_;
};
