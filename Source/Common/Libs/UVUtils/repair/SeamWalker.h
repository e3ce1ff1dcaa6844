#pragma once

#include "MeshUtils/kyPointOnGeometry.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/Plane.h"
#include "OpenSG/RefPtr.h"

#include <vector>

/// Finds out whether one can walk over the triangles of a geometry from one point to another
/// without a great detour and without crossing a seam. A seam is a border edge: where UVs are
/// parted, there are two vertices in one place, and no triangle has an edge with both sheets.
///
/// An edge is named by the side of a triangle that runs along it: side 3 * t + k goes from corner k
/// of triangle t to the next one.
///
/// Made once and read only from then on, by any number of threads. The triangles and positions are
/// those of the time when it was made.
class SeamWalker
{
public:
    /// geometry  a list of triangles that passes kyGeoUtils::checkGeometryCore
    ///
    /// Linear in triangles plus vertices, but for the sorting of the edges at one vertex.
    explicit SeamWalker(const osg::GeometryPtr& geometry);

    /// Does a way lead from a point on one triangle to a point on another that is at most about
    /// lengthFactor times as long as the straight line?
    ///
    /// plane  the way keeps to it where there is one; else it may bend at each edge
    /// out    becomes the point closest to the end that a refused way came to, which is on a seam,
    ///        or on an edge that the way may not use again; stays as it is where no way was
    ///        refused. May be null.
    ///
    /// The way ends short of an edge that passes within a thousandth of the end: that is no way,
    /// and `out` is on that edge then, in the triangle from which it was reached. False for
    /// triangles that are not there. True for points so far apart that the square of the distance
    /// is no float: seams can't be told there. Takes time in the triangles within reach.
    bool findPath(const osg::Pnt3f& start, int startTriangle, const osg::Pnt3f& end,
                  int endTriangle, const osg::Plane* plane, kyPointOnGeometry* out) const;

private:
    static constexpr int noTriangle = -1;

    struct Side
    {
        unsigned int vertex; ///< where it begins
        /// The first triangle at the edge that is not the side's own. There is none at a border
        /// edge; nor where a triangle that names a vertex twice runs along the edge both times.
        int neighbour;
    };

    osg::RefPtr<osg::Geometry> geometry_;
    std::vector<osg::Pnt3f> positions_;
    std::vector<Side> sides_; ///< three a triangle

    /// A search for a way over these arrays.
    class Search;
    friend class Search;
};
