#include "Unfold3D/seams/Occluder.h"

#include <algorithm>
#include <limits>

namespace unfold3d
{

namespace
{

/// Rays begin this share of the size of the surface away from it.
constexpr double liftOff = 1e-4;

/// Whether to go on; no exception may come through the library that calls this.
bool passCheckpoint(void* control, double /*workDone*/)
{
    try {
        (*static_cast<const RunControl**>(control))->checkpoint();
        return true;
    } catch (const Stopped&) {
        return false;
    }
}

} // namespace

Occluder::Occluder(std::span<const Vec3> positions, std::span<const Triangle> triangles,
                   const RunControl& control)
    : device_(rtcNewDevice("threads=1"), rtcReleaseDevice),
      scene_(rtcNewScene(device_.get()), rtcReleaseScene)
{
    placeInUnitCube(positions);
    rtcSetSceneFlags(scene_.get(), RTC_SCENE_FLAG_ROBUST);
    rtcSetSceneBuildQuality(scene_.get(), RTC_BUILD_QUALITY_MEDIUM);
    addGeometry(positions, triangles);
    control.checkpoint();
    // Asked now and then while the tree is built, which is given up on false.
    const RunControl* asked = &control;
    rtcSetSceneProgressMonitorFunction(scene_.get(), passCheckpoint, &asked);
    rtcCommitScene(scene_.get());
    rtcSetSceneProgressMonitorFunction(scene_.get(), nullptr, nullptr);
    control.checkpoint();
}

void Occluder::placeInUnitCube(std::span<const Vec3> positions)
{
    Vec3 low = positions.front();
    Vec3 high = low;
    for (const Vec3 p : positions) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    const Vec3 size = high - low;
    const double largest = std::max({size.x, size.y, size.z});
    scale_ = largest > 0.0 ? 1.0 / largest : 1.0;
    centre_ = low + 0.5 * size;
}

void Occluder::addGeometry(std::span<const Vec3> positions, std::span<const Triangle> triangles)
{
    RTCGeometry geometry = rtcNewGeometry(device_.get(), RTC_GEOMETRY_TYPE_TRIANGLE);
    auto* corners = static_cast<float*>(
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                3 * sizeof(float), positions.size()));
    for (const Vec3 position : positions) {
        const Vec3 p = placed(position);
        for (const double coordinate : {p.x, p.y, p.z})
            *corners++ = static_cast<float>(coordinate);
    }
    auto* indices = static_cast<unsigned*>(
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                3 * sizeof(unsigned), triangles.size()));
    for (const Triangle& t : triangles)
        for (const int v : t)
            *indices++ = static_cast<unsigned>(v);
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(scene_.get(), geometry);
    rtcReleaseGeometry(geometry);
}

double Occluder::lightAt(Vec3 point, Vec3 normal, std::span<const Vec3> directions) const
{
    const Vec3 origin = placed(point) + liftOff * normal;
    double all = 0.0;
    double seen = 0.0;
    for (const Vec3 direction : directions) {
        const double weight = dot(direction, normal);
        if (weight <= 0.0)
            continue;
        all += weight;
        if (!isBlocked(origin, direction))
            seen += weight;
    }
    return all > 0.0 ? seen / all : 1.0;
}

bool Occluder::isBlocked(Vec3 origin, Vec3 direction) const
{
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    RTCRay ray{};
    ray.org_x = static_cast<float>(origin.x);
    ray.org_y = static_cast<float>(origin.y);
    ray.org_z = static_cast<float>(origin.z);
    ray.dir_x = static_cast<float>(direction.x);
    ray.dir_y = static_cast<float>(direction.y);
    ray.dir_z = static_cast<float>(direction.z);
    ray.tfar = std::numeric_limits<float>::infinity();
    ray.mask = ~0U;
    rtcOccluded1(scene_.get(), &context, &ray);
    return ray.tfar < 0.0F;
}

} // namespace unfold3d
