#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/commands/ExportedLayout.h"

namespace unfold3d
{

namespace
{

void warnOfCoarseFloats(const ExportedLayout& layout, Answer& answer)
{
    const char* remedy = " Repair the mesh there, or cut its islands into smaller ones.";
    if (layout.flips > 0)
        answer.warn(
            std::to_string(layout.flips) +
            " triangles are too thin in UV for the precision of floats and may be flipped." +
            remedy);
    if (layout.touches > 0)
        answer.warn(std::to_string(layout.touches) +
                    " gaps in islands are too narrow for the precision of floats, so that borders "
                    "may touch." +
                    remedy);
}

void exportLayout(const Session& session, Answer& answer, const RunControl& control)
{
    const ExportedLayout layout = exportedLayout(session, control);
    warnOfCoarseFloats(layout, answer);
    std::vector<double> coords;
    coords.reserve(3 * layout.uv.size());
    for (std::size_t v = 0; v < layout.uv.size(); ++v) {
        coords.push_back(layout.uv[v].x);
        coords.push_back(layout.uv[v].y);
        coords.push_back(session.w[v]);
    }
    answer.set("#Data.CoordsUVW doubles", NU3D::CRef(std::move(coords), NU3D::VALPROP_VALUE));
}

} // namespace

void runExport(Session& session, const Params& params, Answer& answer, RunControl& control)
{
    if (params.has("#Data table"))
        exportLayout(session, answer, control);
    if (params.flag("#IndexTable.VertexIDsToIslandIDs bool", false))
        answer.set("#IndexTable.VertexIDsToIslandIDs ints",
                   NU3D::CRef(session.islands.ofVertex, NU3D::VALPROP_VALUE));
}

} // namespace unfold3d
