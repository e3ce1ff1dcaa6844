#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/mesh/MeshImport.h"

#include <utility>

namespace unfold3d
{

namespace
{

Session startSession(ImportedMesh mesh, const std::vector<double>& coordsUVW)
{
    Session session;
    session.imported = true;
    session.mesh = std::move(mesh);
    session.islands = findIslands(session.mesh);
    for (std::size_t i = 0; i + 2 < coordsUVW.size(); i += 3) {
        session.uvs.push_back({coordsUVW[i], coordsUVW[i + 1]});
        session.w.push_back(coordsUVW[i + 2]);
    }
    const auto islandCount = static_cast<std::size_t>(session.islands.count());
    session.isChanged.assign(islandCount, 0);
    session.isIslandSelected.assign(islandCount, 0);
    session.isVertexSelected.assign(session.uvs.size(), 0);
    session.isFixed.assign(session.uvs.size(), 0);
    return session;
}

} // namespace

void runImport(Session& session, const Params& params, Answer& answer, RunControl& control)
{
    const std::vector<int> polySizes = params.ints("#Data.PolySizes ints");
    const std::vector<int> polyXYZIds = params.ints("#Data.PolyXYZIDs ints");
    const std::vector<double> coordsXYZ = params.doubles("#Data.CoordsXYZ doubles");
    const std::vector<int> polyUVWIds = params.ints("#Data.PolyUVWIDs ints");
    const std::vector<double> coordsUVW = params.doubles("#Data.CoordsUVW doubles");

    ImportFindings findings;
    ImportedMesh mesh =
        importMesh({polySizes, polyXYZIds, coordsXYZ, polyUVWIds, coordsUVW}, findings, control);
    answer.setTopology("Error.Topo3D", findings.errors3D);
    answer.setTopology("Error.TopoUV", findings.errorsUV);
    if (!findings.error.empty())
        throw CommandError(findings.error);
    control.setProgress(0.5);
    control.checkpoint();

    Session fresh = startSession(std::move(mesh), coordsUVW);
    control.checkpoint();
    if (!findings.warning.empty())
        answer.warn(findings.warning);
    answer.setTopology("Warning.Topo3D", findings.badTriangles);
    answer.setTopology("Warning.TopoUV", findings.badEdges);
    session = std::move(fresh);
}

} // namespace unfold3d
