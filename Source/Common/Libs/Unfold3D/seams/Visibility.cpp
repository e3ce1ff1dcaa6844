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

/// Rays from either side of a vertex.
constexpr int directionCount = 24;
/// Rounds in which a vertex takes the mean of itself and its neighbours.
constexpr int smoothings = 3;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Directions over a half space whose normal is z, evenly: half of a spiral by the golden angle and
/// its image behind the plane y = 0.
std::array<Vec3, directionCount> evenDirections()
{
    std::array<Vec3, directionCount> directions;
    for (int i = 0; i < directionCount / 2; ++i) {
        const double z = (2.0 * i + 1.0) / directionCount;
        const double r = std::sqrt(1.0 - z * z);
        const double angle = std::numbers::pi * std::fmod(i / std::numbers::phi, 1.0);
        directions[at(2 * i)] = {r * std::cos(angle), r * std::sin(angle), z};
        directions[at(2 * i + 1)] = {r * std::cos(angle), -r * std::sin(angle), z};
    }
    return directions;
}

/// The directions over a half space, laid about a vertex so that what it sees is the same however
/// the surface is turned or mirrored: x lies as towards the origin, or where that is along the
/// normal, towards a neighbour.
std::array<Vec3, directionCount> directionsAt(Vec3 position, Vec3 normal, Vec3 neighbour)
{
    // What is less is rounding of the normal.
    constexpr double leastSine = 1e-3;
    const auto acrossNormal = [&](Vec3 v) { return v - dot(v, normal) * normal; };
    Vec3 x = acrossNormal(position);
    if (length(x) <= leastSine * length(position))
        x = acrossNormal(neighbour - position);
    if (length(x) <= leastSine * length(neighbour - position))
        x = cross(normal, std::abs(normal.x) < 0.5 ? Vec3{1.0, 0.0, 0.0} : Vec3{0.0, 1.0, 0.0});
    x = (1.0 / std::max(length(x), 1e-300)) * x;
    const Vec3 y = cross(normal, x);
    std::array<Vec3, directionCount> directions = evenDirections();
    for (Vec3& d : directions)
        d = d.x * x + d.y * y + d.z * normal;
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

/// [vertex] the one that comes next in the first triangle that uses it
std::vector<int> firstNeighbours(std::size_t vertexCount, std::span<const Triangle> triangles)
{
    std::vector<int> neighbours(vertexCount, -1);
    for (const Triangle& t : triangles)
        for (std::size_t i = 0; i < 3; ++i)
            if (neighbours[at(t[i])] < 0)
                neighbours[at(t[i])] = t[(i + 1) % 3];
    return neighbours;
}

constexpr double unknown = -1.0;

/// Values of the samples, the others unknown.
std::vector<double> sampleLight(std::span<const Vec3> positions,
                                std::span<const Triangle> triangles, std::span<const int> samples,
                                const RunControl& control)
{
    control.checkpoint();
    const Occluder occluder(positions, triangles, control);
    control.checkpoint();
    const std::vector<Vec3> normals = vertexNormals(positions, triangles);
    const std::vector<int> neighbours = firstNeighbours(positions.size(), triangles);
    std::vector<double> light(positions.size(), unknown);
    tbb::parallel_for(tbb::blocked_range<std::size_t>(0, samples.size(), 64),
                      [&](const tbb::blocked_range<std::size_t>& range) {
                          control.checkpoint();
                          for (std::size_t i = range.begin(); i < range.end(); ++i) {
                              const std::size_t v = at(samples[i]);
                              if (normals[v] == Vec3{})
                                  continue;
                              const Vec3 neighbour = positions[at(neighbours[v])];
                              const auto lightOn = [&](Vec3 normal) {
                                  return occluder.lightAt(
                                      positions[v], normal,
                                      directionsAt(positions[v], normal, neighbour));
                              };
                              light[v] = std::max(lightOn(normals[v]), lightOn(-1.0 * normals[v]));
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
                                     std::span<const Triangle> triangles,
                                     std::span<const int> samples, const RunControl& control)
{
    if (triangles.empty())
        return std::vector<double>(positions.size(), 1.0);
    std::vector<double> light = sampleLight(positions, triangles, samples, control);
    control.checkpoint();
    const VertexGraph graph = vertexGraph(triangles, static_cast<int>(positions.size()));
    control.checkpoint();
    spread(graph, light, control);
    for (int round = 0; round < smoothings; ++round)
        smooth(graph, light);
    control.checkpoint();
    return light;
}

} // namespace unfold3d
