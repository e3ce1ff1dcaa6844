// Finding and fixing what is singular on a sheet of 10 000 to a million triangles: nothing at all,
// which is what most meshes are asked for, or every hundredth vertex, or edge. Set against a hash
// based merge of the sheet's corners, which is what a mesh comes from that has to be repaired.

#include "HashMerge.h"
#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "OpenSG/Geometry.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/repair/kyTopologyRepair.h"

#include <cstdint>
#include <vector>

namespace
{

enum Fault : std::int32_t
{
    NoFault,
    Vertices,
    Edges
};

/// Puts a triangle more at every hundredth vertex: on the vertex alone, which makes a group of it,
/// or on the edge to the next one.
void addFaults(const osg::GeometryPtr& geometry, Fault kind)
{
    std::vector<osg::Pnt3f> positions = geometry->getPositions()->getValues();
    std::vector<unsigned int> ids = geometry->getIndices()->getValues();
    const auto addVertex = [&](unsigned int like) {
        positions.push_back(positions[like] + osg::Vec3f(0.F, 0.F, 1e-3F));
        return static_cast<unsigned int>(positions.size() - 1);
    };
    const std::size_t count = positions.size() / 100;
    const std::size_t step = ids.size() / count / 3 * 3;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned int a = ids[step * i];
        const unsigned int b = kind == Edges ? ids[step * i + 1] : addVertex(a);
        ids.insert(ids.end(), {a, b, addVertex(a)});
    }
    geometry->getPositions()->setValues(positions);
    geometry->getIndices()->setValues(ids);
    geometry->getTexCoords()->resize(static_cast<unsigned int>(positions.size()));
}

void repair(benchmark::State& state)
{
    const auto fault = static_cast<Fault>(state.range(1));
    bench::RatioTimer timer;
    unsigned int found = 0;
    for (auto _ : state) {
        const osg::RefPtr<osg::Node> node =
            bench::sheetPlain(static_cast<unsigned int>(state.range(0)));
        const osg::GeometryPtr geometry = bench::coreOf(node);
        if (fault != NoFault)
            addFaults(geometry, fault);
        timer.run(
            state,
            [&] {
                kyTopologyRepair faults(geometry, kyUVTypes::UVSet0);
                found = faults.fixSingularVertices() + faults.fixSingularEdges();
            },
            [&] { benchmark::DoNotOptimize(bench::countDistinctCorners(geometry)); });
    }
    state.counters["found"] = found;
    timer.report(state);
}

BENCHMARK(repair)
    ->ArgNames({"triangles", "fault"})
    ->ArgsProduct({{10'000, 100'000, 1'000'000}, {NoFault, Vertices, Edges}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(7);

} // namespace

BENCHMARK_MAIN();
