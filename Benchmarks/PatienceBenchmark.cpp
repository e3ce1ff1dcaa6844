// How long the engine keeps its caller waiting: the longest time without a change of progress, and
// the time from the wish to stop to the return of the command, at moments spread over its run.
//
// "silence ms" is the longest stretch between two changes of progress and "silent at" where it
// ends, as a share of the run; "stop ms" is the longest way to a stop and "stop at" the moment of
// the wish. Times are those of the wall: run it on a quiet machine, where they should all stay
// below 250 ms at a million triangles.

#include "ClosedMeshes.h"
#include "EngineRun.h"
#include "PatchMeshes.h"
#include "ShellMeshes.h"

#include "Unfold3D/contract/CUnfold3DAPI.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>
#include <memory>

namespace
{

using NU3D::CRef;
using NU3D::CUnfold3DAPI;
using NU3D::VALPROP_VALUE;

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// What the callbacks, which take no argument, see of the command under way.
struct Watch
{
    double begin = 0.0;
    double stopAfter = std::numeric_limits<double>::infinity(); ///< seconds
    double fraction = -1.0;                                     ///< the last progress told
    double lastChange = 0.0;
    double longestSilence = 0.0;
    double silentUntil = 0.0;
    double stopTold = 0.0; ///< when the command was first told to stop; 0 if never

    void start(double secondsToStop)
    {
        *this = {};
        begin = lastChange = now();
        stopAfter = secondsToStop;
    }
    void look(double told)
    {
        if (told == fraction)
            return;
        const double time = now();
        if (time - lastChange > longestSilence) {
            longestSilence = time - lastChange;
            silentUntil = time - begin;
        }
        fraction = told;
        lastChange = time;
    }
};

Watch watch;

void tellProgress(double fraction)
{
    watch.look(fraction);
}

bool wantsStop()
{
    const double time = now();
    if (time - watch.begin < watch.stopAfter)
        return false;
    if (watch.stopTold == 0.0)
        watch.stopTold = time;
    return true;
}

bench::FlatMesh flatMeshOf(const osg::RefPtr<osg::Node>& node)
{
    const osg::GeometryPtr core = bench::coreOf(node);
    bench::FlatMesh mesh;
    for (const osg::Pnt3f& p : core->getPositions()->getValues()) {
        mesh.coordsXYZ.insert(mesh.coordsXYZ.end(), {p[0], p[1], p[2]});
        mesh.coordsUVW.insert(mesh.coordsUVW.end(), {p[0], p[1], p[2]});
    }
    for (const unsigned int id : core->getIndices()->getValues())
        mesh.triangles.push_back(static_cast<int>(id));
    return mesh;
}

bench::FlatMesh body(int triangleCount)
{
    return flatMeshOf(bench::closedBody(static_cast<unsigned int>(triangleCount)));
}

bench::FlatMesh gear(int triangleCount)
{
    return flatMeshOf(bench::closedGear(static_cast<unsigned int>(triangleCount)));
}

bench::FlatMesh pieces(int triangleCount)
{
    return bench::shellPieces(triangleCount / 50);
}

using Command = std::function<void(CUnfold3DAPI& api, const bench::FlatMesh& mesh)>;

void seams(CUnfold3DAPI& api, const char* mode)
{
    const CRef params = bench::table();
    params->Add("#PrimType string \"Edge\"", CRef("Edge", VALPROP_VALUE));
    params->Add(mode);
    params->Add("#ReturnEdgesSel bool");
    bench::expectSuccess(api.Do("Select", params));
}

void pack(CUnfold3DAPI& api)
{
    const CRef params = bench::table();
    params->Add("#Scaling.Mode int 0", CRef(1, VALPROP_VALUE));
    params->Add("#LayoutScalingMode int 0", CRef(2, VALPROP_VALUE));
    params->Add("#Resolution int", CRef(1024, VALPROP_VALUE));
    params->Add("#SpacingSize double 0", CRef(2.0 / 1024.0, VALPROP_VALUE));
    bench::expectSuccess(api.Do("Pack", params));
}

const Command importing = [](CUnfold3DAPI& api, const bench::FlatMesh& mesh) {
    bench::import(api, mesh);
};

std::unique_ptr<CUnfold3DAPI> prepared(const bench::FlatMesh& mesh, const Command& before)
{
    auto api = std::make_unique<CUnfold3DAPI>();
    if (before)
        before(*api, mesh);
    api->RegisterUpdateProgressCallback(tellProgress);
    api->RegisterStopCallback(wantsStop);
    return api;
}

/// The command once to its end, then stopped at moments spread evenly over its time.
void patience(benchmark::State& state, bench::FlatMesh (*make)(int), const Command& before,
              const Command& command)
{
    const bench::FlatMesh mesh = make(static_cast<int>(state.range(0)));
    const auto moments = static_cast<int>(state.range(1));
    double latency = 0.0;
    double latestAt = 0.0;
    for (auto _ : state) {
        auto api = prepared(mesh, before);
        watch.start(std::numeric_limits<double>::infinity());
        command(*api, mesh);
        const double seconds = now() - watch.begin;
        watch.look(2.0); // the way back counts as well
        state.SetIterationTime(seconds);
        state.counters["silence ms"] = 1e3 * watch.longestSilence;
        state.counters["silent at"] = watch.silentUntil / seconds;
        api = prepared(mesh, before);
        for (int i = 0; i < moments; ++i) {
            watch.start(seconds * (i + 0.5) / moments);
            command(*api, mesh);
            if (watch.stopTold == 0.0) { // it was done before
                api = prepared(mesh, before);
                continue;
            }
            const double waited = now() - std::min(watch.stopTold, watch.begin + watch.stopAfter);
            if (waited > latency) {
                latency = waited;
                latestAt = watch.stopAfter / seconds;
            }
        }
    }
    state.counters["stop ms"] = 1e3 * latency;
    state.counters["stop at"] = latestAt;
}

const Command unfoldApart = [](CUnfold3DAPI& api, const bench::FlatMesh&) {
    bench::unfold(api, true);
};
const Command unfoldFree = [](CUnfold3DAPI& api, const bench::FlatMesh&) {
    bench::unfold(api, false);
};
const Command relax = [](CUnfold3DAPI& api, const bench::FlatMesh&) { bench::optimize(api); };
const Command packing = [](CUnfold3DAPI& api, const bench::FlatMesh&) { pack(api); };
const Command exporting = [](CUnfold3DAPI& api, const bench::FlatMesh&) {
    const CRef params = bench::table();
    params->Add("#Data table");
    bench::expectSuccess(api.Do("Export", params));
};
const Command relaxedBefore = [](CUnfold3DAPI& api, const bench::FlatMesh& mesh) {
    bench::import(api, mesh);
    bench::optimize(api);
};
const Command organic = [](CUnfold3DAPI& api, const bench::FlatMesh&) {
    seams(api, "#Organic table");
};
const Command manufactured = [](CUnfold3DAPI& api, const bench::FlatMesh&) {
    seams(api, "#Manufactured table");
};
const Command baking = [](CUnfold3DAPI& api, const bench::FlatMesh&) {
    seams(api, "#Baking table");
};

} // namespace

