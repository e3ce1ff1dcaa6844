// UVs carried over from 100 000 triangles to 10 000, 100 000 and a million.
//
// The source is a sheet of 16 stamps, each with UVs of its own, so that there are seams to walk up
// to. The target is the same sheet in one piece, its vertices moved by up to a third of an edge
// within the plane, as if it had been meshed anew.
//
// "ratio" sets transferUVs against queries alone, by a structure that is ready, each with the last
// answer as a guess. With "queries" 0 they are closest points on the source for the middle and the
// three corners of each target triangle, one triangle after the other. With 1 they are the searches
// that are left when the corners at a vertex share theirs: one a vertex, then one a triangle.
// Reading the source, which any number of targets share, has a row of its own, against building the
// structure.
//
// On two threads, "ratio" is the time of one thread by that of two, by the clock on the wall; it
// means something on a quiet machine only.

#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "MeshUtils/kyMeshPointQuery.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/VertexNormals.h"
#include "UVUtils/repair/kyTransferGeoProperties.h"

#include <tbb/global_control.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace
{

enum Searches : std::int32_t
{
    Corners,
    Vertices
};

constexpr unsigned int SourceTriangles = 100'000;
constexpr unsigned int SourceSurfaces = 16;

/// Brings the sheet to 100 units: what counts as near for a transfer is a thousandth of a unit.
void enlarge(const osg::GeometryPtr& geometry)
{
    for (osg::Pnt3f& p : osg::dcast<osg::GeoPositions3f>(geometry->getPositions())->values())
        p = osg::Pnt3f(p.subZero() * 100.F);
}

osg::RefPtr<osg::Node> makeSource()
{
    osg::RefPtr<osg::Node> shell =
        bench::sheetShell(SourceTriangles, SourceSurfaces, bench::SeamBorders);
    for (unsigned int i = 0; i < SourceSurfaces; ++i)
        enlarge(bench::coreOf(shell->getChild(i)));
    return shell;
}

osg::RefPtr<osg::Node> makeTarget(unsigned int triangleCount)
{
    osg::RefPtr<osg::Node> node = bench::sheetPlain(triangleCount);
    const osg::GeometryPtr geometry = bench::coreOf(node);
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions())->values();
    const float shift = std::sqrt(2.F / static_cast<float>(triangleCount)) / 3;
    std::mt19937 random(3);
    std::uniform_real_distribution<float> move(-shift, shift);
    for (osg::Pnt3f& position : positions)
        position += osg::Vec3f(move(random), move(random), 0);
    enlarge(geometry);
    geometry->setNormals(osg::GeoNormals3f::create());
    geometry->getNormals()->setValues(
        areaWeightedNormals(geometry->getIndices()->getValues(), positions));
    return node;
}

/// What a transfer reads: the surfaces of the source as one mesh.
osg::GeometryPtr workGeometry(const osg::NodePtr& source)
{
    return CompactShellMesh::getCMesh(bench::coreOf(source), source, kyUVTypes::UVSet0)
        ->getGeomPtr();
}

/// The points that a transfer asks for.
class Queries
{
public:
    Queries(const osg::NodePtr& source, const osg::NodePtr& target)
    {
        query_.build(workGeometry(source));
        vertices_ = bench::coreOf(target)->getPositions()->getValues();
        ids_ = bench::coreOf(target)->getIndices()->getValues();
    }

