#include "SolverSession.h"

using NU3D::CRef;
using NU3D::VALPROP_VALUE;
using unfold3d::IslandMesh;
using unfold3d::Vec2;

namespace
{

CRef table()
{
    return {NU3D::VALTYPE_TABLE, VALPROP_VALUE};
}

std::vector<double> coordinates(const IslandMesh& mesh)
{
    std::vector<double> coords;
    for (const unfold3d::Vec3& p : mesh.positions)
        coords.insert(coords.end(), {p.x, p.y, p.z});
    return coords;
}

} // namespace

SolverSession::SolverSession(const IslandMesh& mesh)
{
    import(mesh, coordinates(mesh));
}

SolverSession::SolverSession(const IslandMesh& mesh, const std::vector<Vec2>& uvs)
{
    std::vector<double> coordsUVW;
    for (const Vec2 uv : uvs)
        coordsUVW.insert(coordsUVW.end(), {uv.x, uv.y, 0.0});
    import(mesh, std::move(coordsUVW));
}

void SolverSession::import(const IslandMesh& mesh, std::vector<double> coordsUVW)
{
    std::vector<int> corners;
    for (const unfold3d::Triangle& t : mesh.triangles)
        corners.insert(corners.end(), t.begin(), t.end());
    const CRef params = table();
    params->Add("#Data.PolySizes ints",
                CRef(std::vector<int>(mesh.triangles.size(), 3), VALPROP_VALUE));
    params->Add("#Data.PolyXYZIDs ints", CRef(corners, VALPROP_VALUE));
    params->Add("#Data.CoordsXYZ doubles", CRef(coordinates(mesh), VALPROP_VALUE));
    params->Add("#Data.PolyUVWIDs ints", CRef(corners, VALPROP_VALUE));
    params->Add("#Data.CoordsUVW doubles", CRef(std::move(coordsUVW), VALPROP_VALUE));
    run("Import", params);
}

void SolverSession::run(const std::string& command, const CRef& params)
{
    last_ = api_.Do(command, params);
}

void SolverSession::selectVertices(const std::vector<int>& ids)
{
    const CRef params = table();
    params->Add("#PrimType string \"Edge\"", CRef("Vertex", VALPROP_VALUE));
    params->Add("#Select bool", CRef(true, VALPROP_VALUE));
    params->Add("#List bool", CRef(true, VALPROP_VALUE));
    params->Add("#IDs ints", CRef(ids, VALPROP_VALUE));
    run("Select", params);
}

void SolverSession::selectAllVertices()
{
    const CRef params = table();
    params->Add("#PrimType string \"Edge\"", CRef("Vertex", VALPROP_VALUE));
    params->Add("#Select bool", CRef(true, VALPROP_VALUE));
    params->Add("#All bool", CRef(true, VALPROP_VALUE));
    run("Select", params);
}

void SolverSession::pinEdges(const std::vector<int>& ids, bool vertical)
{
    const CRef selection = table();
    selection->Add("#PrimType string \"Edge\"", CRef("Edge", VALPROP_VALUE));
    selection->Add("#ResetBefore bool", CRef(true, VALPROP_VALUE));
    selection->Add("#Select bool", CRef(true, VALPROP_VALUE));
    selection->Add("#List bool", CRef(true, VALPROP_VALUE));
    selection->Add("#IDs ints", CRef(ids, VALPROP_VALUE));
    run("Select", selection);
    const CRef params = table();
    params->Add("#PrimType string \"Vertex\"", CRef("Edge", VALPROP_VALUE));
    params->Add("#Mode string \"Pin\"", CRef(vertical ? "EdgeV" : "EdgeH", VALPROP_VALUE));
    run("Constrain", params);
}

void SolverSession::unfold(const UnfoldKeys& keys)
{
    const CRef params = table();
    params->Add("#PrimType string Island", CRef("Vertex", VALPROP_VALUE));
    params->Add("#ProcessSelection bool", CRef(keys.processSelection, VALPROP_VALUE));
    params->Add("#ProcessAllIfNoneSelected bool");
    params->Add("#Iterations int 1", CRef(keys.iterations, VALPROP_VALUE));
    params->Add("#BorderIntersections bool", CRef(keys.preventCrossings, VALPROP_VALUE));
    params->Add("#TriangleFlips bool", CRef(true, VALPROP_VALUE));
    params->Add("#RoomSpace double 000.1", CRef(0.0, VALPROP_VALUE));
    run("Unfold", params);
}

std::vector<Vec2> SolverSession::exportDoubles()
{
    const CRef params = table();
    params->Add("#Data table");
    params->Add("#Data.UseImportedUVWPolygons bool", CRef(true, VALPROP_VALUE));
    run("Export", params);
    const std::vector<double> coords = last_->GetDoubles("#Data.CoordsUVW doubles");
    std::vector<Vec2> uvs;
    for (std::size_t i = 0; i + 2 < coords.size(); i += 3)
        uvs.push_back({coords[i], coords[i + 1]});
    return uvs;
}

std::vector<Vec2> SolverSession::exportFloats()
{
    std::vector<Vec2> uvs = exportDoubles();
    for (Vec2& uv : uvs)
        uv = {static_cast<double>(static_cast<float>(uv.x)),
              static_cast<double>(static_cast<float>(uv.y))};
    return uvs;
}
