// Sewing seams of 1 to 10 000 edges on a sheet of a million triangles.
//
// Each round cuts the sheet along the same rows of edges and sews it again; only the sew is timed.
// "ratio" is set against
//
//   sewPlain, findBorders  a pass over the triangles that looks up one flag a corner
//   sewShell               the first build of the compact mesh of an equal shell
//
// bridge: whether the sew leaves a record for an undo. stale: whether the border list has to be
// made first, as it has right after a cut.

#include "FreshBuild.h"
#include "RatioTimer.h"
#include "SeamEdges.h"
#include "ShellMeshes.h"

#include "OpenSG/ChangeNotice.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

#include <optional>

namespace
{

constexpr unsigned int triangleCount = 1'000'000;
constexpr unsigned int surfaceCount = 100;
constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

/// Plain geometries are worked on as they stand for as long as it lives.
struct WithoutCompactMesh
{
    WithoutCompactMesh() { kyUVUtils::setUseCompactMesh(false); }
    ~WithoutCompactMesh() { kyUVUtils::setUseCompactMesh(true); }
};

struct FlagPass
{
    explicit FlagPass(const osg::NodePtr& plain)
        : triangles(bench::coreOf(plain)->getIndices()->getValues()),
          isFlagged(bench::coreOf(plain)->getPositions()->getSize())
    {}

    void makeReady() const {}
    void operator()() const
    {
        benchmark::DoNotOptimize(bench::countFlaggedTriangles(triangles, isFlagged));
    }

    std::vector<unsigned int> triangles;
    std::vector<char> isFlagged;
};

template <class Reference>
void measureSew(benchmark::State& state, const osg::NodePtr& sheet, Reference& reference)
{
    const osg::GeometryPtr core = bench::coreOf(sheet);
    const auto edgeCount = static_cast<unsigned int>(state.range(0));
    const bool keepsRecord = state.range(1) != 0;
    const bool isStale = state.range(2) != 0;
    kyUVUtils::updateBorderEdges(core, sheet, slot);
    const unsigned int vertexCount =
        bench::coreOf(sheet)->getPositions() ? bench::coreOf(sheet)->getPositions()->getSize() : 0;
    bench::RatioTimer timer;
    for (auto _ : state) {
        bench::selectEdges(sheet, bench::seamEdges(sheet, edgeCount));
        kyUVUtils::cutAlongEdges(core, sheet, slot, nullptr);
        bench::selectEdges(sheet,
                           bench::seamEdges(sheet, edgeCount)); // one side of the seam is enough
        if (!isStale)
            kyUVUtils::updateBorderEdges(core, sheet, slot);
        std::optional<kyTopologyBridge> bridge;
        if (keepsRecord)
            bridge.emplace();
        reference.makeReady();
        timer.run(
            state,
            [&] { kyUVUtils::sewAlongEdges(core, sheet, slot, bridge ? &*bridge : nullptr); },
            reference);
        if (core->getPositions() && core->getPositions()->getSize() != vertexCount)
            state.SkipWithError("the seam did not close");
    }
    timer.report(state);
}

void sewPlain(benchmark::State& state)
{
    const WithoutCompactMesh noMesh;
    const auto sheet = bench::sheetPlain(triangleCount);
    FlagPass flagPass(sheet);
    measureSew(state, sheet, flagPass);
}

void sewShell(benchmark::State& state)
{
    const auto sheet = bench::sheetShell(triangleCount, surfaceCount, bench::WeldedBorders);
    bench::FreshBuild freshBuild(triangleCount, surfaceCount, slot);
    measureSew(state, sheet, freshBuild);
}

void findBorders(benchmark::State& state)
{
    const WithoutCompactMesh noMesh;
    const auto sheet = bench::sheetPlain(triangleCount);
    const osg::GeometryPtr core = bench::coreOf(sheet);
    bench::RatioTimer timer;
    for (auto _ : state) {
        osg::notifyChanged(core, osg::Geometry::IndicesFieldMask);
        timer.run(
            state, [&] { kyUVUtils::updateBorderEdges(core, sheet, slot); }, FlagPass(sheet));
    }
    timer.report(state);
}

void sews(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"edges", "bridge", "stale"})
        ->ArgsProduct({{1, 100, 10'000}, {0, 1}, {0, 1}})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(sewPlain)->Apply(sews);
BENCHMARK(sewShell)->Apply(sews);
BENCHMARK(findBorders)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
