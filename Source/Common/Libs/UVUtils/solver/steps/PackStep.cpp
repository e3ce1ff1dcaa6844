#include "UVUtils/solver/steps/PackStep.h"

#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/solver/WriteLine.h"

#include <algorithm>
#include <span>

namespace kyUnfold3D
{

namespace
{

/// The islands of a layout, as the solver numbers them; its numbers need not be dense.
struct TouchedIslands
{
    std::vector<int> ids;  ///< with at least one selected vertex, ascending
    std::size_t total = 0; ///< of the whole layout
};

TouchedIslands findTouchedIslands(std::span<const int> islandOfVertex,
                                  std::span<const unsigned int> selectedVertices)
{
    // A negative number is the mark of a vertex without an island.
    std::vector<int> all;
    std::copy_if(islandOfVertex.begin(), islandOfVertex.end(), std::back_inserter(all),
                 [](int id) { return id >= 0; });
    sortAndDropRepeats(all);

    TouchedIslands touched;
    touched.total = all.size();
    for (const unsigned int vertex : selectedVertices)
        if (vertex < islandOfVertex.size() && islandOfVertex[vertex] >= 0)
            touched.ids.push_back(islandOfVertex[vertex]);
    sortAndDropRepeats(touched.ids);
    return touched;
}

/// Selects the islands that the selection touches. `limited` says afterwards whether there is
/// such a selection of islands: not when none is touched, and not when all are.
kyUVTypes::ReturnCode selectTouchedIslands(SolverRun& run,
                                           const std::vector<unsigned int>& selectedVertices,
                                           bool& limited)
{
    const auto answer =
        run.perform("Export", SolverTable().add("#IndexTable.VertexIDsToIslandIDs bool", true));
    if (answer.code != kyUVTypes::Success)
        return answer.code;

    const std::vector<int> islandOfVertex =
        answer.result->GetInts("#IndexTable.VertexIDsToIslandIDs ints");
    const TouchedIslands touched = findTouchedIslands(islandOfVertex, selectedVertices);
    writeLine("Pack islands: ", touched.ids.size());
    if (touched.ids.empty() || touched.ids.size() == touched.total)
        return kyUVTypes::Success;

    const auto select = run.perform("Select", SolverTable()
                                                  .add(R"(#PrimType string "Edge")", "Island")
                                                  .add("#Select bool", true)
                                                  .add("#List bool", true)
                                                  .add("#IDs ints", touched.ids));
    limited = select.code == kyUVTypes::Success;
    return select.code;
}

void addSettings(SolverTable& table, const PackSettings& settings)
{
    const PackSettings::Box& box = settings.getBox();
    table.add("#Translate bool", settings.getTranslate())
        .add("#Rotate.Min double 0.0", settings.getRotateMin())
        .add("#Rotate.Max double 360.0", settings.getRotateMax())
        .add("#Rotate.Step double 0.0", settings.getRotateStepU3DVal())
        .add("#Rotate.Mode int 2", settings.getPreRotateModeU3DVal())
        .add("#Scaling.Mode int 0", settings.getPreScaleModeU3DVal())
        .add("#LayoutScalingMode int 0", settings.getPostScaleModeU3DVal())
        .add("#Resolution int", settings.getResolution())
        .add("#MaxMutations int 1", settings.getMutations())
        .add("#SpacingSize double 0", settings.getIslandPadding())
        .add("#MarginSize double 0", settings.getTilePadding())
        .add("#Box box2d 0.0 1.0 0.0 1.0", NU3D::CBox2D(box.minU, box.maxU, box.minV, box.maxV))
        .add("#MultiTile.SizeU int", settings.getTilesU())
        .add("#MultiTile.SizeV int", settings.getTilesV())
        .add(R"(#TileAssignMode string "Specified")", settings.getTilesAssignModeU3DVal());
    if (settings.getSeconds() > 0.0)
        table.add("#MaxSeconds double 0", settings.getSeconds());
}

double numberIn(const NU3D::CRef& result, const char* key)
{
    const NU3D::CRef value = result->GetRef(key);
    const double* const number = value ? value->as<double>() : nullptr;
    return number != nullptr ? *number : 0.0;
}

} // namespace

kyUVTypes::ReturnCode packStep(SolverRun& run, const std::vector<unsigned int>& selectedVertices,
                               const PackSettings& settings, PackCover& cover)
{
    writeLine("Packing...");
    const SolverProgressScope scope(Packing, &run.state());
    SolverTable table;
    if (!selectedVertices.empty()) {
        bool limited = false;
        const kyUVTypes::ReturnCode code = selectTouchedIslands(run, selectedVertices, limited);
        if (code != kyUVTypes::Success)
            return code;
        if (limited)
            table.add("#ProcessIslandSelection bool", true);
    }
    addSettings(table, settings);
    const auto answer = run.perform("Pack", table);
    cover = {numberIn(answer.result, "#Pack.Covered double"),
             numberIn(answer.result, "#Pack.MostCovered double")};
    return answer.code;
}

} // namespace kyUnfold3D
