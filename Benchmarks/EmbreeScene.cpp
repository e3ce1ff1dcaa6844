#include "EmbreeScene.h"

#include "OpenSG/TriangleCorners.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace bench
{

namespace
{

using osg::Vec3f;

/// Any point of a triangle as a + v (b - a) + w (c - a).
struct Mesh
{
    const osg::Pnt3f* positions;
    const unsigned int* corners;
};

/// The vector from a point to the closest one of a triangle that has its first corner at `a` and
/// the edges ab, ac; all as seen from the point.
Vec3f toTriangle(const Vec3f& a, const Vec3f& ab, const Vec3f& ac)
{
    const float d1 = -ab.dot(a);
    const float d2 = -ac.dot(a);
    if (d1 <= 0 && d2 <= 0)
        return a;
    const Vec3f b = a + ab;
    const float d3 = -ab.dot(b);
    const float d4 = -ac.dot(b);
    if (d3 >= 0 && d4 <= d3)
        return b;
    const Vec3f c = a + ac;
    const float d5 = -ab.dot(c);
    const float d6 = -ac.dot(c);
    if (d6 >= 0 && d5 <= d6)
        return c;
    const float vc = d1 * d4 - d3 * d2;
    if (vc <= 0 && d1 >= 0 && d3 <= 0)
        return a + ab * (d1 / (d1 - d3));
    const float vb = d5 * d2 - d1 * d6;
    if (vb <= 0 && d2 >= 0 && d6 <= 0)
        return a + ac * (d2 / (d2 - d6));
    const float va = d3 * d6 - d5 * d4;
    if (va <= 0 && d4 - d3 >= 0 && d5 - d6 >= 0)
        return b + (ac - ab) * ((d4 - d3) / ((d4 - d3) + (d5 - d6)));
    const float scale = 1 / (va + vb + vc);
    return a + ab * (vb * scale) + ac * (vc * scale);
}

struct Search
{
    Mesh mesh;
    EmbreeScene::Answer answer;
};

/// Takes a triangle that is nearer than the search reaches, and draws the search in to it.
bool takeTriangle(RTCPointQueryFunctionArguments* arguments)
{
    auto& search = *static_cast<Search*>(arguments->userPtr);
    RTCPointQuery& query = *arguments->query;
    const unsigned int* const ids = search.mesh.corners + std::size_t{3} * arguments->primID;
    const osg::Pnt3f point(query.x, query.y, query.z);
    const osg::Pnt3f& a = search.mesh.positions[ids[0]];
    const float distance =
        toTriangle(a - point, search.mesh.positions[ids[1]] - a, search.mesh.positions[ids[2]] - a)
            .length();
    if (distance >= query.radius)
        return false;
    query.radius = distance;
    search.answer = {arguments->primID, distance};
    return true;
}

} // namespace

EmbreeScene::EmbreeScene(const osg::GeometryPtr& geometry)
    : device_(rtcNewDevice(nullptr)), scene_(rtcNewScene(device_))
{
    addMesh(geometry);
    rtcCommitScene(scene_);
}

EmbreeScene::~EmbreeScene()
{
    rtcReleaseScene(scene_);
    rtcReleaseDevice(device_);
}

void EmbreeScene::addMesh(const osg::GeometryPtr& geometry)
{
    const std::vector<unsigned int> corners = osg::triangleCorners(*geometry);
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions())->values();
    RTCGeometry mesh = rtcNewGeometry(device_, RTC_GEOMETRY_TYPE_TRIANGLE);
    std::ranges::copy(positions, static_cast<osg::Pnt3f*>(rtcSetNewGeometryBuffer(
                                     mesh, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                     sizeof(osg::Pnt3f), positions.size())));
    std::ranges::copy(corners, static_cast<unsigned int*>(rtcSetNewGeometryBuffer(
                                   mesh, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                   3 * sizeof(unsigned int), corners.size() / 3)));
    rtcCommitGeometry(mesh);
    rtcAttachGeometry(scene_, mesh);
    rtcReleaseGeometry(mesh);
}

EmbreeScene::Answer EmbreeScene::closest(const osg::Pnt3f& point) const
{
    RTCGeometry mesh = rtcGetGeometry(scene_, 0);
    Search search{
        {static_cast<const osg::Pnt3f*>(rtcGetGeometryBufferData(mesh, RTC_BUFFER_TYPE_VERTEX, 0)),
         static_cast<const unsigned int*>(
             rtcGetGeometryBufferData(mesh, RTC_BUFFER_TYPE_INDEX, 0))},
        {}};
    RTCPointQuery query{point.x(), point.y(), point.z(), 0, std::numeric_limits<float>::infinity()};
    RTCPointQueryContext context;
    rtcInitPointQueryContext(&context);
    rtcPointQuery(scene_, &query, &context, takeTriangle, &search);
    return search.answer;
}

EmbreeScene::Answer EmbreeScene::firstHit(const osg::Pnt3f& origin,
                                          const osg::Vec3f& direction) const
{
    RTCRayHit ray = {};
    ray.ray.org_x = origin.x();
    ray.ray.org_y = origin.y();
    ray.ray.org_z = origin.z();
    ray.ray.dir_x = direction.x();
    ray.ray.dir_y = direction.y();
    ray.ray.dir_z = direction.z();
    ray.ray.tfar = std::numeric_limits<float>::infinity();
    ray.ray.mask = 0xFFFFFFFFU;
    ray.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcIntersect1(scene_, &context, &ray);
    const bool isHit = ray.hit.geomID != RTC_INVALID_GEOMETRY_ID;
    return {ray.hit.primID, isHit ? ray.ray.tfar : 0.F};
}

} // namespace bench
