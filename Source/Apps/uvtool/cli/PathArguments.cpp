#include "cli/PathArguments.h"

#include "cli/NumberRange.h"

namespace uvtool
{
namespace
{

CLI::Option* addIds(CLI::Option_group& group, const char* name, std::vector<unsigned int>& ids,
                    const char* text)
{
    return group.add_option(name, ids, text)->delimiter(',')->check(numberFrom<unsigned int>(0));
}

void addAngle(CLI::App& command, const char* name, double& angle, const char* text,
              CLI::Option* edge)
{
    command.add_option(name, angle, text)
        ->check(numberFrom(0.0, 180.0))
        ->capture_default_str()
        ->needs(edge);
}

} // namespace

void addPathOptions(CLI::App& command, PathOptions& path)
{
    CLI::Option_group* const which = command.add_option_group("Path", "Which path to find");
    CLI::Option* const vertices =
        addIds(*which, "--vertices", path.vertices, "The shortest from each of these to the next")
            ->type_name("ID,ID,...");
    CLI::Option* const edge =
        addIds(*which, "--edge", path.edge, "Straight on from this edge, both ways")
            ->type_name("ID,ID");
    which->require_option(1);
    command.add_flag("--along-borders", path.alongBorders, "Along borders of islands only")
        ->needs(vertices);
    addAngle(command, "--surface-angle", path.surfaceAngle,
             "Degrees by which a next edge may turn within the surface", edge);
    addAngle(command, "--edge-angle", path.edgeAngle,
             "Degrees by which a next edge may turn in space", edge);
    command.add_flag("--borders-only", path.bordersOnly, "Along borders of islands only")
        ->needs(edge);
    command
        .add_flag("--stop-at-borders", path.stopAtBorders,
                  "From an edge inside of an island no further than to its border")
        ->needs(edge);
}

std::string faultOfPath(const PathOptions& path)
{
    if (path.vertices.size() == 1)
        return "--vertices: a path takes two vertices or more";
    if (!path.edge.empty() && path.edge.size() != 2)
        return "--edge: an edge takes two vertices";
    return {};
}

} // namespace uvtool
