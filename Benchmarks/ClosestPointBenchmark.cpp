// Closest points near a sheet of 10 000 to a million triangles, by each structure, and rays, as
// multiples of the time that Embree's own queries take for the same points in the same order; and
// building the structures, as multiples of Embree's build of its scene. All on one thread. The
// points lie up to an edge's length off the surface, which is where a mesh asks when it takes over
// what another one of about its shape has. They come in the order of a space-filling curve, as the
// triangles of a mesh mostly do, or scattered, and the last answer is passed on as a guess, or
// none.

#include "EmbreeScene.h"
#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "MeshUtils/kyGeoSampler.h"
#include "MeshUtils/kyMeshPointQuery.h"
#include "MeshUtils/kyTriangleOctree.h"

#include <tbb/global_control.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <span>
#include <utility>

namespace
{

enum Order : std::int32_t
{
    Scattered,
    Curve,
    CurveGuessing
};

enum RayKind : std::int32_t
{
    Steep, ///< onto the sheet nearly straight down, as along normals
    Flat   ///< along the sheet, far and across many boxes
};

/// Where a point about the unit square stands on the Z curve of a fine grid.
std::uint64_t placeOnCurve(const osg::Pnt3f& point)
{
    constexpr unsigned int bits = 20;
    constexpr float cells = 1U << bits;
    std::uint64_t place = 0;
    for (unsigned int i = 0; i < 3; ++i) {
        const auto cell =
            static_cast<std::uint64_t>(std::clamp((point[i] + 0.5F) / 2 * cells, 0.F, cells - 1));
        for (unsigned int bit = 0; bit < bits; ++bit)
            place |= (cell >> bit & 1U) << (3 * bit + i);
    }
    return place;
}

/// Points in the middle of random triangles, moved by up to a given distance along each axis.
std::vector<osg::Pnt3f> pointsNear(const osg::GeometryPtr& geometry, std::size_t count, float far)
{
    std::mt19937 random(7);
    const auto positions = geometry->getPositions()->getValues();
    const auto ids = geometry->getIndices()->getValues();
    std::uniform_real_distribution<float> offset(-far, far);
    std::vector<osg::Pnt3f> points;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t t = random() % (ids.size() / 3);
        osg::Vec3f sum;
        for (std::size_t k = 0; k < 3; ++k)
            sum += positions[ids[3 * t + k]].subZero();
        points.emplace_back(osg::Pnt3f(sum * (1.F / 3)) +
                            osg::Vec3f(offset(random), offset(random), offset(random)));
    }
    return points;
}

void sortAlongCurve(std::vector<osg::Pnt3f>& points)
{
    std::vector<std::pair<std::uint64_t, osg::Pnt3f>> keyed;
    keyed.reserve(points.size());
    for (const osg::Pnt3f& point : points)
        keyed.emplace_back(placeOnCurve(point), point);
    std::ranges::stable_sort(keyed, {}, [](const auto& entry) { return entry.first; });
    std::ranges::transform(keyed, points.begin(), [](const auto& entry) { return entry.second; });
}

struct Case
{
    explicit Case(benchmark::State& state)
        : node(bench::sheetPlain(static_cast<unsigned int>(state.range(0)))),
          geometry(bench::coreOf(node)), order(static_cast<Order>(state.range(1)))
    {}
    [[nodiscard]] std::vector<osg::Pnt3f> points(std::size_t count) const
    {
        const auto corners = static_cast<float>(geometry->getIndices()->getSize());
        const float edge = std::sqrt(2.F / (corners / 3));
        std::vector<osg::Pnt3f> result = pointsNear(geometry, count, edge);
        if (order != Scattered)
            sortAlongCurve(result);
        return result;
    }

    tbb::global_control oneThread{tbb::global_control::max_allowed_parallelism, 1};
    osg::RefPtr<osg::Node> node;
    osg::GeometryPtr geometry;
    Order order;
};

/// Asks about all points by `ours` and by Embree, in turn. Each takes (point) and returns an
/// answer; `distanceOf` takes (point, answer of ours).
template <class Ours, class Theirs, class DistanceOf>
void compare(benchmark::State& state, std::span<const osg::Pnt3f> points, const Ours& ours,
             const Theirs& theirs, const DistanceOf& distanceOf)
{
    const auto askAll = [points](const auto& ask) {
        for (const osg::Pnt3f& point : points)
            benchmark::DoNotOptimize(ask(point));
    };
    bench::RatioTimer timer;
    for (auto _ : state)
        timer.run(
            state, [&] { askAll(ours); }, [&] { askAll(theirs); });
    double sumOfOurs = 0;
    double sumOfTheirs = 0;
    for (const osg::Pnt3f& point : points) {
        sumOfOurs += static_cast<double>(distanceOf(point, ours(point)));
        sumOfTheirs += static_cast<double>(theirs(point).distance);
    }
    const double difference = std::abs(sumOfOurs - sumOfTheirs);
    state.counters["distances_agree"] = difference <= 1e-4 * sumOfTheirs ? 1 : 0;
    state.counters["per_second"] = static_cast<double>(points.size()) / timer.best();
    timer.report(state);
}

