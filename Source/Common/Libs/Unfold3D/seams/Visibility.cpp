#include "Unfold3D/seams/Visibility.h"

#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/seams/Occluder.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <array>
#include <cmath>
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
