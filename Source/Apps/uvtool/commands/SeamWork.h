#pragma once

#include "commands/Task.h"
#include "scene/SceneEdges.h"
#include "scene/SceneIslands.h"
#include "scene/SeamOperation.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace uvtool
{

/// What a command that makes or closes seams wants done in a scene.
struct SeamPlan
{
    SeamOperation operation;
    SeamReport report;                ///< what was given, and what of it is of use
    std::vector<std::uint32_t> sides; ///< one triangle side along each edge that is of use
};

using SeamPlanner =
    std::function<SeamPlan(const SceneGeometry&, const SceneIslands&, const SceneEdges&)>;

/// Seams on their way into a document: what the commands that change where UVs hang together have
/// in common.
class SeamWork
{
public:
    explicit SeamWork(Task& task) : task_(task) {}

    /// Gives the chosen geometries UVs to begin with, where they have none. Those in which then
    /// nothing is done lose them again.
    void giveStartUVs();

    /// Asks for a plan for each scene, has the library carry it out and puts the UVs into the
    /// document. A CommandError of status Unsound when the undo was to be checked and isn't right.
    void carryOut(const SeamPlanner& plan);

    /// No plan had an edge to work on.
    bool isEmpty() const;

    /// Has the library find the islands of the document as it stands now, for the report.
    void lookAgain();

    /// Writes the document and the pictures, each where it was asked for; a stage of this share.
    void writeFiles(double share);

private:
    void carryOut(const SeamPlan& plan, const SceneGeometry& scene, std::size_t number);
    void settleStartUVs(const SceneGeometry& scene, bool isCut, GeometryReport& entry);
    void noteResult(const SceneGeometry& scene, const SceneIslands& found, std::size_t number);

    Task& task_;
    std::vector<std::size_t> bare_; ///< geometries that had no UVs, ascending
    std::vector<SeamPlan> plans_;   ///< [scene]
    /// [scene] that the library counts after the work; none where nothing was done
    std::vector<std::optional<std::size_t>> islandsMade_;
    DocumentLayout layout_; ///< of all scenes, as it stands in the document
};

} // namespace uvtool
