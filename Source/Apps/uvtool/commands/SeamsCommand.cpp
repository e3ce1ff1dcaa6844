#include "commands/Commands.h"

#include "cli/ExitStatus.h"
#include "commands/LayoutSubject.h"
#include "commands/SceneWork.h"
#include "commands/SeamWork.h"
#include "mesh/EdgeFile.h"
#include "report/Remarks.h"
#include "report/TextReport.h"
#include "seams/MeshSeams.h"

#include <algorithm>
#include <array>
#include <optional>

namespace uvtool
{
namespace
{

/// A geometry, or a shell, and what it is when it is cut along the seams that were proposed.
class CutProposal
{
public:
    CutProposal(LayoutSubject ofSubject, Survey cutSurvey, const FoundSeams& foundSeams)
        : subject(std::move(ofSubject)), found(foundSeams), mesh_(std::move(cutSurvey.mesh)),
          meshTriangle_(subject.geometry().triangleCount(), absentIndex)
    {
        for (std::uint32_t t = 0; t < mesh_.triangleCount(); ++t)
            meshTriangle_[mesh_.sourceTriangle[t]] = t;
    }

    LayoutSubject subject;
    FoundSeams found;

    /// The edges of a scene of the subject at which triangles hang together in the scene, and not
    /// in the cut mesh.
    std::vector<std::size_t> edgesToCut(const SceneGeometry& scene, const SceneEdges& edges) const
    {
        std::vector<std::size_t> chosen;
        for (std::size_t e = 0; e < edges.size(); ++e)
            if (!edges.isBorder(e) && isOpen(scene, edges.sides(e)))
                chosen.push_back(e);
        return chosen;
    }

private:
    using Ends = std::array<std::uint32_t, 2>;

    /// The vertices of the cut mesh along a side in the scene; of a triangle that it is without,
    /// none.
    std::optional<Ends> endsOf(const SceneGeometry& scene, std::uint32_t side) const
    {
        const std::uint32_t triangle =
            meshTriangle_[subject.triangleOf(scene.sourceOfTriangle[side / 3])];
        if (triangle == absentIndex)
            return std::nullopt;
        const std::uint32_t own = 3 * triangle + side % 3;
        const auto [low, high] = std::minmax(mesh_.triangles[own], mesh_.triangles[endCorner(own)]);
        return Ends{low, high};
    }

    bool isOpen(const SceneGeometry& scene, std::span<const std::uint32_t> sides) const
    {
        std::optional<Ends> common;
        for (const std::uint32_t side : sides) {
            const std::optional<Ends> ends = endsOf(scene, side);
            if (common && ends && *ends != *common)
                return true;
            if (ends)
                common = ends;
        }
        return false;
    }

    SolverMesh mesh_;
    std::vector<std::uint32_t> meshTriangle_; ///< [triangle of the subject]
};

CutProposal propose(Task& task, LayoutSubject subject)
{
    const DocumentGeometry& geometry = subject.geometry();
    Survey survey = surveyForSeams(geometry, task.options.common.slot);
    SeamProposal seams;
    if (survey.mesh.triangleCount() > 0) {
        seams = proposeSeams(geometry, survey, task.options.search, task.console);
        if (seams.answer.outcome == Success)
            seams.answer = cutMesh(geometry, seams.sides, task.console, survey);
    }
    if (seams.answer.outcome == Cancelled)
        throw CommandError(Interrupted, "cancelled; nothing was written");
    if (seams.answer.outcome == Failure)
        throw CommandError(Failed, "geometry " + std::to_string(subject.number()) +
                                       ": no seams could be found: " + seams.answer.error());
    seams.found.islands = survey.islands.count();
    return {std::move(subject), std::move(survey), seams.found};
}

std::vector<CutProposal> proposeAll(Task& task)
{
    std::vector<CutProposal> proposals;
    if (task.options.common.shell) {
        proposals.push_back(propose(task, {task.document, task.chosen, task.options.common.slot}));
        return proposals;
    }
    for (const std::size_t number : task.chosen) {
        task.throwIfCancelled();
        task.beginPartOfStage(1.0 / static_cast<double>(task.chosen.size()));
        proposals.push_back(propose(task, {task.document, number}));
    }
    return proposals;
}

/// The edges to cut in the file as it was read, whose vertices have the ids that a user knows.
std::vector<VertexPair> pairsToCut(Task& task, const CutProposal& proposal)
{
    std::vector<VertexPair> pairs;
    forEachScene(task, [&](const SceneGeometry& scene, const SceneIslands& found) {
        const SceneEdges edges(scene, found.compactOfVertex, found.compactVertices);
        for (const std::size_t edge : proposal.edgesToCut(scene, edges)) {
            const std::uint32_t side = edges.sides(edge).front();
            const auto [low, high] =
                std::minmax(scene.triangles[side], scene.triangles[endCorner(side)]);
            pairs.push_back({low, high});
        }
    });
    return pairs;
}

/// Start UVs are to take the place of those that geometries have.
void clearSlots(Task& task, const std::vector<CutProposal>& proposals)
{
    for (std::size_t i = 0; i < task.chosen.size(); ++i)
        if (proposals[task.options.common.shell ? 0 : i].found.edges > 0)
            task.geometry(i).uvs[task.options.common.slot].ofCorner.clear();
}

void cutAlong(const std::vector<CutProposal>& proposals, SeamWork& work)
{
    std::size_t next = 0;
    work.giveStartUVs();
    work.carryOut([&](const SceneGeometry& scene, const SceneIslands&, const SceneEdges& edges) {
        SeamPlan plan;
        const std::vector<std::size_t> chosen = proposals[next++].edgesToCut(scene, edges);
        plan.operation.kind = SeamOperation::CutEdges;
        plan.operation.edges = vertexPairsOf(scene, edges, chosen);
        plan.report.usedEdges = chosen.size();
        for (const std::size_t edge : chosen)
            plan.sides.push_back(edges.sides(edge).front());
        return plan;
    });
}

void findSeams(Task& task)
{
    const std::filesystem::path& edgeFile = task.options.edgesOutput;
    task.read();
    task.probeOutputs();
    if (!edgeFile.empty())
        throwUnlessOneScene(task, "--edges");
    std::vector<CutProposal> proposals;
    std::vector<VertexPair> pairs;
    task.stage("seams", 0.5, [&] {
        proposals = proposeAll(task);
        if (!edgeFile.empty())
            pairs = pairsToCut(task, proposals.front());
    });
    SeamWork work(task);
    task.stage("cut", 0.25, [&] {
        clearSlots(task, proposals);
        cutAlong(proposals, work);
    });
    for (std::size_t i = 0; i < proposals.size(); ++i)
        task.report.geometries[i].foundSeams = proposals[i].found;
    task.stage("look", 0.1, [&] { work.lookAgain(); });
    task.throwIfCancelled();
    if (!edgeFile.empty())
        writeEdgeFile(edgeFile, pairs);
    work.writeFiles(0.1);
}

void tell(Task& task)
{
    for (const std::string& remark : remarksOn(task.report))
        task.console.warning(remark);
    if (task.options.common.json)
        return;
    for (const std::string& line : textOfSeams(task.report))
        task.console.out() << line << '\n';
}

} // namespace

ExitStatus runSeams(const Options& options, Console& console)
{
    Task task("seams", options, console);
    task.run([&] { findSeams(task); }, [&] { tell(task); });
    return Done;
}

} // namespace uvtool
