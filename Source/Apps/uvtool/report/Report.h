#pragma once

#include "document/Document.h"
#include "mesh/EdgeFile.h"
#include "mesh/Survey.h"
#include "projection/ProjectionReport.h"
#include "report/CheckReport.h"
#include "report/EditReport.h"
#include "report/RelaxReport.h"
#include "report/TransferReport.h"
#include "scene/RepairOperation.h"
#include "scene/SceneIslands.h"

#include "UVUtils/model/kyUVTypes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace uvtool
{

/// How a command ended that calls the solver.
enum Outcome : std::int32_t
{
    Success,
    Failure,
    Cancelled
};

/// An island that keeps its UVs.
struct KeptIsland
{
    std::size_t island;        ///< counted from 0 over those of its geometry
    std::size_t triangles;     ///< how many it has
    std::size_t firstTriangle; ///< of the geometry
};

/// What a command did to the seams of a geometry, and what that has made of it.
struct SeamReport
{
    std::size_t edgesNotInMesh = 0;  ///< named by vertices that no triangle side joins
    std::size_t edgesPassedOver = 0; ///< named, but open already, or to be sewn and not open
    std::size_t usedEdges = 0;
    std::size_t unchangedEdges = 0; ///< of the used ones
    std::size_t surfacesWithoutUVs = 0;
    bool isUndoChecked = false;

    // Afterwards.
    std::size_t vertices = 0;
    std::size_t compactVertices = 0;
    std::size_t islands = 0;
    std::size_t borderEdges = 0;

    std::size_t givenEdges() const { return usedEdges + edgesPassedOver + edgesNotInMesh; }
};

/// The seams that were found for a geometry.
struct FoundSeams
{
    kyUVTypes::SeamMode mode = kyUVTypes::Organic;
    bool isModeChosen = false; ///< by the kind of the surface, not by name
    std::size_t edges = 0;
    double length = 0.0;     ///< in diagonals of the geometry's box
    std::size_t islands = 0; ///< that they leave
};

/// A path along edges that was found.
struct PathReport
{
    std::vector<VertexPair> pairs; ///< its edges, in the order of the walk
    double length = 0.0;           ///< in the scene
};

struct GeometryReport
{
    std::size_t number = 0; ///< as --geometry counts
    std::string name;
    bool isShell = false;
    std::size_t surfaces = 1;
    std::size_t vertices = 0; ///< distinct corners, whose numbers are the ids of the command line
    std::size_t polygons = 0;
    std::size_t triangles = 0;
    std::size_t islands = 0;
    std::size_t borderEdges = 0;
    std::optional<std::size_t> compactVertices; ///< of commands that ask for the compact mesh
    std::optional<SolverMeshReport> mesh;       ///< of commands that see it as the solver does
    std::vector<std::size_t> slots;             ///< those with UVs
    std::vector<KeptIsland> closedIslands; ///< without a border; nothing flat can be made of them
    std::vector<KeptIsland> keptIslands;   ///< that the solver could make nothing of
    std::optional<CheckReport> check;
    std::optional<std::vector<SceneIslands::Island>> islandList; ///< of a command about islands

    std::optional<SeamReport> seams;          ///< of commands that make or close some
    std::optional<FoundSeams> foundSeams;     ///< where some were searched for
    std::optional<PathReport> path;           ///< of a command that searches for one
    std::optional<RelaxReport> relax;         ///< of commands that relax what is there
    std::optional<LineReport> lines;          ///< where edges were named that are to be straight
    std::optional<RepairCounts> repair;       ///< of a command that makes them manifold
    std::optional<ProjectedCounts> projected; ///< of one that throws images
    std::optional<EditReport> edit;           ///< of one that moves UVs as they are told to
    std::vector<TransferCounts> transfers;    ///< of one that carries UVs over, for each slot

    std::optional<Outcome> result;        ///< of commands that change UVs; empty if not reached
    std::size_t islandsDone = 0;          ///< that got new UVs
    std::optional<Distortion> distortion; ///< of the islands that were laid out
    std::size_t splitPolygons = 0;        ///< written as their triangles, for a seam crosses them
    double seconds = 0.0;                 ///< in the library, without the packing
    std::vector<std::string> warnings;
};

/// How full a packing made its tiles, as shares of their area.
struct PackingReport
{
    double covered = 0.0;
    double mostCovered = 0.0; ///< no layout of the islands exceeds it
};

/// What a command tells about its work.
struct Report
{
    std::string command;
    std::string input;
    std::string output; ///< empty for a command that writes no mesh
    std::size_t slot = 0;
    bool listsSeeds = false; ///< of the islands
    double seconds = 0.0;
    std::vector<std::pair<std::string, double>> stages; ///< seconds of each, in their order
    std::vector<GeometryReport> geometries;
    std::optional<CheckReport> check;    ///< of all geometries as one layout
    std::optional<double> texelsPerUnit; ///< of the UV plane, where islands were packed
    std::vector<PackingReport> packings; ///< one for each layout
    std::optional<ProjectionReport> projection;
    std::optional<TransferReport> transfer;
    std::vector<std::string> warnings;
    std::optional<Outcome> result;
    std::string error; ///< why the result isn't a success
};

/// The islands of a survey for which isWanted [island] isn't 0.
std::vector<KeptIsland> islandsThat(const Survey& survey, const std::vector<char>& isWanted);

/// Adds the slots in use by a geometry to a list of slots; ascending.
void addSlots(const DocumentGeometry& geometry, std::vector<std::size_t>& slots);

/// What there is to tell about a geometry before anything is done with it, as the solver takes it.
GeometryReport describe(const DocumentGeometry& geometry, std::size_t number, const Survey& survey);

/// The same about a geometry or shell as the editing operations take it, with the counts of each
/// island.
GeometryReport describe(const Document& document, const SceneGeometry& scene,
                        const SceneIslands& found);

} // namespace uvtool
