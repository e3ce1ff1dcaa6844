#include "Unfold3D/seams/Visibility.h"

#include "Unfold3D/linear/VertexGraph.h"

#include <embree3/rtcore.h>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>

namespace unfold3d
{

namespace
{

constexpr int directionCount = 48;
/// Vertices to trace rays from: enough to find the folds of a body.
constexpr int sampleCount = 6000;
/// Rounds in which a vertex takes the mean of itself and its neighbours.
constexpr int smoothings = 3;
/// Rays begin this share of the size of the surface away from it.
constexpr double liftOff = 1e-4;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Directions all around, evenly: a spiral by the golden angle.
std::array<Vec3, directionCount> evenDirections()
{
    std::array<Vec3, directionCount> directions;
    const double goldenAngle = std::numbers::pi * (3.0 - std::sqrt(5.0));
    for (int i = 0; i < directionCount; ++i) {
        const double z = 1.0 - (2.0 * i + 1.0) / directionCount;
        const double r = std::sqrt(1.0 - z * z);
        directions[at(i)] = {r * std::cos(goldenAngle * i), r * std::sin(goldenAngle * i), z};
    }
    return directions;
}

std::vector<Vec3> vertexNormals(std::span<const Vec3> positions,
                                std::span<const Triangle> triangles)
{
    std::vector<Vec3> normals(positions.size());
    for (const Triangle& t : triangles) {
        const Vec3 a = positions[at(t[0])];
        const Vec3 n = cross(positions[at(t[1])] - a, positions[at(t[2])] - a);
        for (const int v : t)
            normals[at(v)] = normals[at(v)] + n;
    }
    for (Vec3& n : normals) {
        const double l = length(n);
        n = l > 0.0 ? (1.0 / l) * n : Vec3{};
    }
    return normals;
}

/// The surface in a unit cube around the origin, ready to be asked whether a ray hits it.
class Occluder
{
public:
    Occluder(std::span<const Vec3> positions, std::span<const Triangle> triangles)
        : device_(rtcNewDevice("threads=1"), rtcReleaseDevice),
          scene_(rtcNewScene(device_.get()), rtcReleaseScene)
    {
        placeInUnitCube(positions);
        rtcSetSceneFlags(scene_.get(), RTC_SCENE_FLAG_ROBUST);
        rtcSetSceneBuildQuality(scene_.get(), RTC_BUILD_QUALITY_MEDIUM);
        RTCGeometry geometry = rtcNewGeometry(device_.get(), RTC_GEOMETRY_TYPE_TRIANGLE);
        auto* corners = static_cast<float*>(
            rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                    3 * sizeof(float), positions.size()));
        for (std::size_t v = 0; v < positions.size(); ++v) {
            const Vec3 p = placed(positions[v]);
            corners[3 * v] = static_cast<float>(p.x);
            corners[3 * v + 1] = static_cast<float>(p.y);
            corners[3 * v + 2] = static_cast<float>(p.z);
        }
        auto* indices = static_cast<unsigned*>(
            rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                    3 * sizeof(unsigned), triangles.size()));
        for (std::size_t t = 0; t < triangles.size(); ++t)
            for (std::size_t i = 0; i < 3; ++i)
                indices[3 * t + i] = static_cast<unsigned>(triangles[t][i]);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(scene_.get(), geometry);
        rtcReleaseGeometry(geometry);
        rtcCommitScene(scene_.get());
    }

    /// The share of light that reaches `p` from the side of `normal`, cosine weighted.
    double lightAt(Vec3 p, Vec3 normal, std::span<const Vec3> directions) const
    {
        const Vec3 origin = placed(p) + liftOff * normal;
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

private:
    void placeInUnitCube(std::span<const Vec3> positions)
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
    Vec3 placed(Vec3 p) const { return scale_ * (p - centre_); }

    bool isBlocked(Vec3 origin, Vec3 direction) const
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

    Vec3 centre_;
    double scale_ = 1.0;
    std::unique_ptr<std::remove_pointer_t<RTCDevice>, decltype(&rtcReleaseDevice)> device_;
    std::unique_ptr<std::remove_pointer_t<RTCScene>, decltype(&rtcReleaseScene)> scene_;
};

constexpr double unknown = -1.0;

/// Values of every so manieth vertex, the others unknown.
std::vector<double> sampleLight(std::span<const Vec3> positions,
                                std::span<const Triangle> triangles, const RunControl& control)
{
    const Occluder occluder(positions, triangles);
    const std::array<Vec3, directionCount> directions = evenDirections();
    const std::vector<Vec3> normals = vertexNormals(positions, triangles);
    const int vertexCount = static_cast<int>(positions.size());
    const int step = std::max(1, vertexCount / sampleCount);
    std::vector<double> light(positions.size(), unknown);
    tbb::parallel_for(tbb::blocked_range<int>(0, (vertexCount + step - 1) / step, 64),
                      [&](const tbb::blocked_range<int>& range) {
                          control.checkpoint();
                          for (int i = range.begin(); i < range.end(); ++i) {
                              const std::size_t v = at(i * step);
                              if (normals[v] == Vec3{})
                                  continue;
                              light[v] = std::max(
                                  occluder.lightAt(positions[v], normals[v], directions),
                                  occluder.lightAt(positions[v], -1.0 * normals[v], directions));
                          }
                      });
    return light;
}

/// Gives unknown vertices the mean of their known neighbours, ring by ring.
void spread(const VertexGraph& graph, std::vector<double>& values, const RunControl& control)
{
    std::vector<int> front;
    for (int v = 0; v < graph.size(); ++v)
        if (values[at(v)] == unknown)
            front.push_back(v);
    for (bool changed = true; changed && !front.empty();) {
        control.checkpoint();
        std::vector<int> waiting;
        std::vector<std::pair<int, double>> found;
        for (const int v : front) {
            double sum = 0.0;
            int known = 0;
            for (const int w : graph.of(v))
                if (values[at(w)] != unknown) {
                    sum += values[at(w)];
                    ++known;
                }
            if (known > 0)
                found.emplace_back(v, sum / known);
            else
                waiting.push_back(v);
        }
        for (const auto& [v, value] : found)
            values[at(v)] = value;
        changed = !found.empty();
        front = std::move(waiting);
    }
    for (double& value : values)
        if (value == unknown)
            value = 1.0;
}

void smooth(const VertexGraph& graph, std::vector<double>& values)
{
    std::vector<double> next(values.size());
    for (int v = 0; v < graph.size(); ++v) {
        double sum = values[at(v)];
        for (const int w : graph.of(v))
            sum += values[at(w)];
        next[at(v)] = sum / static_cast<double>(graph.of(v).size() + 1);
    }
    values.swap(next);
}

} // namespace

std::vector<double> vertexVisibility(std::span<const Vec3> positions,
                                     std::span<const Triangle> triangles, const RunControl& control)
{
    if (triangles.empty())
        return std::vector<double>(positions.size(), 1.0);
    std::vector<double> light = sampleLight(positions, triangles, control);
    const VertexGraph graph = vertexGraph(triangles, static_cast<int>(positions.size()));
    spread(graph, light, control);
    for (int round = 0; round < smoothings; ++round)
        smooth(graph, light);
    return light;
}

} // namespace unfold3d
