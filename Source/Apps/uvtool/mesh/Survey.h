#pragma once

#include "document/Document.h"
#include "mesh/Islands.h"
#include "mesh/SolverMesh.h"

namespace uvtool
{

/// The triangles of a geometry that a command can work on, and the islands that they form in a
/// slot.
struct Survey
{
    UVNeed need = WithoutUVs; ///< by which corners were joined
    SolverMesh mesh;
    SolverMeshReport report;
    Islands islands; ///< of mesh

    bool isClosed(std::size_t triangle) const
    {
        return islands.isClosed[static_cast<std::size_t>(islands.ofTriangle[triangle])] != 0;
    }
};

inline Survey surveyGeometry(const DocumentGeometry& geometry, std::size_t slot, UVNeed need)
{
    Survey survey;
    survey.need = need;
    survey.mesh = buildSolverMesh(geometry, slot, need, survey.report);
    survey.islands = findIslands(survey.mesh.triangles, survey.mesh.vertexCount());
    return survey;
}

} // namespace uvtool
