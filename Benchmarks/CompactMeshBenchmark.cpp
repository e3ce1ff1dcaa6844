// The compact mesh of a shell: building it, and finding borders.
//
// A hilly sheet of 10 k to 1 M triangles in 1 to 1000 surfaces shows what surfaces cost and how a
// build grows; the scattered one has its vertices and triangles in random order, which caches
// don't like. Each run is held against a plain loop over the same data, timed next to it: "ratio"
// is what counts, since both share the machine's mood.

#include "PlainSort.h"
#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "OpenSG/GeoProperty.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/BorderEdges.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <malloc.h>
#include <random>

namespace
{

double heapBytes()
{
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// The vertices and triangles of a shell, one surface after the other.
struct PlainMesh
{
    explicit PlainMesh(const osg::NodePtr& node)
    {
        for (const ActiveSurface& surface : activeSurfaces(node)) {
            const auto points = surface.geometry->getPositions()->getValues();
            positions.insert(positions.end(), points.begin(), points.end());
            for (const unsigned int id : surface.geometry->getIndices()->getValues())
                triangles.push_back(surface.firstId + id);
        }
    }

    std::vector<osg::Pnt3f> positions;
    std::vector<unsigned int> triangles;
};

/// The triangles in the compact ids by which a build sorts them.
std::vector<unsigned int> compactTriangles(const PlainMesh& mesh, const CompactShellMesh& compact)
{
    std::vector<unsigned int> triangles;
    compact.mapVertsFToC(mesh.triangles.data(), static_cast<unsigned int>(mesh.triangles.size()),
                         triangles);
    return triangles;
}

using EdgePairs = std::vector<std::array<unsigned int, 2>>;

void countingSort(const EdgePairs& from, EdgePairs& to, std::size_t idCount, unsigned int end)
{
    std::vector<unsigned int> next(idCount + 1);
    for (const auto& edge : from)
        ++next[edge[end] + 1];
    for (std::size_t i = 1; i < next.size(); ++i)
        next[i] += next[i - 1];
    for (const auto& edge : from)
        to[next[edge[end]]++] = edge;
}

/// Sorts all edges of a triangle list by counting, by the higher and then by the lower end.
void sortEdges(const std::vector<unsigned int>& triangles, std::size_t idCount)
{
    EdgePairs edges(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const unsigned int a = triangles[i];
        const unsigned int b = triangles[i % 3 == 2 ? i - 2 : i + 1];
        edges[i] = {std::min(a, b), std::max(a, b)};
    }
    EdgePairs buffer(edges.size());
    countingSort(edges, buffer, idCount, 1);
    countingSort(buffer, edges, idCount, 0);
    benchmark::DoNotOptimize(edges.data());
}

CompactShellMesh* meshOf(const osg::NodePtr& node)
{
    return CompactShellMesh::getCMesh(bench::coreOf(node), node, kyUVTypes::UVSet0);
}

osg::RefPtr<osg::Node> shellFor(const benchmark::State& state)
{
    osg::RefPtr<osg::Node> shell =
        bench::sheetShell(static_cast<unsigned int>(state.range(0)),
                          static_cast<unsigned int>(state.range(1)), bench::WeldedBorders);
    if (state.range(2) != 0)
        bench::scatterSurfaces(shell);
    return shell;
}

void buildMesh(benchmark::State& state)
{
    osg::RefPtr<osg::Node> shell = shellFor(state);
    const PlainMesh plain(shell);
    const double before = heapBytes();
    CompactShellMesh* mesh = meshOf(shell);
    state.counters["B/triangle"] =
        3.0 * (heapBytes() - before) / static_cast<double>(plain.triangles.size());
    bench::RatioTimer timer;
    const std::vector<unsigned int> trianglesC = compactTriangles(plain, *mesh);
    for (auto _ : state) {
        shell = osg::NullFC; // and its mesh
        shell = shellFor(state);
        timer.run(
            state, [&] { benchmark::DoNotOptimize(meshOf(shell)); },
            [&] { bench::sortPlainly(plain.positions, trianglesC); });
    }
    timer.report(state);
}

/// Builds the mesh of a shell again and again, against sorting its vertices and triangles once.
void measureRebuilds(benchmark::State& state, const osg::RefPtr<osg::Node>& shell)
{
    const PlainMesh plain(shell);
    CompactShellMesh* mesh = meshOf(shell);
    const std::vector<unsigned int> trianglesC = compactTriangles(plain, *mesh);
    bench::measureRatio(
        state,
        [&] {
            mesh->touch();
            benchmark::DoNotOptimize(meshOf(shell));
        },
        [&] { bench::sortPlainly(plain.positions, trianglesC); });
}

void rebuildMesh(benchmark::State& state)
{
    measureRebuilds(state, shellFor(state));
}

/// Moves one in so many vertices by half the weld tolerance, so that others stand between it and
/// where it was. With all of them rows and columns of the sheet become chains of near positions,
/// which is as bad as it gets for the weld.
void blurPositions(const osg::NodePtr& shell, unsigned long oneIn)
{
    std::minstd_rand random(1);
    for (const ActiveSurface& surface : activeSurfaces(shell))
        for (osg::Pnt3f& position :
             osg::dcast<osg::GeoPositions3f>(surface.geometry->getPositions())->values())
            for (unsigned int axis = 0; axis < 2; ++axis)
                if (random() / 4096 % (2 * oneIn) == 0)
                    position[axis] += 6e-8F;
}

void buildBlurredMesh(benchmark::State& state)
{
    const osg::RefPtr<osg::Node> shell = shellFor(state);
    blurPositions(shell, static_cast<unsigned long>(state.range(3)));
    measureRebuilds(state, shell);
}

void findBorders(benchmark::State& state)
{
    const osg::RefPtr<osg::Node> shell = shellFor(state);
    const PlainMesh plain(shell);
    bench::measureRatio(
        state,
        [&] {
            benchmark::DoNotOptimize(
                borderEdges(std::span<const unsigned int>(plain.triangles)).data());
        },
        [&] { sortEdges(plain.triangles, plain.positions.size()); });
}

constexpr std::int64_t maxTriangles = 1'000'000;

BENCHMARK(buildMesh)
    ->ArgNames({"triangles", "surfaces", "scatter"})
    ->ArgsProduct({{10'000, 100'000, maxTriangles}, {1, 10, 100, 1000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(rebuildMesh)
    ->ArgNames({"triangles", "surfaces", "scatter"})
    ->ArgsProduct({{10'000, 100'000, maxTriangles}, {1, 10, 100, 1000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(buildBlurredMesh)
    ->ArgNames({"triangles", "surfaces", "scatter", "oneIn"})
    ->ArgsProduct({{10'000, 100'000, maxTriangles}, {100}, {0}, {1, 1000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(findBorders)
    ->ArgNames({"triangles", "surfaces", "scatter"})
    ->ArgsProduct({{10'000, 100'000, maxTriangles}, {1}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
