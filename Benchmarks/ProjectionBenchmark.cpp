// Projections of 10 000 to a million triangles, and the pieces that they are made of, on a sheet
// and on a closed body.
//
// Those that part triangles and merge them again are set against one hash based merge of as many
// corners by position and UV, which any program with this task has to do. The planar one is set
// against a plain loop that reads the positions and writes as many UVs.

#include "ClosedMeshes.h"
#include "HashMerge.h"
#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "OpenSGUtils/kyOptimize.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include <cstdint>
#include <malloc.h>
#include <vector>

namespace
{

constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

enum Shape : std::int32_t
{
    Sheet,
    Body
};

osg::RefPtr<osg::Node> makeMesh(const benchmark::State& state)
{
    const auto triangleCount = static_cast<unsigned int>(state.range(0));
    if (state.range(1) == Sheet)
        return bench::sheetPlain(triangleCount);
    osg::RefPtr<osg::Node> node = bench::closedBody(triangleCount);
    const osg::GeometryPtr geometry = bench::coreOf(node);
    geometry->setTexCoords(osg::GeoTexCoords2f::create());
    geometry->getTexCoords()->resize(vertexCountOf(geometry));
    return node;
}

void part(const osg::NodePtr& node)
{
    kyOptimize::triangulate(bench::coreOf(node), true);
}

void join(const osg::NodePtr& node)
{
    kyOptimize::unifyVertices(bench::coreOf(node), true, true, true, true, true, true, true, true,
                              true, false, true, false);
}

void leave(const osg::NodePtr&) {}

template <kyUVTriplanarProjectionSettings::Mode Mode>
void triplanar(const osg::NodePtr& node)
{
    kyUVTriplanarProjectionSettings settings =
        kyUVTriplanarProjection::getDefaultSettings({node}, 1, 1);
    settings.setMode(Mode);
    kyUVTriplanarProjection::apply({node}, slot, settings);
}

using Work = void (*)(const osg::NodePtr&);

void againstHashMerge(benchmark::State& state, Work prepare, Work work)
{
    bench::RatioTimer timer;
    for (auto _ : state) {
        const osg::RefPtr<osg::Node> node = makeMesh(state);
        const osg::GeometryPtr geometry = bench::coreOf(node);
        prepare(node);
        timer.run(
            state, [&] { work(node); },
            [&] { benchmark::DoNotOptimize(bench::countDistinctCorners(geometry)); },
            [] { malloc_trim(0); }); // or the next large block pays for the nodes of the hash table
        state.counters["vertices"] = vertexCountOf(geometry);
    }
    timer.report(state);
}

#define KYUV_PROJECTION(name, prepare, work)                                                       \
    BENCHMARK_CAPTURE(againstHashMerge, name, prepare, work)                                       \
        ->ArgNames({"triangles", "shape"})                                                         \
        ->ArgsProduct({{10'000, 100'000, 1'000'000}, {Sheet, Body}})                               \
        ->UseManualTime()                                                                          \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->Iterations(5)

KYUV_PROJECTION(triangulate, leave, part);
KYUV_PROJECTION(unifyVertices, part, join);
KYUV_PROJECTION(triplanarDominant, leave, triplanar<kyUVTriplanarProjectionSettings::DominantAxis>);
KYUV_PROJECTION(triplanarPropagated, leave,
                triplanar<kyUVTriplanarProjectionSettings::PropagatedAxis>);

} // namespace

BENCHMARK_MAIN();
