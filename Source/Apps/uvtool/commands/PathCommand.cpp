#include "commands/Commands.h"

#include "commands/SceneWork.h"
#include "document/Transform.h"
#include "document/Vec3Math.h"
#include "report/Remarks.h"
#include "report/TextReport.h"
#include "scene/PathOperation.h"
#include "scene/SceneEdges.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

namespace uvtool
{
namespace
{

/// The edges of a path as pairs, in the order of the walk, each once.
std::vector<VertexPair> pairsOf(const std::vector<unsigned int>& path)
{
    std::vector<VertexPair> pairs;
    std::set<VertexPair> met;
    for (std::size_t i = 0; i + 1 < path.size(); i += 2) {
        const auto [low, high] = std::minmax(path[i], path[i + 1]);
        if (met.insert({low, high}).second)
            pairs.push_back({low, high});
    }
    return pairs;
}

double lengthOf(const Document& document, const TriangleSource& source, std::uint32_t side)
{
    const DocumentGeometry& geometry = document.geometries[source.geometry];
    const auto place = [&](std::uint32_t corner) {
        const std::size_t at = 3 * std::size_t{source.triangle} + corner % 3;
        return toScene(geometry.toWorld, geometry.positions.at(geometry.triangles[at]));
    };
    const Vec3d way = difference(place(endCorner(side)), place(side));
    return std::sqrt(dot(way, way));
}

/// Measures a path and marks it for the pictures.
PathReport measure(const Document& document, const SceneGeometry& scene, const SceneEdges& edges,
                   std::vector<VertexPair> pairs, MarkedSides& marked)
{
    PathReport report;
    for (const VertexPair& pair : pairs) {
        const std::optional<std::size_t> edge = edges.find(pair[0], pair[1]);
        if (!edge)
            continue; // of triangles without an area alone
        for (const std::uint32_t side : edges.sides(*edge))
            marked.add(scene.sourceOfTriangle[side / 3], side % 3);
        const std::uint32_t side = edges.sides(*edge).front();
        report.length += lengthOf(document, scene.sourceOfTriangle[side / 3], side);
    }
    report.pairs = std::move(pairs);
    return report;
}

void search(Task& task, const SceneGeometry& scene, const SceneIslands& found, MarkedSides& marked)
{
    const PathOptions& options = task.options.path;
    if (found.compactOfVertex.empty())
        throw CommandError(Failed, task.report.input + ": there are no triangles to walk along");
    throwUnlessInScene(options.ids(), scene, options.name());
    GeometryReport& entry =
        task.report.geometries.emplace_back(describe(task.document, scene, found));
    entry.islandList.reset();
    const SceneEdges edges(scene, found.compactOfVertex, found.compactVertices);
    const std::vector<VertexPair> pairs =
        pairsOf(findPath({scene, found, edges}, options, task.options.common.slot, task.console));
    entry.path = measure(task.document, scene, edges, pairs, marked);
}

void findPath(Task& task)
{
    task.read();
    task.probeOutputs();
    throwUnlessOneScene(task, task.options.path.name());
    DocumentLayout layout;
    MarkedSides marked;
    task.stage("path", 0.85, [&] {
        forEachScene(task, [&](const SceneGeometry& scene, const SceneIslands& found) {
            search(task, scene, found, marked);
            layout = sceneLayout(task.document, scene, found, task.options.common.slot, AllIslands);
        });
    });
    if (!task.options.edgesOutput.empty())
        writeEdgeFile(task.options.edgesOutput, task.report.geometries.front().path->pairs);
    task.draw(layout, {}, marked);
}

/// Without a file the edges go to standard output, where a pipe may wait for them.
void tell(Task& task)
{
    const PathReport& path = *task.report.geometries.front().path;
    for (const std::string& remark : remarksOn(task.report))
        task.console.warning(remark);
    if (task.options.common.json)
        return;
    task.console.note(textOfPath(path));
    if (!task.options.edgesOutput.empty())
        return;
    task.console.out() << textOfEdges(path.pairs) << std::flush;
    if (!task.console.out())
        throw CommandError(Unwritable, "standard output: the edges cannot be written");
}

} // namespace

ExitStatus runPath(const Options& options, Console& console)
{
    Task task("path", options, console);
    task.run([&] { findPath(task); }, [&] { tell(task); });
    return Done;
}

} // namespace uvtool
