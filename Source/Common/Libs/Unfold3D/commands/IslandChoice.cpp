#include "Unfold3D/commands/IslandChoice.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

std::vector<char> verticesOfIslands(const Session& session)
{
    std::vector<char> isChosen(session.uvs.size(), 0);
    for (int island = 0; island < session.islands.count(); ++island)
        if (session.isIslandSelected[static_cast<std::size_t>(island)])
            for (const int v : session.islands.vertices[island])
                isChosen[static_cast<std::size_t>(v)] = 1;
    return isChosen;
}

std::vector<char> verticesOfEdges(Session& session)
{
    std::vector<char> isChosen(session.uvs.size(), 0);
    for (std::size_t e = 0; e < session.isEdgeSelected.size(); ++e)
        if (session.isEdgeSelected[e])
            for (const int v : session.edgeNumbers().vertices[e])
                isChosen[static_cast<std::size_t>(v)] = 1;
    return isChosen;
}

bool touchesIsland(const Session& session, const std::vector<char>& isChosen)
{
    for (std::size_t v = 0; v < isChosen.size(); ++v)
        if (isChosen[v] && session.islands.ofVertex[v] != Islands::noIsland)
            return true;
    return false;
}

} // namespace

std::vector<char> chosenVertices(Session& session, const Params& params,
                                 const std::string& participle)
{
    const std::string primType = params.text("#PrimType string Island", "Island");
    std::vector<char> isChosen;
    if (primType == "Island")
        isChosen = verticesOfIslands(session);
    else if (primType == "Vertex")
        isChosen = session.isVertexSelected;
    else if (primType == "Edge")
        isChosen = verticesOfEdges(session);
    else
        throw CommandError("\"" + primType + "\" can't be " + participle +
                           ": use \"Vertex\", \"Edge\" or \"Island\".");
    if (!params.flag("#ProcessSelection bool", false) ||
        (params.flag("#ProcessAllIfNoneSelected bool", false) && !touchesIsland(session, isChosen)))
        std::fill(isChosen.begin(), isChosen.end(), 1);
    return isChosen;
}

std::vector<int> islandsOf(const Session& session, const std::vector<char>& isChosen)
{
    std::vector<int> islands;
    for (int island = 0; island < session.islands.count(); ++island) {
        const std::span<const int> vertices = session.islands.vertices[island];
        if (!session.islands.triangles[island].empty() &&
            std::any_of(vertices.begin(), vertices.end(),
                        [&](int v) { return isChosen[static_cast<std::size_t>(v)] != 0; }))
            islands.push_back(island);
    }
    return islands;
}

} // namespace unfold3d
