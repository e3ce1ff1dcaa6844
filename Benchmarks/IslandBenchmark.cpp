// UV islands: the labelling of an index list, and the whole search on a node.
//
// Index lists come row by row, shuffled, and in small pieces: few labels, many labels that grow
// together, many that don't. The labelling, alone and with the lists of vertices, is set against a
// plain union-find over the same list, which joins and numbers nothing; compare the ratio. The
// search is on a plain geometry as it stands (no compact mesh), and through a compact mesh of 1 to
// 1000 surfaces that is there already.

#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "UVUtils/editing/IslandLabels.h"
#include "UVUtils/model/kyUVUtils.h"

#include <benchmark/benchmark.h>

#include <numeric>
#include <utility>
#include <vector>

namespace
{

using Ids = std::vector<unsigned int>;
using MakeList = bench::TriangleList (*)(unsigned int);

bench::TriangleList shuffledSheet(unsigned int triangleCount)
{
    return bench::shuffled(bench::sheetTriangles(triangleCount));
}

void report(benchmark::State& state, std::size_t triangleCount)
{
    state.SetComplexityN(static_cast<int>(triangleCount));
    state.counters["triangles"] = static_cast<double>(triangleCount);
    state.counters["ns/triangle"] = benchmark::Counter(
        1e-9 * static_cast<double>(triangleCount),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// What any union-find over the vertices has to do.
class PlainUnionFind
{
public:
    explicit PlainUnionFind(unsigned int count) : parents_(count)
    {
        std::iota(parents_.begin(), parents_.end(), 0U);
    }
    unsigned int find(unsigned int i)
    {
        while (parents_[i] != i)
            i = parents_[i] = parents_[parents_[i]];
        return i;
    }
    void join(unsigned int a, unsigned int b)
    {
        a = find(a);
        b = find(b);
        if (a < b)
            std::swap(a, b);
        parents_[a] = b;
    }

private:
    Ids parents_;
};

void joinPlainly(const bench::TriangleList& list)
{
    PlainUnionFind sets(list.vertexCount);
    for (std::size_t first = 0; first < list.triangles.size(); first += 3) {
        sets.join(list.triangles[first], list.triangles[first + 1]);
        sets.join(list.triangles[first], list.triangles[first + 2]);
    }
    benchmark::DoNotOptimize(sets);
}

template <class Operation>
void againstUnionFind(benchmark::State& state, MakeList makeList, const Operation& operation)
{
    const bench::TriangleList list = makeList(static_cast<unsigned int>(state.range(0)));
    bench::RatioTimer timer;
    for (auto _ : state)
        timer.run(
            state, [&] { operation(list); }, [&] { joinPlainly(list); });
    timer.report(state);
    report(state, list.triangles.size() / 3);
}

void label(benchmark::State& state, MakeList makeList)
{
    againstUnionFind(state, makeList, [](const bench::TriangleList& list) {
        benchmark::DoNotOptimize(labelIslands(list.triangles, list.vertexCount));
    });
}

void labelAndList(benchmark::State& state, MakeList makeList)
{
    againstUnionFind(state, makeList, [](const bench::TriangleList& list) {
        benchmark::DoNotOptimize(verticesOfIslands(labelIslands(list.triangles, list.vertexCount)));
    });
}

void search(benchmark::State& state, const osg::NodePtr& node)
{
    std::size_t triangleCount = 0;
    for (auto _ : state) {
        Ids triangles;
        Ids triangleCounts;
        Ids vertices;
        Ids vertexCounts;
        kyUVUtils::findUVIslands(bench::coreOf(node), node, kyUVTypes::UVSet0, nullptr, 0, false,
                                 triangles, triangleCounts, vertices, vertexCounts);
        triangleCount = triangles.size() / 3;
        benchmark::DoNotOptimize(vertices);
    }
    report(state, triangleCount);
}

void searchPlain(benchmark::State& state)
{
    const osg::RefPtr<osg::Node> node =
        bench::sheetPlain(static_cast<unsigned int>(state.range(0)));
    kyUVUtils::setUseCompactMesh(false);
    search(state, node);
    kyUVUtils::setUseCompactMesh(true);
}

void searchShell(benchmark::State& state, bench::SurfaceBorders borders)
{
    const osg::RefPtr<osg::Node> node =
        bench::sheetShell(static_cast<unsigned int>(state.range(0)),
                          static_cast<unsigned int>(state.range(1)), borders);
    // Builds the mesh.
    kyUVUtils::getAllIslandSeeds(bench::coreOf(node), node, kyUVTypes::UVSet0);
    search(state, node);
}

void ofAnySize(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)
        ->Range(10000, 1000000)
        ->Unit(benchmark::kMillisecond)
        ->Complexity();
}

void ofAnySizeAndSurfaces(benchmark::internal::Benchmark* benchmark)
{
    for (const int surfaces : {1, 10, 100, 1000})
        for (const int triangles : {10000, 100000, 1000000})
            benchmark->Args({triangles, surfaces});
    benchmark->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(label, rows, &bench::sheetTriangles)->Apply(ofAnySize)->UseManualTime();
BENCHMARK_CAPTURE(labelAndList, rows, &bench::sheetTriangles)->Apply(ofAnySize)->UseManualTime();
BENCHMARK_CAPTURE(label, shuffled, &shuffledSheet)->Apply(ofAnySize)->UseManualTime();
BENCHMARK_CAPTURE(labelAndList, shuffled, &shuffledSheet)->Apply(ofAnySize)->UseManualTime();
BENCHMARK_CAPTURE(label, pieces, &bench::pieceTriangles)->Apply(ofAnySize)->UseManualTime();
BENCHMARK_CAPTURE(labelAndList, pieces, &bench::pieceTriangles)->Apply(ofAnySize)->UseManualTime();
BENCHMARK(searchPlain)->Apply(ofAnySize);
BENCHMARK_CAPTURE(searchShell, welded, bench::WeldedBorders)->Apply(ofAnySizeAndSurfaces);
BENCHMARK_CAPTURE(searchShell, seams, bench::SeamBorders)->Apply(ofAnySizeAndSurfaces);

BENCHMARK_MAIN();
