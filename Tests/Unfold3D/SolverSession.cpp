#include "SolverSession.h"

using unfold3d::IslandMesh;
using unfold3d::Vec2;

namespace
{

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
    import(mesh, coordsUVW);
}

void SolverSession::import(const IslandMesh& mesh, const std::vector<double>& coordsUVW)
{
    std::vector<int> corners;
    for (const unfold3d::Triangle& t : mesh.triangles)
        corners.insert(corners.end(), t.begin(), t.end());
    run("Import", {{"#Data.PolySizes ints", std::vector<int>(mesh.triangles.size(), 3)},
                   {"#Data.PolyXYZIDs ints", corners},
                   {"#Data.CoordsXYZ doubles", coordinates(mesh)},
                   {"#Data.PolyUVWIDs ints", corners},
                   {"#Data.CoordsUVW doubles", coordsUVW}});
}

void SolverSession::run(const std::string& command, std::span<const Key> keys)
{
    const NU3D::CRef params(NU3D::VALTYPE_TABLE, NU3D::VALPROP_VALUE);
    for (const Key& key : keys) {
        if (key.value)
            params->Add(key.name, key.value);
        else
            params->Add(key.name);
    }
    last_ = api_.Do(command, params);
}

void SolverSession::select(const char* kind, const std::vector<int>& ids)
{
    run("Select", {{"#PrimType string \"Edge\"", kind},
                   {"#ResetBefore bool", true},
                   {"#Select bool", true},
                   {"#List bool", true},
                   {"#IDs ints", ids}});
}

void SolverSession::selectAllVertices()
{
    run("Select",
        {{"#PrimType string \"Edge\"", "Vertex"}, {"#Select bool", true}, {"#All bool", true}});
}

void SolverSession::pinEdges(const std::vector<int>& ids, bool vertical)
{
    select("Edge", ids);
    run("Constrain", {{"#PrimType string \"Vertex\"", "Edge"},
                      {"#Mode string \"Pin\"", vertical ? "EdgeV" : "EdgeH"}});
}

void SolverSession::unfold()
{
    run("Unfold", {{"#PrimType string Island", "Vertex"},
                   {"#ProcessSelection bool", true},
                   {"#ProcessAllIfNoneSelected bool"},
                   {"#Iterations int 1", 1},
                   {"#BorderIntersections bool", true},
                   {"#TriangleFlips bool", true},
                   {"#RoomSpace double 000.1", 0.0}});
}

void SolverSession::optimize(const OptimizeKeys& keys)
{
    run("Optimize", {{"#PrimType string Island", "Vertex"},
                     {"#ProcessSelection bool", true},
                     {"#ProcessAllIfNoneSelected bool"},
                     {"#Iterations int 2", keys.iterations},
                     {"#BorderIntersection bool", keys.bordersApart},
                     {"#TriangleFlips bool", keys.noFlips},
                     {"#RoomSpace double 0.001", 0.0},
                     {"#Mix double 1.0", keys.power},
                     {"#AngleDistanceMix double 1.0", keys.lengths}});
}

std::vector<Vec2> SolverSession::exportUVs()
{
    run("Export", {{"#Data table"}, {"#Data.UseImportedUVWPolygons bool", true}});
    const std::vector<double> coords = last_->GetDoubles("#Data.CoordsUVW doubles");
    std::vector<Vec2> uvs;
    for (std::size_t i = 0; i + 2 < coords.size(); i += 3)
        uvs.push_back({coords[i], coords[i + 1]});
    return uvs;
}
