#include "Unfold3D/commands/Commands.h"

namespace unfold3d
{

namespace
{

void exportLayout(const Session& session, Answer& answer)
{
    std::vector<double> coords;
    coords.reserve(3 * session.uvs.size());
    for (std::size_t v = 0; v < session.uvs.size(); ++v) {
        coords.push_back(session.uvs[v].x);
        coords.push_back(session.uvs[v].y);
        coords.push_back(session.w[v]);
    }
    answer.set("#Data.CoordsUVW doubles", NU3D::CRef(std::move(coords), NU3D::VALPROP_VALUE));
}

} // namespace

void runExport(Session& session, const Params& params, Answer& answer, RunControl&)
{
    if (params.has("#Data table"))
        exportLayout(session, answer);
    if (params.flag("#IndexTable.VertexIDsToIslandIDs bool", false))
        answer.set("#IndexTable.VertexIDsToIslandIDs ints",
                   NU3D::CRef(session.islands.ofVertex, NU3D::VALPROP_VALUE));
}

} // namespace unfold3d
