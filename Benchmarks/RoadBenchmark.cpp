// From nothing to finished UVs: seams, cut, unfold and pack of closed meshes of 10 k to 1 M
// triangles, as an application asks for them.
//
// The counters give the share of each stage; "unfold" holds the packing. Compare how the stages
// grow and stand to each other within one run rather than times between runs.

#include "ClosedMeshes.h"
#include "PeakMemory.h"
#include "SeamEdges.h"
#include "ShellMeshes.h"

#include "OpenSG/ChangeNotice.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/solver/PackSettings.h"
#include "UVUtils/solver/SeamSettings.h"
#include "UVUtils/solver/UnfoldSettings.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <iostream>
#include <stdexcept>

namespace
{

constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// What the library writes goes nowhere for as long as it lives.
struct Silence
{
    Silence() : before(std::cout.rdbuf(nullptr)) {}
    ~Silence() { std::cout.rdbuf(before); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

    std::streambuf* before;
};

void expectSuccess(kyUVTypes::ReturnCode code)
{
    if (code != kyUVTypes::Success)
        throw std::runtime_error("the library failed");
}

std::vector<unsigned int> findSeams(const osg::NodePtr& node, kyUVTypes::SeamMode mode)
{
    kyUnfold3D::SeamSettings settings;
    settings.setMode(mode);
    std::vector<unsigned int> edges;
    expectSuccess(kyUVUtils::seamUVsUnfold3D(bench::coreOf(node), node, slot, settings, edges));
    return edges;
}

void cut(const osg::NodePtr& node, const std::vector<unsigned int>& edges)
{
    bench::selectEdges(node, edges);
    kyUVUtils::cutAlongEdges(bench::coreOf(node), node, slot, nullptr);
}

void unfoldAndPack(const osg::NodePtr& node)
{
    kyUnfold3D::PackSettings pack;
    pack.setResolution(1024);
    pack.setRotate(true);
    pack.setIslandPadding(2.0 / 1024.0);
    expectSuccess(kyUVUtils::unfoldGeometryUnfold3D(bench::coreOf(node), node, slot, {}, pack));
}

/// Seconds of the stages of one run.
struct Stages
{
    double seams = 0.0;
    double cut = 0.0;
    double unfold = 0.0;

    double sum() const { return seams + cut + unfold; }
};

using MeshMaker = osg::RefPtr<osg::Node> (*)(unsigned int triangleCount);

void wholeRoad(benchmark::State& state, MeshMaker make, kyUVTypes::SeamMode mode)
{
    kyUVUtils::setUseCompactMesh(false);
    bench::resetPeakMemory();
    Stages total;
    double triangles = 0.0;
    for (auto _ : state) {
        const osg::RefPtr<osg::Node> node = make(static_cast<unsigned int>(state.range(0)));
        triangles = bench::coreOf(node)->getIndices()->getSize() / 3.0;
        const Silence silence;
        const double start = now();
        const std::vector<unsigned int> edges = findSeams(node, mode);
        const double afterSeams = now();
        cut(node, edges);
        const double afterCut = now();
        unfoldAndPack(node);
        const Stages stages{afterSeams - start, afterCut - afterSeams, now() - afterCut};
        state.SetIterationTime(stages.sum());
        total.seams += stages.seams;
        total.cut += stages.cut;
        total.unfold += stages.unfold;
    }
    kyUVUtils::setUseCompactMesh(true);
    state.counters["triangles"] = triangles;
    state.counters["seams"] = total.seams / total.sum();
    state.counters["cut"] = total.cut / total.sum();
    state.counters["unfold"] = total.unfold / total.sum();
    state.counters["us/triangle"] =
        1e6 * total.sum() / (triangles * static_cast<double>(state.iterations()));
    state.counters["peakMB"] = bench::peakMemoryBytes() / 1e6;
}

} // namespace

#define KYUV_ROAD(make, mode)                                                                      \
    BENCHMARK_CAPTURE(wholeRoad, make##_##mode, bench::make, kyUVTypes::mode)                      \
        ->Arg(10'000)                                                                              \
        ->Arg(100'000)                                                                             \
        ->Arg(1'000'000)                                                                           \
        ->Iterations(1)                                                                            \
        ->UseManualTime()                                                                          \
        ->Unit(benchmark::kMillisecond)

KYUV_ROAD(closedBody, Organic);
KYUV_ROAD(closedGear, Manufactured);
KYUV_ROAD(closedGear, Baking);

BENCHMARK_MAIN();
