// The engine through its contract: import, unfold and pack.
//
// Two inputs: one bumpy open patch of 1 k to 1 M triangles shows how a solve grows, and 10 to
// 100 000 separate pieces show what many islands cost. Run it optimised, on a quiet machine;
// compare ratios within one run rather than times between runs.

#include "EngineRun.h"
#include "PatchMeshes.h"
#include "PeakMemory.h"

#include <benchmark/benchmark.h>

namespace
{

using bench::import;
using bench::report;
using bench::unfold;
using NU3D::CRef;
using NU3D::CUnfold3DAPI;
using NU3D::VALPROP_VALUE;

void pack(CUnfold3DAPI& api, int mutations, double seconds = 0.0)
{
    const CRef params = bench::table();
    params->Add("#Translate bool", CRef(true, VALPROP_VALUE));
    params->Add("#Rotate.Min double 0.0", CRef(0.0, VALPROP_VALUE));
    params->Add("#Rotate.Max double 360.0", CRef(360.0, VALPROP_VALUE));
    params->Add("#Rotate.Step double 0.0", CRef(90.0, VALPROP_VALUE));
    params->Add("#Rotate.Mode int 2", CRef(0, VALPROP_VALUE));
    params->Add("#Scaling.Mode int 0", CRef(1, VALPROP_VALUE));
    params->Add("#LayoutScalingMode int 0", CRef(2, VALPROP_VALUE));
    params->Add("#Resolution int", CRef(1024, VALPROP_VALUE));
    params->Add("#MaxMutations int 1", CRef(mutations, VALPROP_VALUE));
    params->Add("#MaxSeconds double 0", CRef(seconds, VALPROP_VALUE));
    params->Add("#SpacingSize double 0", CRef(2.0 / 1024.0, VALPROP_VALUE));
    params->Add("#MarginSize double 0", CRef(0.0, VALPROP_VALUE));
    params->Add("#Box box2d 0.0 1.0 0.0 1.0", CRef(NU3D::CBox2D(0, 1, 0, 1), VALPROP_VALUE));
    params->Add("#MultiTile.SizeU int", CRef(1, VALPROP_VALUE));
    params->Add("#MultiTile.SizeV int", CRef(1, VALPROP_VALUE));
    params->Add("#TileAssignMode string \"Specified\"", CRef("Distribute", VALPROP_VALUE));
    bench::expectSuccess(api.Do("Pack", params));
}

void importPatch(benchmark::State& state)
{
    const bench::FlatMesh mesh = bench::bumpyPatch(static_cast<int>(state.range(0)));
    bench::resetPeakMemory();
    for (auto _ : state) {
        CUnfold3DAPI api;
        import(api, mesh);
    }
    report(state, mesh);
}

void unfoldPatch(benchmark::State& state, bool preventCrossings)
{
    const bench::FlatMesh mesh = bench::bumpyPatch(static_cast<int>(state.range(0)));
    bench::resetPeakMemory();
    for (auto _ : state) {
        CUnfold3DAPI api;
        import(api, mesh);
        unfold(api, preventCrossings);
    }
    report(state, mesh);
}

void unfoldPieces(benchmark::State& state)
{
    const bench::FlatMesh mesh = bench::shellPieces(static_cast<int>(state.range(0)));
    bench::resetPeakMemory();
    for (auto _ : state) {
        CUnfold3DAPI api;
        import(api, mesh);
        unfold(api, true);
    }
    report(state, mesh);
}

void packPieces(benchmark::State& state)
{
    const bench::FlatMesh mesh = bench::shellPieces(static_cast<int>(state.range(0)));
    bench::resetPeakMemory();
    for (auto _ : state) {
        CUnfold3DAPI api;
        import(api, mesh);
        pack(api, static_cast<int>(state.range(1)));
    }
    report(state, mesh);
}

/// How long it takes until there is a layout at all.
void packFirstLayout(benchmark::State& state)
{
    const bench::FlatMesh mesh = bench::shellPieces(static_cast<int>(state.range(0)));
    constexpr double atOnce = 1e-9;
    for (auto _ : state) {
        CUnfold3DAPI api;
        import(api, mesh);
        pack(api, 1, atOnce);
    }
    report(state, mesh);
}

void packPatch(benchmark::State& state)
{
    const bench::FlatMesh mesh = bench::bumpyPatch(static_cast<int>(state.range(0)));
    bench::resetPeakMemory();
    for (auto _ : state) {
        CUnfold3DAPI api;
        import(api, mesh);
        pack(api, 1);
    }
    report(state, mesh);
}

constexpr int maxTriangles = 1'000'000;

// Real time: the engine works on a thread of its own.
BENCHMARK(importPatch)
    ->RangeMultiplier(10)
    ->Range(1000, maxTriangles)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK_CAPTURE(unfoldPatch, bordersKeptApart, true)
    ->RangeMultiplier(10)
    ->Range(1000, maxTriangles)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK_CAPTURE(unfoldPatch, bordersMayCross, false)
    ->RangeMultiplier(10)
    ->Range(1000, maxTriangles)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(unfoldPieces)
    ->Arg(10)
    ->Arg(1000)
    ->Arg(10'000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(packPatch)
    ->RangeMultiplier(10)
    ->Range(1000, maxTriangles)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(packPieces)
    ->ArgNames({"islands", "mutations"})
    ->ArgsProduct({{10, 300, 1000, 10'000}, {1, 4}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(packFirstLayout)
    ->ArgName("islands")
    ->Arg(300)
    ->Arg(2500)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
