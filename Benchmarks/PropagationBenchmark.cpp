// What moves between a compact mesh and its surfaces: tables after a change of topology, UVs, ids.
//
// A sheet of 10 k to 1 M triangles, in 1 to 1000 surfaces. Each is set against a plain loop
// for the same work, and the ratio of the two is what to compare between machines:
//
//   mapChanged      sorting the vertices and the triangles once with std::sort
//   copyUVs         copying the same bytes, surface by surface
//   verticesToMesh  one table lookup an id
//   ...FromMesh     one std::lower_bound an edge or triangle over packed keys of them all

#include "PlainSort.h"
#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "OpenSG/Geometry.h"
#include "OpenSGUtils/kyGeoShuffle.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/CopyUVs.h"
#include "UVUtils/model/ActiveSurfaces.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>

namespace
{

using Ids = std::vector<unsigned int>;
constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

/// A shell with its mesh, whose callback is off.
struct BuiltShell
{
    explicit BuiltShell(benchmark::State& state)
        : shell(bench::sheetShell(static_cast<unsigned int>(state.range(0)),
                                  static_cast<unsigned int>(state.range(1)), bench::WeldedBorders)),
          core(bench::coreOf(shell)), mesh(*CompactShellMesh::getCMesh(core, shell, slot))
    {
        mesh.enableGeomChangeCB(false);
    }

    unsigned int vertexCount() const { return mesh.getGeomPtr()->getPositions()->getSize(); }
    Ids triangles() const { return mesh.getGeomPtr()->getIndices()->getValues(); }

    osg::RefPtr<osg::Node> shell;
    osg::GeometryPtr core;
    CompactShellMesh& mesh;
};

Ids shuffled(unsigned int count)
{
    Ids order(count);
    std::iota(order.begin(), order.end(), 0U);
    std::minstd_rand random(1);
    for (unsigned int i = count; i > 1; --i)
        std::swap(order[i - 1], order[random() % i]);
    return order;
}

unsigned int sizeOf(const Ids& ids)
{
    return static_cast<unsigned int>(ids.size());
}

/// Gives the mesh's vertices other numbers, as a change of topology does.
void renumber(osg::Geometry& mesh, const Ids& order)
{
    kyGeoShuffle::shuffleProperties(osg::GeometryPtr(&mesh), order.data(), sizeOf(order), nullptr,
                                    0, true);
    Ids numberOf(order.size());
    for (unsigned int i = 0; i < order.size(); ++i)
        numberOf[order[i]] = i;
    Ids indices = mesh.getIndices()->getValues();
    for (unsigned int& id : indices)
        id = numberOf[id];
    mesh.getIndices()->setValues(indices);
}

void mapChanged(benchmark::State& state)
{
    const BuiltShell built(state);
    const Ids order = shuffled(built.vertexCount());
    bench::RatioTimer timer;
    for (auto _ : state) {
        renumber(*built.mesh.getGeomPtr(), order);
        const auto positions = built.mesh.getGeomPtr()->getPositions()->getValues();
        const Ids triangles = built.triangles();
        timer.run(
            state, [&] { built.mesh.mapChanged(built.core, built.shell, nullptr); },
            [&] { bench::sortPlainly(positions, triangles); });
    }
    timer.report(state);
}

void copyUVs(benchmark::State& state)
{
    const BuiltShell built(state);
    std::vector<osg::Vec2f> source(built.mesh.getVertFToC().size());
    const std::vector<ActiveSurface> surfaces = activeSurfaces(built.shell);
    const auto copyPlainly = [&] {
        for (const ActiveSurface& surface : surfaces) {
            const auto uvs = osg::dcast<osg::GeoTexCoords2f>(surface.geometry->getTexSlot(0));
            std::copy_n(source.data() + surface.firstId, surface.vertexCount, uvs->getData());
        }
        benchmark::ClobberMemory();
    };
    bench::measureRatio(
        state, [&] { copyUVsToSurfaces(built.mesh, built.core, built.shell, slot); }, copyPlainly);
}

void verticesToMesh(benchmark::State& state)
{
    const BuiltShell built(state);
    const Ids& table = built.mesh.getVertFToC();
    const Ids ids = shuffled(sizeOf(table));
    bench::measureRatio(
        state,
        [&] {
            Ids out;
            built.mesh.mapVertsFToC(ids.data(), sizeOf(ids), out);
            benchmark::DoNotOptimize(out.data());
        },
        [&] {
            Ids out(ids.size());
            for (std::size_t i = 0; i < ids.size(); ++i)
                out[i] = table[ids[i]];
            benchmark::DoNotOptimize(out.data());
        });
}

/// Looks up keys in any order; what is found goes out as two entries.
void seekPlainly(const std::vector<std::uint64_t>& sortedKeys,
                 const std::vector<std::uint64_t>& sought)
{
    Ids out;
    out.reserve(2 * sought.size());
    for (const std::uint64_t key : sought) {
        const auto found = std::lower_bound(sortedKeys.begin(), sortedKeys.end(), key);
        const auto place = static_cast<unsigned int>(found - sortedKeys.begin());
        out.insert(out.end(), {place, place + 1});
    }
    benchmark::DoNotOptimize(out.data());
}

std::uint64_t joined(unsigned int a, unsigned int b)
{
    return (std::uint64_t{std::min(a, b)} << 32U) | std::max(a, b);
}

void edgesFromMesh(benchmark::State& state)
{
    const BuiltShell built(state);
    const Ids triangles = built.triangles();
    Ids edges;
    std::vector<std::uint64_t> sought;
    for (const unsigned int t : shuffled(sizeOf(triangles) / 3)) {
        const unsigned int corner = 3 * t + t % 3;
        const unsigned int next = 3 * t + (t + 1) % 3;
        edges.insert(edges.end(), {triangles[corner], triangles[next]});
        sought.push_back(joined(triangles[corner], triangles[next]));
    }
    std::vector<std::uint64_t> keys = sought;
    std::sort(keys.begin(), keys.end());
    bench::measureRatio(
        state,
        [&] {
            FlatEdgeList out;
            built.mesh.mapEdgesCToF(edges.data(), sizeOf(edges), out);
            benchmark::DoNotOptimize(out.data());
        },
        [&] { seekPlainly(keys, sought); });
}

void trianglesFromMesh(benchmark::State& state)
{
    const BuiltShell built(state);
    const Ids triangles = built.triangles();
    Ids asked;
    std::vector<std::uint64_t> sought;
    for (const unsigned int t : shuffled(sizeOf(triangles) / 3)) {
        const unsigned int* corners = triangles.data() + 3 * std::size_t{t};
        asked.insert(asked.end(), corners, corners + 3);
        sought.push_back(joined(corners[0], corners[1]));
    }
    std::vector<std::uint64_t> keys = sought;
    std::sort(keys.begin(), keys.end());
    bench::measureRatio(
        state,
        [&] {
            Ids out;
            built.mesh.mapSMeshCToF(asked.data(), sizeOf(asked), out);
            benchmark::DoNotOptimize(out.data());
        },
        [&] { seekPlainly(keys, sought); });
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles", "surfaces"})
        ->ArgsProduct({{10'000, 100'000, 1'000'000}, {1, 10, 100, 1000}})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(mapChanged)->Apply(sizes);
BENCHMARK(copyUVs)->Apply(sizes);
BENCHMARK(verticesToMesh)->Apply(sizes);
BENCHMARK(edgesFromMesh)->Apply(sizes);
BENCHMARK(trianglesFromMesh)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
