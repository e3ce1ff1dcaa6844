// Relaxing a layout, set against unfolding the same patch in the same run.
//
// Four layouts of a bumpy open patch of 10 k to 1 M triangles: the unfolded one, which should cost
// next to nothing; the patch seen from above, which has to give way everywhere; the unfolded one
// with every hundredth vertex thrown over its neighbours; and that with only a corner of it
// selected. Times are of the processor; "ratio" is the time by that of the unfold.

#include "EngineRun.h"
#include "PeakMemory.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <ctime>
#include <numeric>

namespace
{

using NU3D::CUnfold3DAPI;

/// Of the whole process on its processors, so that what else runs counts little.
double processSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

template <class Work>
double secondsOf(const Work& work)
{
    const double start = processSeconds();
    work();
    return processSeconds() - start;
}

struct Unfolded
{
    bench::FlatMesh mesh; ///< with the unfolded UVs
    double seconds;       ///< that the unfold took
};

Unfolded unfoldedPatch(int triangleCount)
{
    Unfolded result{bench::bumpyPatch(triangleCount), 0.0};
    CUnfold3DAPI api;
    bench::import(api, result.mesh);
    result.seconds = secondsOf([&] { bench::unfold(api, true); });
    result.mesh.coordsUVW = bench::exportedUVs(api);
    return result;
}

/// Moves every hundredth vertex by about two edges.
void tangle(bench::FlatMesh& mesh)
{
    const double way = 3.0 / std::sqrt(mesh.triangleCount());
    for (int v = 0; v < mesh.vertexCount(); v += 100) {
        double* const uv = mesh.coordsUVW.data() + std::ptrdiff_t{3} * v;
        uv[0] += way * std::cos(v);
        uv[1] += way * std::sin(v);
    }
}

void relax(benchmark::State& state, const Unfolded& patch, const std::vector<int>& selection)
{
    bench::resetPeakMemory();
    double seconds = 0.0;
    for (auto _ : state) {
        CUnfold3DAPI api;
        bench::import(api, patch.mesh);
        if (!selection.empty())
            bench::selectVertices(api, selection);
        const double own = secondsOf([&] { bench::optimize(api); });
        state.SetIterationTime(own);
        seconds += own;
    }
    bench::report(state, patch.mesh);
    state.counters["ratio"] = seconds / static_cast<double>(state.iterations()) / patch.seconds;
}

void relaxUnfolded(benchmark::State& state)
{
    relax(state, unfoldedPatch(static_cast<int>(state.range(0))), {});
}

void relaxSeenFromAbove(benchmark::State& state)
{
    Unfolded patch = unfoldedPatch(static_cast<int>(state.range(0)));
    patch.mesh.coordsUVW = bench::bumpyPatch(static_cast<int>(state.range(0))).coordsUVW;
    relax(state, patch, {});
}

void relaxTangled(benchmark::State& state)
{
    Unfolded patch = unfoldedPatch(static_cast<int>(state.range(0)));
    tangle(patch.mesh);
    relax(state, patch, {});
}

void relaxTangledCorner(benchmark::State& state)
{
    Unfolded patch = unfoldedPatch(static_cast<int>(state.range(0)));
    tangle(patch.mesh);
    std::vector<int> corner(static_cast<std::size_t>(patch.mesh.vertexCount() / 20));
    std::iota(corner.begin(), corner.end(), 0);
    relax(state, patch, corner);
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)
        ->Range(10'000, 1'000'000)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(relaxUnfolded)->Apply(sizes);
BENCHMARK(relaxSeenFromAbove)->Apply(sizes);
BENCHMARK(relaxTangled)->Apply(sizes);
BENCHMARK(relaxTangledCorner)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
