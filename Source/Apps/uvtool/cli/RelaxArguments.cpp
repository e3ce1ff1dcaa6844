#include "cli/RelaxArguments.h"

#include "cli/IdOption.h"
#include "cli/NumberRange.h"

namespace uvtool
{
namespace
{

void addSelection(CLI::App& command, RelaxOptions& relax)
{
    CLI::Option_group* const which =
        command.add_option_group("Selection", "What is relaxed; all without");
    addIdOption(*which, "--islands", relax.islands, "Relax the islands of these vertices");
    addIdOption(*which, "--vertices", relax.vertices,
                "Relax these vertices, between those around them");
    which->add_option("--vertex-file", relax.vertexFile, "Relax the vertices of a file")
        ->type_name("FILE");
    which->require_option(0, 1);
}

/// A share from 0 to 1.
template <class Set>
void addShare(CLI::App& command, const char* name, const char* text, const Set& set)
{
    command.add_option_function<float>(name, set, text)
        ->check(numberFrom(0.0, 1.0))
        ->type_name("SHARE");
}

} // namespace

void addRelaxOptions(CLI::App& command, RelaxOptions& relax)
{
    kyUnfold3D::OptimizeSettings& settings = relax.settings;
    addSelection(command, relax);
    command
        .add_option_function<int>(
            "--iterations", [&settings](int count) { settings.setIterations(count); },
            "How long to work on each island; 1 if not given. Docs/Engine.md tells the meaning")
        ->check(numberFrom(0, 1000000));
    addShare(command, "--power", "How much of the way to go, 0 to 1; 1 if not given",
             [&settings](float share) { settings.setPower(share); });
    addShare(command, "--angle-distance",
             "What to keep: 0 angles, 1 lengths, or between; 1 if not given",
             [&settings](float share) { settings.setAngleVsDistanceConservation(share); });
    command.add_flag_callback(
        "--allow-crossings", [&settings] { settings.setPreventBorderIntersections(false); },
        "Let the border of an island cross itself");
    command.add_flag_callback(
        "--allow-flips", [&settings] { settings.setPreventTriangleFlips(false); },
        "Let triangles turn over");
    command
        .add_option_function<double>(
            "--room", [&settings](double room) { settings.setRoomSpace(room); },
            "The least distance between borders of an island, as a share of its size")
        ->check(numberFrom(0.0));
}

void addStraightOptions(CLI::App& command, StraightOptions& straight, StraightNeed need)
{
    CLI::Option_group* const files =
        command.add_option_group("Lines", "Edges that become straight");
    files
        ->add_option("--horizontal", straight.horizontal,
                     "Lay the edges of a file along u, two vertex ids a line")
        ->type_name("FILE");
    files
        ->add_option("--vertical", straight.vertical,
                     "Lay the edges of a file along v, two vertex ids a line")
        ->type_name("FILE");
    files->require_option(need == HasToHoldEdges ? 1 : 0, 2);
}

} // namespace uvtool
