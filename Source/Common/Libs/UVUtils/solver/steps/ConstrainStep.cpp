#include "UVUtils/solver/steps/ConstrainStep.h"

#include "UVUtils/solver/WriteLine.h"

namespace kyUnfold3D
{

namespace
{

kyUVTypes::ReturnCode constrainEdges(SolverRun& run, const FlatEdgeList& vertexPairs,
                                     kyUVTypes::EdgeConstraint constraint)
{
    if (vertexPairs.empty())
        return kyUVTypes::Success;
    const bool vertical = constraint == kyUVTypes::Vertical;
    writeLine("Constraining edges ", vertical ? "Vertical" : "Horizontal");

    const auto select =
        run.perform("Select", SolverTable()
                                  .add(R"(#PrimType string "Edge")", "Edge")
                                  .add("#ResetBefore bool", true)
                                  .add("#Select bool", true)
                                  .add("#List bool", true)
                                  .add("#IDs ints", run.mesh().getEdgeIds(vertexPairs)));
    if (select.code != kyUVTypes::Success)
        return select.code;

    return run
        .perform("Constrain", SolverTable()
                                  .add(R"(#PrimType string "Vertex")", "Edge")
                                  .add(R"(#Mode string "Pin")", vertical ? "EdgeV" : "EdgeH"))
        .code;
}

} // namespace

kyUVTypes::ReturnCode constrainStep(SolverRun& run, const FlatEdgeList& horizontal,
                                    const FlatEdgeList& vertical)
{
    return runInOrder({[&] { return constrainEdges(run, horizontal, kyUVTypes::Horizontal); },
                       [&] { return constrainEdges(run, vertical, kyUVTypes::Vertical); }});
}

} // namespace kyUnfold3D
