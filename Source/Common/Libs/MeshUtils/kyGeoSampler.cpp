#include "MeshUtils/kyGeoSampler.h"

#include "MeshUtils/SurfaceTriangles.h"

bool kyGeoSampler::getClosestPoint(const osg::GeometryPtr& geometry, const osg::Pnt3f& point,
                                   kyPointOnGeometry& result, int startTriangle)
{
    result = kyPointOnGeometry();
    const SurfaceTriangles triangles(isFinite(point) ? geometry : osg::NullFC);
    if (triangles.isEmpty())
        return false;
    ClosestSearch search(point);
    kyPointOnGeometry guess;
    guess.geometry = geometry;
    guess.triangle = startTriangle;
    triangles.offerGuess(guess, search);
    triangles.searchAll(search);
    result = triangles.pointAt(search.triangle(), search.weights());
    return true;
}
