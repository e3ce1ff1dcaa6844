#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/packing/Pack.h"

#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace unfold3d
{

namespace
{

/// The value of an enum that a number stands for.
template <class Enum>
Enum choice(const char* what, int number, std::initializer_list<Enum> known)
{
    for (const Enum value : known)
        if (static_cast<int>(value) == number)
            return value;
    throw CommandError("There is no " + std::string(what) + " " + std::to_string(number) + ".");
}

TileChoice tileChoice(const std::string& word)
{
    if (word == "Distribute")
        return TileChoice::Distribute;
    if (word == "BBoxCenter" || word == "Specified")
        return TileChoice::ByBoxCentre;
    throw CommandError("Unknown way to choose tiles \"" + word +
                       "\": use \"BBoxCenter\" or \"Distribute\".");
}

PackOptions readOptions(const Params& params)
{
    PackOptions options;
    options.translate = params.flag("#Translate bool", true);
    options.turnMin = params.number("#Rotate.Min double 0.0", 0.0);
    options.turnMax = params.number("#Rotate.Max double 360.0", 360.0);
    options.turnStep = params.number("#Rotate.Step double 0.0", 0.0);
    options.preRotation =
        choice("rotation mode", params.integer("#Rotate.Mode int 2", 2),
               {PreRotation::None, PreRotation::LongestSideAlongU, PreRotation::LongestSideAlongV,
                PreRotation::LeastBox, PreRotation::LeastBoxAlongU, PreRotation::LeastBoxAlongV});
    options.islandScaling =
        choice("scaling mode", params.integer("#Scaling.Mode int 0", 0),
               {IslandScaling::None, IslandScaling::ByArea, IslandScaling::ByOneFactor});
    options.layoutScaling =
        choice("layout scaling mode", params.integer("#LayoutScalingMode int 0", 0),
               {LayoutScaling::Keep, LayoutScaling::KeepOrShrink, LayoutScaling::Fit,
                LayoutScaling::Stretch});
    options.resolution = params.integer("#Resolution int", options.resolution);
    options.mutations = params.integer("#MaxMutations int 1", 1);
    if (const double seconds = params.number("#MaxSeconds double 0", 0.0); seconds > 0.0)
        options.seconds = seconds;
    options.spacing = params.number("#SpacingSize double 0", 0.0);
    options.margin = params.number("#MarginSize double 0", 0.0);
    const NU3D::CBox2D box = params.box("#Box box2d 0.0 1.0 0.0 1.0", {0.0, 1.0, 0.0, 1.0});
    options.box = {{box.minU, box.minV}, {box.maxU, box.maxV}};
    options.tilesU = params.integer("#MultiTile.SizeU int", 1);
    options.tilesV = params.integer("#MultiTile.SizeV int", 1);
    options.tileChoice =
        tileChoice(params.text("#TileAssignMode string \"Specified\"", "Specified"));
    return options;
}

std::vector<int> islandsToPack(const Session& session, bool selectedOnly)
{
    std::vector<int> islands;
    for (int island = 0; island < session.islands.count(); ++island)
        if (!selectedOnly || session.isIslandSelected[static_cast<std::size_t>(island)])
            islands.push_back(island);
    return islands;
}

/// [island] Has it pinned edges? Empty where nothing is pinned.
std::vector<char> islandsWithPins(Session& session)
{
    if (session.pins.empty())
        return {};
    std::vector<char> hasPins(static_cast<std::size_t>(session.islands.count()), 0);
    for (std::size_t e = 0; e < session.pins.size(); ++e) {
        const auto vertex = static_cast<std::size_t>(session.edgeNumbers().vertices[e][0]);
        const int island = session.islands.ofVertex[vertex];
        if (session.pins[e] != EdgePin::Free && island != Islands::noIsland)
            hasPins[static_cast<std::size_t>(island)] = 1;
    }
    return hasPins;
}

/// A vertex that only left-out triangles use goes to the place of its anchor.
void moveIslands(Session& session, const std::vector<IslandMove>& moves)
{
    for (const IslandMove& move : moves) {
        const std::span<const int> vertices = session.islands.vertices[move.island];
        std::vector<Vec2> moved;
        for (const int v : vertices) {
            const int anchor = session.islands.anchor[static_cast<std::size_t>(v)];
            moved.push_back(move(session.uvs[static_cast<std::size_t>(anchor)]));
        }
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            session.uvs[static_cast<std::size_t>(vertices[i])] = moved[i];
            session.w[static_cast<std::size_t>(vertices[i])] = 0.0;
            session.isFixed[static_cast<std::size_t>(vertices[i])] = 0;
        }
        session.isChanged[static_cast<std::size_t>(move.island)] = 1;
    }
}

} // namespace

void runPack(Session& session, const Params& params, Answer& answer, RunControl& control)
{
    const PackOptions options = readOptions(params);
    const std::vector<int> islands =
        islandsToPack(session, params.flag("#ProcessIslandSelection bool", false));
    if (islands.empty()) {
        answer.warn("There is no island to pack.");
        return;
    }
    const std::vector<char> hasPins = islandsWithPins(session);
    PackResult result;
    try {
        const UVLayout layout{session.mesh, session.islands, session.uvs, hasPins};
        result = packIslands(layout, islands, options, control);
    } catch (const std::invalid_argument& impossible) {
        throw CommandError(impossible.what());
    }
    if (result.shrunkBy < 1.0)
        answer.warn("The islands don't fit into the box at their size. They were made smaller, "
                    "all by the factor " +
                    std::to_string(result.shrunkBy) + ".");
    if (options.translate) {
        answer.set("#Pack.Covered double", NU3D::CRef(result.covered, NU3D::VALPROP_VALUE));
        answer.set("#Pack.MostCovered double", NU3D::CRef(result.mostCovered, NU3D::VALPROP_VALUE));
    }
    answer.set("#Pack.Method string", NU3D::CRef(result.method, NU3D::VALPROP_VALUE));
    moveIslands(session, result.moves);
}

} // namespace unfold3d
