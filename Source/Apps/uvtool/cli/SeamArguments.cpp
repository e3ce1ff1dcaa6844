#include "cli/SeamArguments.h"

#include "cli/NumberRange.h"

namespace uvtool
{
namespace
{

CLI::Option* addEdges(CLI::App& command, SeamOptions& seams, const char* text)
{
    return command.add_option("--edges", seams.edges, text)->type_name("FILE");
}

void addUndoCheck(CLI::App& command, SeamOptions& seams)
{
    command.add_flag("--undo-check", seams.undoCheck,
                     "Undo it, redo it and compare; a difference is status 5");
}

} // namespace

void addCutOptions(CLI::App& command, CutOptions& cut, SeamOptions& seams)
{
    CLI::Option_group* const which = command.add_option_group("Edges", "Which edges to cut");
    which
        ->add_option("--angle", cut.angle,
                     "Cut where the surface bends by more than so many degrees")
        ->check(numberFrom(0.0, 180.0));
    addEdges(*which, seams, "Cut the edges of a file, two vertex ids a line");
    which->require_option(1);
    addUndoCheck(command, seams);
}

void addSewOptions(CLI::App& command, SewOptions& sew, SeamOptions& seams)
{
    CLI::Option_group* const which = command.add_option_group("Borders", "Which borders to sew");
    which->add_flag_callback(
        "--all", [] {}, "Sew all islands; so without any of these options");
    which
        ->add_option("--selected-by-seeds", sew.seeds,
                     "Sew the islands of these vertices to each other, and in themselves")
        ->delimiter(',')
        ->check(numberFrom<unsigned int>(0))
        ->type_name("ID,ID,...");
    CLI::Option* const edges =
        addEdges(*which, seams, "Sew the borders of a file, two vertex ids a line");
    which->require_option(0, 1);
    command
        .add_flag("--other-island-only", sew.otherIslandOnly,
                  "Sew an island to others, not to itself")
        ->excludes(edges);
    command.add_flag("--match-uvs", sew.matchUVs, "Sew only where the UVs of both sides agree")
        ->excludes(edges);
    addUndoCheck(command, seams);
}

} // namespace uvtool
