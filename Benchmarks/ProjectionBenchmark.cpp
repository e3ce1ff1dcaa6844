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
#include "UVUtils/projection/PartedTriangles.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"
#include "UVUtils/projection/kyUVPlanarProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include <cstdint>
#include <memory>
#include <span>
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
    joinEqualCorners(bench::coreOf(node));
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

/// The trees that hold the transforms of the planar and the cylindrical projection.
class SupportGeometries
{
public:
    SupportGeometries()
    {
        planar_.init(osg::NullFC);
        cylindrical_.init(osg::NullFC);
        for (const osg::NodePtr& root :
             {planar_.getProjectionTransformNode(), cylindrical_.getCylindricTransform3D(),
              cylindrical_.getCylindricTransform2D()})
            roots_.emplace_back(root);
        kyUVTextureProjection::init(&planar_, nullptr, &cylindrical_);
    }
    ~SupportGeometries() { kyUVTextureProjection::init(nullptr, nullptr, nullptr); }
    SupportGeometries(const SupportGeometries&) = delete;
    SupportGeometries& operator=(const SupportGeometries&) = delete;

private:
    kyUVPlanarProjectionSupportGeometry planar_;
    kyUVCylindricalProjectionSupportGeometry cylindrical_;
    std::vector<osg::RefPtr<osg::Node>> roots_;
};

void cylindrical(const osg::NodePtr& node)
{
    const auto settings = kyUVCylindricalProjection::getDefaultSettings({node}, 1, 1);
    kyUVCylindricalProjection::apply({node}, slot, settings);
}

/// A large block makes the allocator join the small ones that the hash table has left, which the
/// measured work would pay for otherwise.
void joinFreedBlocks()
{
    const auto block = std::make_unique<char[]>(std::size_t{1} << 16U);
    benchmark::DoNotOptimize(block.get());
}

using Work = void (*)(const osg::NodePtr&);

void againstHashMerge(benchmark::State& state, Work prepare, Work work)
{
    const SupportGeometries support;
    bench::RatioTimer timer;
    for (auto _ : state) {
        const osg::RefPtr<osg::Node> node = makeMesh(state);
        const osg::GeometryPtr geometry = bench::coreOf(node);
        prepare(node);
        timer.run(
            state, [&] { work(node); },
            [&] { benchmark::DoNotOptimize(bench::countDistinctCorners(geometry)); },
            joinFreedBlocks);
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
KYUV_PROJECTION(cylindrical, leave, cylindrical);

/// As little as there is to do for one UV of each position.
void readAndWrite(std::span<const osg::Pnt3f> positions, std::span<osg::Vec2f> uvs)
{
    for (std::size_t i = 0; i < positions.size(); ++i)
        uvs[i] = osg::Vec2f(positions[i].x() + positions[i].z(), positions[i].y());
}

/// Two triangles a vertex, so that the largest has a million vertices.
void planar(benchmark::State& state)
{
    const SupportGeometries support;
    const osg::RefPtr<osg::Node> node = makeMesh(state);
    const osg::GeometryPtr geometry = bench::coreOf(node);
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    std::vector<osg::Vec2f> uvs(positions->getSize());
    const auto settings = kyUVPlanarProjection::getDefaultSettings({node}, 1, 1);
    bench::measureRatio(
        state, [&] { kyUVPlanarProjection::apply({node}, slot, settings); },
        [&] {
            readAndWrite(positions->values(), uvs);
            benchmark::ClobberMemory();
        });
    state.counters["vertices"] = positions->getSize();
}

BENCHMARK(planar)
    ->ArgNames({"triangles", "shape"})
    ->ArgsProduct({{20'000, 200'000, 2'000'000}, {Sheet, Body}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);

} // namespace

BENCHMARK_MAIN();
