// All vertices of a sheet of a million triangles moved, scaled and turned; a lattice that bends
// 200 000 UVs.
//
// "ratio" sets the transform of a plain geometry against a plain loop over the values of its slot,
// and that of a shell of 1 to 1000 surfaces, or of a plain geometry through its compact mesh,
// against copyUVsToSurfaces.
//
// The lattice is set against a loop that multiplies control points with weights that are there
// already, point after point. On two threads, "ratio" is the time of one thread by that of two, by
// the clock on the wall; it means something on a quiet machine only.

#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "OpenSG/Geometry.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/CopyUVs.h"
#include "UVUtils/compactmesh/QuietMesh.h"
#include "UVUtils/model/kyUVUtils.h"

#include <tbb/global_control.h>

#include <array>
#include <cstdint>
#include <numeric>
#include <vector>

namespace
{

using osg::Vec2f;
using Ids = std::vector<unsigned int>;

constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;
constexpr unsigned int TriangleCount = 1'000'000;
constexpr unsigned int BentTriangleCount = 400'000;

enum Operation : std::int32_t
{
    Translate,
    Scale,
    Rotate
};

Ids idsUpTo(std::size_t end)
{
    Ids ids(end);
    std::iota(ids.begin(), ids.end(), 0U);
    return ids;
}

void transform(std::int64_t operation, const osg::NodePtr& node, const Ids& ids)
{
    const osg::GeometryPtr geometry = bench::coreOf(node);
    const auto count = static_cast<unsigned int>(ids.size());
    const Vec2f center(0.5F, 0.25F);
    if (operation == Translate)
        kyUVUtils::translateUV(geometry, node, slot, ids.data(), count, 0.25F, -0.5F);
    else if (operation == Scale)
        kyUVUtils::scaleUV(geometry, node, slot, ids.data(), count, center, 1.5F, 0.75F);
    else
        kyUVUtils::rotateUV(geometry, node, slot, ids.data(), count, center, 0.6F, 0.8F);
}

void transformPlainly(std::int64_t operation, std::vector<Vec2f>& uvs)
{
    for (Vec2f& uv : uvs) {
        const float dx = uv[0] - 0.5F;
        const float dy = uv[1] - 0.25F;
        uv[0] = operation == Translate ? uv[0] + 0.25F
                : operation == Scale   ? dx * 1.5F + 0.5F
                                       : dx * 0.8F - dy * 0.6F + 0.5F;
        uv[1] = operation == Translate ? uv[1] - 0.5F
                : operation == Scale   ? dy * 0.75F + 0.25F
                                       : dy * 0.8F + dx * 0.6F + 0.25F;
    }
    benchmark::DoNotOptimize(uvs.data());
    benchmark::ClobberMemory();
}

void onPlainGeometry(benchmark::State& state)
{
    kyUVUtils::setUseCompactMesh(false);
    const osg::RefPtr<osg::Node> node = bench::sheetPlain(TriangleCount);
    std::vector<Vec2f> uvs = kyUVUtils::getUVValuesLocal(bench::coreOf(node), slot);
    const Ids ids = idsUpTo(uvs.size());
    bench::measureRatio(
        state, [&] { transform(state.range(0), node, ids); },
        [&] { transformPlainly(state.range(0), uvs); });
    kyUVUtils::setUseCompactMesh(true);
}

/// surfaces  0 for a plain geometry
void throughMesh(benchmark::State& state)
{
    const auto surfaces = static_cast<unsigned int>(state.range(1));
    const osg::RefPtr<osg::Node> node =
        surfaces == 0 ? bench::sheetPlain(TriangleCount)
                      : bench::sheetShell(TriangleCount, surfaces, bench::WeldedBorders);
    const osg::GeometryPtr core = bench::coreOf(node);
    CompactShellMesh& mesh = *CompactShellMesh::getCMesh(core, node, slot);
    const Ids ids = idsUpTo(mesh.getVertFToC().size());
    bench::measureRatio(
        state, [&] { transform(state.range(0), node, ids); },
        [&] {
            const QuietMesh quiet(&mesh);
            copyUVsToSurfaces(mesh, core, node, slot);
        });
}

/// A deformer of a plain geometry in a session of its own.
class Bending
{
public:
    explicit Bending(const benchmark::State& state)
        : res(static_cast<unsigned int>(state.range(0))), node(bench::sheetPlain(BentTriangleCount))
    {
        kyUVUtils::setUseCompactMesh(false);
        for (unsigned int j = 0; j < res; ++j)
            for (unsigned int i = 0; i < res; ++i)
                controlPoints.emplace_back(static_cast<float>(i * i) / static_cast<float>(res),
                                           static_cast<float>(j + i) / static_cast<float>(res));
        unsigned int session = 0;
        kyUVUtils::startLatticeSession(res, res, Vec2f(0.F, 0.F), Vec2f(1.F, 1.F), session);
        const osg::GeometryPtr geometry = bench::coreOf(node);
        const Ids ids = idsUpTo(geometry->getPositions()->getSize());
        pointCount = static_cast<unsigned int>(ids.size());
        deformer_ =
            kyUVUtils::getLatticeDeformer(session, geometry, node, slot, ids.data(), pointCount);
    }
    ~Bending()
    {
        kyUVUtils::finishLatticeDeformer(deformer_);
        kyUVUtils::setUseCompactMesh(true);
    }
    Bending(const Bending&) = delete;
    Bending& operator=(const Bending&) = delete;

