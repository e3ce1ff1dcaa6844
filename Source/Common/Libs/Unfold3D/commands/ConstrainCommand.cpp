#include "Unfold3D/commands/Commands.h"

namespace unfold3d
{

namespace
{

EdgePin pinFor(const std::string& mode)
{
    if (mode == "EdgeH")
        return EdgePin::Horizontal;
    if (mode == "EdgeV")
        return EdgePin::Vertical;
    throw CommandError("Unknown constraint \"" + mode + "\": use \"EdgeH\" or \"EdgeV\".");
}

} // namespace

void runConstrain(Session& session, const Params& params, Answer& answer, RunControl&)
{
    const std::string primType = params.text("#PrimType string \"Vertex\"", "Vertex");
    if (primType != "Edge")
        throw CommandError("\"" + primType + "\" can't be constrained: constrain \"Edge\".");
    const EdgePin pin = pinFor(params.text("#Mode string \"Pin\"", "Pin"));

    const EdgeNumbers& edges = session.edgeNumbers();
    session.isEdgeSelected.resize(static_cast<std::size_t>(edges.count()), 0);
    session.pins.resize(static_cast<std::size_t>(edges.count()), EdgePin::Free);
    TopologyLines replaced;
    for (std::size_t e = 0; e < session.pins.size(); ++e) {
        if (!session.isEdgeSelected[e])
            continue;
        if (session.pins[e] != EdgePin::Free && session.pins[e] != pin) {
            const auto [a, b] = edges.vertices[e];
            replaced.add("Edge " + std::to_string(e) + " between the vertices " +
                         std::to_string(a) + " and " + std::to_string(b) +
                         " was to be horizontal and vertical.");
        }
        session.pins[e] = pin;
    }
    answer.setTopology("Warning.TopoUV", replaced);
    if (!replaced.empty())
        answer.warn(std::to_string(replaced.count()) +
                    (replaced.count() == 1 ? " edge was" : " edges were") +
                    " to be horizontal and vertical at once, which would be a point. The last "
                    "constraint holds.");
}

} // namespace unfold3d
