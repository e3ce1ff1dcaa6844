// Unfolding real islands, set against a plain least-squares conformal map of one of them.
//
// Two cut scans, a terrain of a third of a million triangles, and the same with each triangle split
// in four, once or twice, for up to 1.4 million. "scaled_s" is the time on a machine that takes
// 0.57 s for the conformal map of bunny_disk; "energy" is that of the result. Times are of the
// processor, and of the engine's import and unfold together. Files named on the command line are
// measured too.

#include "ConformalReference.h"
#include "EngineRun.h"
#include "ObjMesh.h"
#include "PeakMemory.h"
#include "RatioTimer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <string>

namespace
{

using NU3D::CUnfold3DAPI;

/// What the conformal map takes on the machine that times are told for.
constexpr double referenceSeconds = 0.57;

template <class Work>
double secondsOf(const Work& work)
{
    const double start = bench::secondsBy(CLOCK_PROCESS_CPUTIME_ID);
    work();
    return bench::secondsBy(CLOCK_PROCESS_CPUTIME_ID) - start;
}

bench::FlatMesh readMesh(const std::filesystem::path& file, int splits)
{
    bench::FlatMesh mesh = bench::readObj(file);
    for (; splits > 0; --splits)
        mesh = bench::splitInFour(mesh);
    return mesh;
}

/// Of the conformal map on this machine: the best of some runs.
double conformalSeconds()
{
    static const double best = [] {
        const bench::FlatMesh mesh = readMesh(KYUV_MESHES "/cut/bunny_disk.obj", 0);
        double seconds = std::numeric_limits<double>::infinity();
        for (int run = 0; run < 5; ++run)
            seconds = std::min(seconds, secondsOf([&] {
                                   benchmark::DoNotOptimize(bench::leastSquaresConformalMap(mesh));
                               }));
        return seconds;
    }();
    return best;
}

void conformalMap(benchmark::State& state)
{
    for (auto _ : state)
        state.SetIterationTime(conformalSeconds());
}

void unfold(benchmark::State& state, const std::filesystem::path& file, int splits,
            bool preventCrossings)
{
    const bench::FlatMesh mesh = readMesh(file, splits);
    bench::resetPeakMemory();
    double best = std::numeric_limits<double>::infinity();
    std::vector<double> uvw;
    for (auto _ : state) {
        CUnfold3DAPI api;
        const double seconds = secondsOf([&] {
            bench::import(api, mesh);
            bench::unfold(api, preventCrossings);
        });
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
        if (uvw.empty())
            uvw = bench::exportedUVs(api);
    }
    bench::report(state, mesh);
    state.counters["energy"] = bench::symmetricDirichlet(mesh, uvw);
    state.counters["scaled_s"] = best * referenceSeconds / conformalSeconds();
}

void add(const std::filesystem::path& file, int splits)
{
    for (const bool preventCrossings : {false, true})
        benchmark::RegisterBenchmark(
            (file.stem().string() + (splits > 0 ? "/split" + std::to_string(splits) : "") +
             (preventCrossings ? "/kept_apart" : "/free"))
                .c_str(),
            [=](benchmark::State& state) { unfold(state, file, splits, preventCrossings); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int count, char** words)
{
    benchmark::Initialize(&count, words);
    benchmark::RegisterBenchmark("conformal_map", conformalMap)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    const std::filesystem::path meshes = KYUV_MESHES;
    add(meshes / "cut/spot_disk.obj", 0);
    for (const int splits : {0, 1, 2})
        add(meshes / "cut/bunny_disk.obj", splits);
    for (const int splits : {0, 1})
        add(meshes / "terrain_big.obj", splits);
    for (int i = 1; i < count; ++i)
        add(words[i], 0);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