    void apply() const { kyUVUtils::applyLatticeDeform(deformer_, slot, 0.75F, controlPoints); }
    void applyOn(std::size_t threads) const
    {
        const tbb::global_control control(tbb::global_control::max_allowed_parallelism, threads);
        apply();
    }

    unsigned int res;
    osg::RefPtr<osg::Node> node;
    std::vector<Vec2f> controlPoints;
    unsigned int pointCount = 0;

private:
    void* deformer_ = nullptr;
};

/// The multiplications alone, with a few sets of weights in turn so that none can be spared.
class Multiplications
{
public:
    explicit Multiplications(const Bending& bending)
        : res_(bending.res), weights_(Sets, std::vector<double>(bending.res))
    {
        for (const Vec2f& point : bending.controlPoints)
            controlPoints_.push_back({double{point.x()}, double{point.y()}});
        double weight = 0.5;
        for (std::vector<double>& set : weights_)
            for (double& w : set)
                w = weight = 3.7 * weight * (1 - weight);
        points_.resize(bending.pointCount);
    }

    void run()
    {
        for (std::size_t p = 0; p < points_.size(); ++p) {
            const double* const alongU = weights_[p % Sets].data();
            const double* const alongV = weights_[(p + 1) % Sets].data();
            double u = 0;
            double v = 0;
            const auto* point = controlPoints_.data();
            for (unsigned int j = 0; j < res_; ++j) {
                double rowU = 0;
                double rowV = 0;
                for (unsigned int i = 0; i < res_; ++i, ++point) {
                    rowU += alongU[i] * (*point)[0];
                    rowV += alongU[i] * (*point)[1];
                }
                u += alongV[j] * rowU;
                v += alongV[j] * rowV;
            }
            points_[p] = Vec2f(u, v);
        }
        benchmark::DoNotOptimize(points_.data());
        benchmark::ClobberMemory();
    }

private:
    static constexpr std::size_t Sets = 16;
    unsigned int res_;
    std::vector<std::vector<double>> weights_;
    std::vector<std::array<double, 2>> controlPoints_;
    std::vector<Vec2f> points_;
};

void latticeOnOneThread(benchmark::State& state)
{
    const tbb::global_control control(tbb::global_control::max_allowed_parallelism, 1);
    const Bending bending(state);
    Multiplications multiplications(bending);
    bench::measureRatio(
        state, [&] { bending.apply(); }, [&] { multiplications.run(); });
}

void latticeOnTwoThreads(benchmark::State& state)
{
    const Bending bending(state);
    bench::RatioTimer timer(CLOCK_MONOTONIC);
    for (auto _ : state)
        timer.run(
            state, [&] { bending.applyOn(1); }, [&] { bending.applyOn(2); });
    timer.report(state);
}

void timing(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(25);
}

void operations(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("operation")->DenseRange(Translate, Rotate);
}

void operationsAndSurfaces(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"operation", "surfaces"})
        ->ArgsProduct({{Translate, Scale, Rotate}, {0, 1, 10, 1000}});
}

void grids(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("points a side")->Arg(4)->Arg(20);
}

BENCHMARK(onPlainGeometry)->Apply(operations)->Apply(timing);
BENCHMARK(throughMesh)->Apply(operationsAndSurfaces)->Apply(timing);
BENCHMARK(latticeOnOneThread)->Apply(grids)->Apply(timing);
BENCHMARK(latticeOnTwoThreads)->Apply(grids)->Apply(timing);

} // namespace

BENCHMARK_MAIN();
