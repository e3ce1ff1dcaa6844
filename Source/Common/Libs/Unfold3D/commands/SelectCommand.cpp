#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/seams/FindSeams.h"

#include <algorithm>
#include <optional>

namespace unfold3d
{

namespace
{

/// One kind of element and who of it is selected.
struct Choice
{
    const char* name;
    std::vector<char>* isSelected;
    int count;
};

Choice choiceFor(Session& session, const std::string& primType)
{
    if (primType == "Vertex")
        return {"vertex", &session.isVertexSelected, session.mesh.vertexCount()};
    if (primType == "Island")
        return {"island", &session.isIslandSelected, session.islands.count()};
    if (primType == "Edge") {
        const int count = session.edgeNumbers().count();
        return {"edge", &session.isEdgeSelected, count};
    }
    throw CommandError("\"" + primType +
                       "\" can't be selected: select \"Vertex\", \"Edge\" or \"Island\".");
}

void checkIds(const std::vector<int>& ids, const Choice& choice)
{
    for (const int id : ids)
        if (id < 0 || id >= choice.count)
            throw CommandError("Can't select " + std::string(choice.name) + " " +
                               std::to_string(id) + ": the mesh has only " +
                               std::to_string(choice.count) + ".");
}

/// The selected edges as pairs (triangle, corner edge); corner edge i runs from corner i to the
/// next. An edge is told once, from the first triangle that has it.
std::vector<int> selectedCornerEdges(Session& session)
{
    std::vector<int> pairs;
    const EdgeNumbers& edges = session.edgeNumbers();
    std::vector<char> wanted = session.isEdgeSelected;
    wanted.resize(static_cast<std::size_t>(edges.count()), 0);
    for (std::size_t t = 0; t < edges.ofTriangle.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i) {
            char& edge = wanted[static_cast<std::size_t>(edges.ofTriangle[t][i])];
            if (!edge)
                continue;
            edge = 0;
            pairs.push_back(static_cast<int>(t));
            pairs.push_back(static_cast<int>(i));
        }
    return pairs;
}

/// What seams are asked for, if any. Of several kinds the first counts.
std::optional<SeamOptions> readSeamOptions(const Params& params)
{
    if (params.has("#Organic table")) {
        OrganicOptions options;
        options.usePipesCutter = params.flag("#Organic.UsePipesCutter bool", false);
        options.segmentAmount = params.number("#Organic.SegAmount double", 0.0);
        return options;
    }
    if (params.has("#Manufactured table")) {
        ManufacturedOptions options;
        options.angle = params.number("#Manufactured.Angle double", options.angle);
        options.minPatchRatio = params.number("#Manufactured.MinPatchRatio double", 0.0);
        return options;
    }
    if (params.has("#Baking table")) {
        BakingOptions options;
        options.angle = params.number("#Baking.Angle double", options.angle);
        options.minPatchPolygons =
            params.integer("#Baking.MinPatchNumPoly int", options.minPatchPolygons);
        return options;
    }
    return std::nullopt;
}

/// The numbers of the edges at which to cut the mesh.
std::vector<int> proposeSeams(Session& session, const Params& params, const SeamOptions& options,
                              RunControl& control)
{
    if (params.text("#PrimType string \"Edge\"", "Edge") != "Edge")
        throw CommandError("Seams are edges: select \"Edge\".");
    const EdgeNumbers& edges = session.edgeNumbers();
    std::vector<int> ids;
    for (const auto& [triangle, corner] : findSeams(session.mesh, options, control))
        ids.push_back(
            edges.ofTriangle[static_cast<std::size_t>(triangle)][static_cast<std::size_t>(corner)]);
    return ids;
}

} // namespace

void runSelect(Session& session, const Params& params, Answer& answer, RunControl& control)
{
    const Choice choice = choiceFor(session, params.text("#PrimType string \"Edge\"", "Edge"));
    control.checkpoint();
    const bool select = params.flag("#Select bool", true);
    const bool all = params.flag("#All bool", false);
    std::vector<int> ids =
        params.flag("#List bool", false) ? params.ints("#IDs ints") : std::vector<int>();
    checkIds(ids, choice);
    if (const std::optional<SeamOptions> seams = readSeamOptions(params))
        ids = proposeSeams(session, params, *seams, control);

    std::vector<char>& isSelected = *choice.isSelected;
    isSelected.resize(static_cast<std::size_t>(choice.count), 0);
    if (params.flag("#ResetBefore bool", false))
        std::fill(isSelected.begin(), isSelected.end(), 0);
    if (all)
        std::fill(isSelected.begin(), isSelected.end(), static_cast<char>(select));
    for (const int id : ids)
        isSelected[static_cast<std::size_t>(id)] = static_cast<char>(select);

    if (params.flag("#ReturnEdgesSel bool", false))
        answer.set("#EdgeSelection Ints",
                   NU3D::CRef(selectedCornerEdges(session), NU3D::VALPROP_VALUE));
}

} // namespace unfold3d