#define KYUV_PATIENCE(name, make, before, command)                                                 \
    BENCHMARK_CAPTURE(patience, name, make, before, command)                                       \
        ->ArgNames({"triangles", "moments"})                                                       \
        ->ArgsProduct({{100'000, 1'000'000}, {8}})                                                 \
        ->Iterations(1)                                                                            \
        ->UseManualTime()                                                                          \
        ->Unit(benchmark::kMillisecond)

KYUV_PATIENCE(import, bench::bumpyPatch, nullptr, importing);
KYUV_PATIENCE(unfoldBordersMayCross, bench::bumpyPatch, importing, unfoldFree);
KYUV_PATIENCE(unfoldBordersKeptApart, bench::bumpyPatch, importing, unfoldApart);
KYUV_PATIENCE(relax, bench::bumpyPatch, importing, relax);
KYUV_PATIENCE(exportRelaxed, bench::bumpyPatch, relaxedBefore, exporting);
KYUV_PATIENCE(importPieces, pieces, nullptr, importing);
KYUV_PATIENCE(unfoldPieces, pieces, importing, unfoldApart);
KYUV_PATIENCE(packPieces, pieces, importing, packing);
KYUV_PATIENCE(packPatch, bench::bumpyPatch, importing, packing);
KYUV_PATIENCE(organicSeams, body, importing, organic);
KYUV_PATIENCE(manufacturedSeams, gear, importing, manufactured);
KYUV_PATIENCE(bakingSeams, gear, importing, baking);

BENCHMARK_MAIN();
