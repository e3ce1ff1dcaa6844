// Cutting along edges: 1 to 10 000 of them on a sheet of a million triangles.
//
// On a plain geometry a cut is set against the least that anyone needs who looks for the triangles
// at some vertices: one pass over the index list that looks up a flag a corner. On a shell, where
// the compact mesh is brought along, it is set against the first build of such a mesh. "record" is
// a cut that can be undone.

#include "FreshBuild.h"
#include "RatioTimer.h"
#include "SeamEdges.h"
#include "ShellMeshes.h"

#include "OpenSG/Geometry.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

#include <vector>

namespace
{

constexpr unsigned int triangleCount = 1'000'000;
constexpr unsigned int surfaceCount = 100;
constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

void cutPlain(benchmark::State& state)
{
    kyUVUtils::setUseCompactMesh(false);
    bench::RatioTimer timer;
    for (auto _ : state) {
        const osg::RefPtr<osg::Node> node = bench::sheetPlain(triangleCount);
        const auto edges = bench::seamEdges(node, static_cast<unsigned int>(state.range(0)));
        bench::selectEdges(node, edges);
        const std::vector<unsigned int> ids = bench::coreOf(node)->getIndices()->getValues();
        std::vector<char> flags(bench::coreOf(node)->getPositions()->getSize());
        for (const unsigned int id : edges)
            flags[id] = 1;
        kyTopologyBridge bridge;
        timer.run(
            state,
            [&] {
                kyUVUtils::cutAlongEdges(bench::coreOf(node), node, slot,
                                         state.range(1) != 0 ? &bridge : nullptr);
            },
            [&] { benchmark::DoNotOptimize(bench::countFlaggedTriangles(ids, flags)); });
    }
    timer.report(state);
    kyUVUtils::setUseCompactMesh(true);
}

void cutShell(benchmark::State& state)
{
    bench::FreshBuild freshBuild(triangleCount, surfaceCount, slot);
    bench::RatioTimer timer;
    for (auto _ : state) {
        freshBuild.makeReady();
        const osg::RefPtr<osg::Node> shell =
            bench::sheetShell(triangleCount, surfaceCount, bench::WeldedBorders);
        const osg::GeometryPtr core = bench::coreOf(shell);
        CompactShellMesh::getCMesh(core, shell, slot);
        bench::selectEdges(shell,
                           bench::seamEdges(shell, static_cast<unsigned int>(state.range(0))));
        kyTopologyBridge bridge;
        timer.run(
            state,
            [&] {
                kyUVUtils::cutAlongEdges(core, shell, slot,
                                         state.range(1) != 0 ? &bridge : nullptr);
            },
            freshBuild);
    }
    timer.report(state);
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"edges", "record"})
        ->ArgsProduct({{1, 100, 10'000}, {0, 1}})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(cutPlain)->Apply(sizes)->Iterations(7);
BENCHMARK(cutShell)->Apply(sizes)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
