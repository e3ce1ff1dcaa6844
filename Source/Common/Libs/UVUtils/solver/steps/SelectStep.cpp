#include "UVUtils/solver/steps/SelectStep.h"

#include "UVUtils/solver/WriteLine.h"

namespace kyUnfold3D
{

kyUVTypes::ReturnCode selectStep(SolverRun& run, const std::vector<unsigned int>& selectedVertices)
{
    writeLine("Selecting...");
    SolverTable table;
    table.add(R"(#PrimType string "Edge")", "Vertex").add("#Select bool", true);

    const auto vertexCount = static_cast<std::size_t>(run.mesh().getNumVertices());
    if (!selectedVertices.empty() && selectedVertices.size() < vertexCount) {
        table.add("#List bool", true)
            .add("#IDs ints", std::vector<int>(selectedVertices.begin(), selectedVertices.end()));
        writeLine("selected vertex ids: ", selectedVertices.size());
    } else {
        table.add("#All bool", true);
    }
    return run.perform("Select", table).code;
}

} // namespace kyUnfold3D