/// find  (point, result) finds the closest point
template <class Find>
void compareClosest(benchmark::State& state, const Case& test, std::size_t count, const Find& find)
{
    const bench::EmbreeScene embree(test.geometry);
    kyPointOnGeometry result;
    compare(
        state, test.points(count),
        [&](const osg::Pnt3f& point) -> const kyPointOnGeometry& {
            if (test.order != CurveGuessing)
                result = kyPointOnGeometry();
            find(point, result);
            return result;
        },
        [&](const osg::Pnt3f& point) { return embree.closest(point); },
        [](const osg::Pnt3f& point, const kyPointOnGeometry& answer) {
            return (answer.getPosition() - point).length();
        });
}

/// As many points as the sheet has triangles, but enough to measure.
std::size_t pointCount(const benchmark::State& state)
{
    return static_cast<std::size_t>(std::max<std::int64_t>(100'000, state.range(0)));
}

void bvhQueries(benchmark::State& state)
{
    const Case test(state);
    kyMeshPointQuery query;
    query.build(test.geometry);
    compareClosest(state, test, pointCount(state),
                   [&](const osg::Pnt3f& point, kyPointOnGeometry& result) {
                       query.findClosestPoint(point, result);
                   });
}

void octreeQueries(benchmark::State& state)
{
    const Case test(state);
    kyTriangleOctree octree(test.geometry);
    octree.build();
    compareClosest(state, test, pointCount(state),
                   [&](const osg::Pnt3f& point, kyPointOnGeometry& result) {
                       octree.getClosestPoint(point, result);
                   });
}

void linearQueries(benchmark::State& state)
{
    const Case test(state);
    compareClosest(state, test, 20, [&](const osg::Pnt3f& point, kyPointOnGeometry& result) {
        kyGeoSampler::getClosestPoint(test.geometry, point, result);
    });
}

void bvhRays(benchmark::State& state)
{
    const Case test(state);
    kyMeshPointQuery query;
    query.build(test.geometry);
    const bench::EmbreeScene embree(test.geometry);
    const bool isSteep = state.range(2) == Steep;
    // Each ray has a direction of its own, the same for both.
    const auto directionFrom = [isSteep](const osg::Pnt3f& point) {
        const float x = std::sin(1e5F * point.x());
        const float y = std::sin(1e5F * point.y());
        return osg::Vec3f(x, y, isSteep ? -4.F : -0.1F).normalized();
    };
    compare(
        state, test.points(pointCount(state)),
        [&](const osg::Pnt3f& point) {
            kyPointOnGeometry result;
            float distance = 0;
            query.castRay(point, directionFrom(point), std::numeric_limits<float>::infinity(),
                          result, distance);
            return distance;
        },
        [&](const osg::Pnt3f& point) { return embree.firstHit(point, directionFrom(point)); },
        [](const osg::Pnt3f& /*point*/, float distance) { return distance; });
}

void bvhBuild(benchmark::State& state)
{
    const Case test(state);
    bench::measureRatio(
        state,
        [&] {
            kyMeshPointQuery query;
            query.build(test.geometry);
        },
        [&] { const bench::EmbreeScene embree(test.geometry); });
}

void octreeBuild(benchmark::State& state)
{
    const Case test(state);
    bench::measureRatio(
        state,
        [&] {
            kyTriangleOctree octree(test.geometry);
            octree.build();
        },
        [&] { const bench::EmbreeScene embree(test.geometry); });
}

void queryArguments(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles", "order"})
        ->ArgsProduct({{10'000, 100'000, 1'000'000}, {Scattered, Curve, CurveGuessing}});
}

void rayArguments(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles", "order", "rays"})
        ->ArgsProduct({{10'000, 100'000, 1'000'000}, {Scattered, Curve}, {Steep, Flat}});
}

void plainArguments(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles", "order"})
        ->ArgsProduct({{10'000, 100'000, 1'000'000}, {Scattered}});
}

void timing(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
}

BENCHMARK(bvhQueries)->Apply(queryArguments)->Apply(timing);
BENCHMARK(octreeQueries)->Apply(queryArguments)->Apply(timing);
BENCHMARK(linearQueries)->Apply(plainArguments)->Apply(timing);
BENCHMARK(bvhRays)->Apply(rayArguments)->Apply(timing);
BENCHMARK(bvhBuild)->Apply(plainArguments)->Apply(timing);
BENCHMARK(octreeBuild)->Apply(plainArguments)->Apply(timing);

} // namespace

BENCHMARK_MAIN();