    void askForCorners() const
    {
        kyPointOnGeometry hit;
        for (std::size_t i = 0; i < ids_.size(); i += 3) {
            ask(middleOf(i), hit);
            for (std::size_t k = 0; k < 3; ++k)
                ask(vertices_[ids_[i + k]], hit);
        }
    }
    void askForVertices() const
    {
        kyPointOnGeometry hit;
        for (const osg::Pnt3f& vertex : vertices_)
            ask(vertex, hit);
        for (std::size_t i = 0; i < ids_.size(); i += 3)
            ask(middleOf(i), hit);
    }

private:
    [[nodiscard]] osg::Pnt3f middleOf(std::size_t corner) const
    {
        osg::Vec3f sum;
        for (std::size_t k = 0; k < 3; ++k)
            sum += vertices_[ids_[corner + k]].subZero();
        return osg::Pnt3f(sum * (1.F / 3));
    }
    void ask(const osg::Pnt3f& point, kyPointOnGeometry& hit) const
    {
        query_.findClosestPoint(point, hit);
        benchmark::DoNotOptimize(hit);
    }

    kyMeshPointQuery query_;
    std::vector<osg::Pnt3f> vertices_;
    std::vector<unsigned int> ids_;
};

/// A source that has been read, and a target that is made anew for each transfer.
struct Case
{
    explicit Case(const benchmark::State& state)
        : triangleCount(static_cast<unsigned int>(state.range(0)))
    {
        transfer.initFromSource(source, kyUVTypes::UVSet0);
        renewTarget();
    }
    void renewTarget() { target = makeTarget(triangleCount); }
    void write() { transfer.transferUVs(target, kyUVTypes::UVSet0); }

    unsigned int triangleCount;
    osg::RefPtr<osg::Node> source = makeSource();
    osg::RefPtr<osg::Node> target;
    kyTransferGeoProperties transfer{source};
};

void oneThread(benchmark::State& state)
{
    const tbb::global_control control(tbb::global_control::max_allowed_parallelism, 1);
    Case test(state);
    const Queries queries(test.source, test.target);
    const auto vertexCount = [&] { return bench::coreOf(test.target)->getPositions()->getSize(); };
    const unsigned int verticesBefore = vertexCount();
    bench::RatioTimer timer;
    for (auto _ : state)
        timer.run(
            state, [&] { test.write(); },
            [&] { state.range(1) == Corners ? queries.askForCorners() : queries.askForVertices(); },
            [&] { test.renewTarget(); });
    state.counters["vertices_added"] = vertexCount() - verticesBefore;
    timer.report(state);
}

void twoThreads(benchmark::State& state)
{
    Case test(state);
    const auto writeOn = [&](std::size_t threads) {
        const tbb::global_control control(tbb::global_control::max_allowed_parallelism, threads);
        test.write();
    };
    bench::RatioTimer timer(CLOCK_MONOTONIC);
    for (auto _ : state) {
        test.renewTarget();
        timer.run(
            state, [&] { writeOn(1); }, [&] { writeOn(2); }, [&] { test.renewTarget(); });
    }
    timer.report(state);
}

void reading(benchmark::State& state)
{
    const tbb::global_control control(tbb::global_control::max_allowed_parallelism, 1);
    const auto build = [](const osg::NodePtr& source) {
        kyMeshPointQuery query;
        query.build(workGeometry(source));
    };
    const osg::RefPtr<osg::Node> ready = makeSource();
    build(ready);
    osg::RefPtr<osg::Node> fresh;
    bench::RatioTimer timer;
    for (auto _ : state)
        timer.run(
            state,
            [&] {
                kyTransferGeoProperties transfer(fresh);
                transfer.initFromSource(fresh, kyUVTypes::UVSet0);
            },
            [&] { build(ready); }, [&] { fresh = makeSource(); });
    timer.report(state);
}

void oneThreadArguments(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles", "queries"})
        ->ArgsProduct({{10'000, 100'000, 1'000'000}, {Corners, Vertices}});
}

void twoThreadsArguments(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("triangles")->ArgsProduct({{10'000, 100'000, 1'000'000}});
}

void timing(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);
}

BENCHMARK(oneThread)->Apply(oneThreadArguments)->Apply(timing);
BENCHMARK(twoThreads)->Apply(twoThreadsArguments)->Apply(timing);
BENCHMARK(reading)->Apply(timing);

} // namespace

BENCHMARK_MAIN();
