#include "UVUtils/solver/steps/ExportStep.h"

#include "UVUtils/solver/WriteLine.h"

namespace kyUnfold3D
{

kyUVTypes::ReturnCode exportStep(SolverRun& run, std::vector<osg::Vector<float, 2>>& uvs)
{
    const auto answer = run.perform(
        "Export",
        SolverTable().addName("#Data table").add("#Data.UseImportedUVWPolygons bool", true));
    if (answer.code != kyUVTypes::Success)
        return answer.code;
    writeLine("Exported.");

    const std::vector<double> coords = answer.result->GetDoubles("#Data.CoordsUVW doubles");
    writeLine("newCoordsUVW = ", coords.size());
    const auto vertexCount = static_cast<std::size_t>(run.mesh().getNumVertices());
    if (coords.size() != vertexCount * 3)
        return kyUVTypes::Failure;

    writeLine("copying newCoordsUVWs to uvs");
    uvs.resize(vertexCount);
    for (std::size_t vertex = 0; vertex < vertexCount; ++vertex)
        uvs[vertex] = osg::Vector<float, 2>(static_cast<float>(coords[3 * vertex]),
                                            static_cast<float>(coords[3 * vertex + 1]));
    return kyUVTypes::Success;
}

} // namespace kyUnfold3D
