#include "EngineRun.h"

#include "PeakMemory.h"

#include <stdexcept>

namespace bench
{

using NU3D::CRef;
using NU3D::CUnfold3DAPI;
using NU3D::VALPROP_VALUE;

CRef table()
{
    return {NU3D::VALTYPE_TABLE, VALPROP_VALUE};
}

void expectSuccess(const CRef& result)
{
    if (CUnfold3DAPI::HasError(result))
        throw std::runtime_error(CUnfold3DAPI::GetErrorString(result));
}

void import(CUnfold3DAPI& api, const FlatMesh& mesh)
{
    const CRef params = table();
    const std::vector<int> sizes(static_cast<std::size_t>(mesh.triangleCount()), 3);
    params->Add("#Data.PolySizes ints", CRef(sizes, VALPROP_VALUE));
    params->Add("#Data.PolyXYZIDs ints", CRef(mesh.triangles, VALPROP_VALUE));
    params->Add("#Data.CoordsXYZ doubles", CRef(mesh.coordsXYZ, VALPROP_VALUE));
    params->Add("#Data.PolyUVWIDs ints", CRef(mesh.triangles, VALPROP_VALUE));
    params->Add("#Data.CoordsUVW doubles", CRef(mesh.coordsUVW, VALPROP_VALUE));
    expectSuccess(api.Do("Import", params));
}

void unfold(CUnfold3DAPI& api, bool preventCrossings)
{
    const CRef params = table();
    params->Add("#PrimType string Island", CRef("Vertex", VALPROP_VALUE));
    params->Add("#ProcessSelection bool", CRef(true, VALPROP_VALUE));
    params->Add("#ProcessAllIfNoneSelected bool");
    params->Add("#Iterations int 1", CRef(1, VALPROP_VALUE));
    params->Add("#BorderIntersections bool", CRef(preventCrossings, VALPROP_VALUE));
    params->Add("#TriangleFlips bool", CRef(true, VALPROP_VALUE));
    params->Add("#RoomSpace double 000.1", CRef(0.0, VALPROP_VALUE));
    expectSuccess(api.Do("Unfold", params));
}

void optimize(CUnfold3DAPI& api)
{
    const CRef params = table();
    params->Add("#PrimType string Island", CRef("Vertex", VALPROP_VALUE));
    params->Add("#ProcessSelection bool", CRef(true, VALPROP_VALUE));
    params->Add("#ProcessAllIfNoneSelected bool");
    params->Add("#Iterations int 2", CRef(1, VALPROP_VALUE));
    params->Add("#BorderIntersection bool", CRef(true, VALPROP_VALUE));
    params->Add("#TriangleFlips bool", CRef(true, VALPROP_VALUE));
    params->Add("#RoomSpace double 0.001", CRef(0.0, VALPROP_VALUE));
    params->Add("#Mix double 1.0", CRef(1.0F, VALPROP_VALUE));
    params->Add("#AngleDistanceMix double 1.0", CRef(1.0F, VALPROP_VALUE));
    expectSuccess(api.Do("Optimize", params));
}

void selectVertices(CUnfold3DAPI& api, const std::vector<int>& ids)
{
    const CRef params = table();
    params->Add("#PrimType string \"Edge\"", CRef("Vertex", VALPROP_VALUE));
    params->Add("#Select bool", CRef(true, VALPROP_VALUE));
    params->Add("#List bool", CRef(true, VALPROP_VALUE));
    params->Add("#IDs ints", CRef(ids, VALPROP_VALUE));
    expectSuccess(api.Do("Select", params));
}

std::vector<double> exportedUVs(CUnfold3DAPI& api)
{
    const CRef params = table();
    params->Add("#Data table");
    const CRef result = api.Do("Export", params);
    expectSuccess(result);
    return result->GetDoubles("#Data.CoordsUVW doubles");
}

void report(benchmark::State& state, const FlatMesh& mesh)
{
    state.SetComplexityN(mesh.triangleCount());
    state.counters["triangles"] = mesh.triangleCount();
    state.counters["ns/triangle"] = benchmark::Counter(
        1e-9 * mesh.triangleCount(),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["peakMB"] = peakMemoryBytes() / 1e6;
}

} // namespace bench
