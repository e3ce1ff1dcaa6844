// Paths along edges, on a sheet of 10 000 to a million triangles, row by row and shuffled.
//
// The shortest path from corner to corner visits the whole sheet. It is set against a plain heap
// search over an adjacency that is there already, in packed arrays; compare the ratio. The library
// has to build its adjacency, which it does once a call: paths over several picked vertices show
// what one of them costs by itself.

#include "RatioTimer.h"
#include "ShellMeshes.h"

#include "UVUtils/editing/EdgeGraph.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <queue>
#include <span>
#include <utility>
#include <vector>

namespace
{

using Ids = std::vector<unsigned int>;

enum Order : std::int32_t
{
    Rows,
    Shuffled
};

/// Dijkstra's search with a queue that keeps what was overtaken.
class PlainSearch
{
public:
    explicit PlainSearch(const osg::GeometryPtr& geometry)
        : positions_(osg::dcast<osg::GeoPositions3f>(geometry->getPositions())->values()),
          graph_(IndexView(geometry->getIndices()).triangles(),
                 static_cast<unsigned int>(positions_.size()), EdgeGraph::AllEdges)
    {}

    float run(unsigned int start, unsigned int target)
    {
        constexpr float unreached = std::numeric_limits<float>::max();
        distances_.assign(positions_.size(), unreached);
        previous_.resize(positions_.size());
        std::priority_queue<Entry, std::vector<Entry>, std::greater<>> queue;
        distances_[start] = 0;
        queue.emplace(0.0F, start);
        while (!queue.empty()) {
            const auto [distance, vertex] = queue.top();
            queue.pop();
            if (vertex == target)
                break;
            if (distance > distances_[vertex])
                continue;
            for (const unsigned int neighbour : graph_.neighbours(vertex)) {
                const float next = distance + (positions_[neighbour] - positions_[vertex]).length();
                if (next < distances_[neighbour]) {
                    distances_[neighbour] = next;
                    previous_[neighbour] = vertex;
                    queue.emplace(next, neighbour);
                }
            }
        }
        return distances_[target];
    }

private:
    using Entry = std::pair<float, unsigned int>;

    std::span<const osg::Pnt3f> positions_;
    EdgeGraph graph_;
    std::vector<float> distances_;
    Ids previous_;
};

osg::RefPtr<osg::Node> makeSheet(const benchmark::State& state)
{
    const auto triangleCount = static_cast<unsigned int>(state.range(0));
    if (state.range(1) == Rows)
        return bench::sheetPlain(triangleCount);
    osg::RefPtr<osg::Node> shell = bench::sheetShell(triangleCount, 1, bench::WeldedBorders);
    bench::scatterSurfaces(shell);
    osg::RefPtr<osg::Node> node(osg::Node::create());
    node->setCore(shell->getChild(0)->getCore());
    return node;
}

/// The vertices of the lowest and of the highest corner of the sheet.
std::pair<unsigned int, unsigned int> cornersOf(const osg::GeometryPtr& geometry)
{
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions())->values();
    const auto [low, high] = std::minmax_element(
        positions.begin(), positions.end(),
        [](const osg::Pnt3f& a, const osg::Pnt3f& b) { return a.x() + a.y() < b.x() + b.y(); });
    return {static_cast<unsigned int>(low - positions.begin()),
            static_cast<unsigned int>(high - positions.begin())};
}

class PlainGeometries
{
public:
    PlainGeometries() { kyUVUtils::setUseCompactMesh(false); }
    ~PlainGeometries() { kyUVUtils::setUseCompactMesh(true); }
    PlainGeometries(const PlainGeometries&) = delete;
    PlainGeometries& operator=(const PlainGeometries&) = delete;
};

void shortestPath(benchmark::State& state)
{
    const PlainGeometries plain;
    const osg::RefPtr<osg::Node> node = makeSheet(state);
    const osg::GeometryPtr geometry = bench::coreOf(node);
    PlainSearch search(geometry);
    const auto [low, high] = cornersOf(geometry);
    Ids picked{low};
    for (std::int64_t leg = 0; leg < state.range(2); ++leg)
        picked.push_back(leg % 2 == 0 ? high : low);
    FlatEdgeList edges;
    bench::measureRatio(
        state,
        [&] {
            kyUVUtils::findEdgesShortestPath(geometry, node, kyUVTypes::UVSet0, picked.data(),
                                             static_cast<unsigned int>(picked.size()), false,
                                             edges);
        },
        [&] {
            for (std::size_t i = 1; i < picked.size(); ++i)
                benchmark::DoNotOptimize(search.run(picked[i - 1], picked[i]));
        });
    state.counters["edges"] = static_cast<double>(edges.size()) / 2.0;
}

void graph(benchmark::State& state)
{
    const osg::RefPtr<osg::Node> node = makeSheet(state);
    const osg::GeometryPtr geometry = bench::coreOf(node);
    const IndexView indices(geometry->getIndices());
    for (auto _ : state)
        benchmark::DoNotOptimize(EdgeGraph(indices.triangles(), geometry->getPositions()->getSize(),
                                           EdgeGraph::AllEdges));
}

void contiguous(benchmark::State& state)
{
    const PlainGeometries plain;
    const osg::RefPtr<osg::Node> node = makeSheet(state);
    const IndexView indices(bench::coreOf(node)->getIndices());
    const Edge start(indices.ids()[0], indices.ids()[1]);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            kyUVUtils::findContiguousEdges(node, kyUVTypes::UVSet0, start, 10, 60, false, false));
}

const std::vector<std::int64_t> sizes{10'000, 100'000, 1'000'000};

} // namespace

BENCHMARK(shortestPath)
    ->ArgNames({"triangles", "shuffled", "legs"})
    ->ArgsProduct({sizes, {Rows, Shuffled}, {1, 4}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(graph)
    ->ArgNames({"triangles", "shuffled"})
    ->ArgsProduct({sizes, {Rows, Shuffled}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(contiguous)
    ->ArgNames({"triangles", "shuffled"})
    ->ArgsProduct({sizes, {Rows, Shuffled}})
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
