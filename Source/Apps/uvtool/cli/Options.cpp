#include "cli/Options.h"

#include "cli/EditArguments.h"
#include "cli/ExitStatus.h"
#include "cli/NumberRange.h"
#include "cli/PackArguments.h"
#include "cli/PathArguments.h"
#include "cli/ProjectArguments.h"
#include "cli/RelaxArguments.h"
#include "cli/SeamArguments.h"
#include "cli/SeamSearchArguments.h"
#include "cli/TransferArguments.h"
#include "document/Format.h"
#include "picture/LayoutPicture.h"
#include "picture/SurfacePicture.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>
#include <vector>

namespace uvtool
{
namespace
{

void addCommonOptions(CLI::App& command, CommonOptions& common, const char* input = "INPUT",
                      const char* help = "The mesh file to read")
{
    command.add_option(input, common.input, help)->required();
    command.add_option("--slot", common.slot, "The UV slot, 0 to 7")
        ->check(numberFrom<std::size_t>(0, slotCount - 1))
        ->capture_default_str();
    command
        .add_option("--geometry", common.geometry,
                    "Only this geometry of the file, counted from 0 as info lists them")
        ->check(numberFrom<std::size_t>(0));
    command.add_flag("--shell", common.shell, "Take the meshes as the surfaces of one shell");
    command.add_flag("--json", common.json, "Print the report as one JSON object");
    command.add_option("--picture", common.picture, "Draw the UV layout: FILE.png or FILE.svg");
    command.add_option("--view", common.view,
                       "Render the mesh with a checker by its UVs, and its seams: FILE.png");
    CLI::Option* const quiet =
        command.add_flag("--quiet", common.quiet, "Print errors only to standard error");
    command.add_flag("--verbose", common.verbose, "Print what the library says as well")
        ->excludes(quiet);
}

void addOutput(CLI::App& command, std::filesystem::path& output)
{
    command.add_option("-o,--output", output, "The mesh file to write")->required();
}

void addUnfoldOptions(CLI::App& command, UnfoldOptions& unfold)
{
    command
        .add_option("--iterations", unfold.iterations,
                    "How long to work on each island; Docs/Engine.md tells the meaning")
        ->check(numberFrom(-1, 1000000));
    command.add_flag("--allow-crossings", unfold.allowCrossings,
                     "Let the border of an island cross itself");
    command
        .add_option("--room", unfold.room,
                    "The least distance between borders of an island, as a share of its size")
        ->check(numberFrom(0.0))
        ->capture_default_str();
    command.add_flag_callback(
        "--no-pack", [&unfold] { unfold.pack = false; },
        "Leave the islands where the unfolding puts them");
}

/// The slots to carry over, each once; the first is that of the pictures.
void settleSlots(Options& options)
{
    std::vector<std::size_t>& slots = options.transfer.slots;
    if (slots.empty())
        slots.push_back(options.common.slot);
    std::sort(slots.begin(), slots.end());
    slots.erase(std::unique(slots.begin(), slots.end()), slots.end());
    options.common.slot = slots.front();
}

/// What the options mean together, beyond what each of them may be.
void checkTogether(const Options& options)
{
    const auto refuse = [](const std::string& why) { throw CommandError(WrongUsage, why); };
    const std::string misplaced = misplacedSeamOption(options.search);
    if (!misplaced.empty())
        refuse(misplaced);
    const std::string pathFault = faultOfPath(options.path);
    if (!pathFault.empty())
        refuse(pathFault);
    if (options.command == Options::Lattice) {
        const std::string latticeFault = faultOfLattice(options.lattice, !options.output.empty());
        if (!latticeFault.empty())
            refuse(latticeFault);
    }
    if (!options.common.picture.empty() && !isPictureFormat(options.common.picture))
        refuse("--picture: \"" + options.common.picture.string() + "\" must end in .png or .svg");
    if (!options.common.view.empty() && !isSurfacePictureFormat(options.common.view))
        refuse("--view: \"" + options.common.view.string() + "\" must end in .png");
    if (!options.writesMesh())
        return;
    const FormatTraits format = traitsOfFormat(options.output);
    if (!format.isWritable)
        refuse("--output: a file named \"" + options.output.string() +
               "\" can't be written; give " + writableExtensions());
    const std::size_t slot = options.transfer.slots.back();
    if (slot >= format.slots)
        refuse("slot " + std::to_string(slot) + ": a file of the kind \"" +
               options.output.extension().string() + "\" holds " + std::to_string(format.slots) +
               " UV slot only; write another kind, or choose another slot");
    const double texels = 2 * std::max(options.pack.marginTexels(), options.pack.gap);
    if (texels >= options.pack.resolution)
        refuse("--gap and --margin leave no room in " + std::to_string(options.pack.resolution) +
               " texels; make --resolution larger");
}

/// The projections are commands of a command.
void addProjections(CLI::App& project, Options& options)
{
    project.require_subcommand(1);
    for (const ProjectionCommand& projection : projectionCommands()) {
        CLI::App* const command = project.add_subcommand(projection.name, projection.help);
        addCommonOptions(*command, options.common);
        addOutput(*command, options.output);
        addProjectOptions(*command, projection.kind, options.project);
        command->parse_complete_callback(
            [&options, kind = projection.kind] { options.project.kind = kind; });
    }
}

/// CLI11 has no word for a command that it doesn't know.
void checkCommand(const CLI::App& app, std::span<const std::string> arguments)
{
    // Groups of options are commands without a name.
    const auto known =
        app.get_subcommands([](const CLI::App* command) { return !command->get_name().empty(); });
    if (known.empty() || arguments.empty() || arguments[0].starts_with('-'))
        return;
    for (const CLI::App* const command : known)
        if (command->get_name() == arguments[0])
            return checkCommand(*command, arguments.subspan(1));
    const std::string name = app.get_parent() == nullptr ? "" : app.get_name() + " ";
    throw CommandError(WrongUsage, "there is no command \"" + name + arguments[0] +
                                       "\"; see uvtool " + name + "--help");
}

} // namespace

std::optional<Options> parseOptions(std::span<const std::string> arguments, std::string& answer)
{
    CLI::App app("Edits the texture coordinates (UVs) of polygon meshes.", "uvtool");
    app.require_subcommand(1);
    app.set_version_flag("--version", KYUV_VERSION);

    Options options;
    setTurnStep(90.0, options.pack.settings);
    CLI::App* const info = app.add_subcommand("info", "Tells what a mesh file holds");
    addCommonOptions(*info, options.common);
    CLI::App* const islands = app.add_subcommand(
        "islands", "Counts the UV islands of the meshes of a file, and what each is made of");
    addCommonOptions(*islands, options.common);
    islands->add_flag("--list", options.islands.list, "Tell the seed of each island as well");
    CLI::App* const unfold =
        app.add_subcommand("unfold", "Flattens the meshes of a file into new UVs and packs them");
    addCommonOptions(*unfold, options.common);
    addOutput(*unfold, options.output);
    addUnfoldOptions(*unfold, options.unfold);
    addSeamSearch(*unfold, "--seams", options.search);
    addPackOptions(*unfold, options.pack);
    addStraightOptions(*unfold, options.straight, MayHoldEdges);
    CLI::App* const pack =
        app.add_subcommand("pack", "Lays the UV islands of a file out in the unit square");
    addCommonOptions(*pack, options.common);
    addOutput(*pack, options.output);
    addPackOptions(*pack, options.pack);
    CLI::App* const seams =
        app.add_subcommand("seams", "Finds seams along which the meshes of a file can be unfolded");
    addCommonOptions(*seams, options.common);
    seams->add_option("-o,--output", options.output, "The mesh file to write, cut along the seams");
    seams->add_option("--edges", options.edgesOutput, "The file of edges to write, for cut");
    addSeamSearch(*seams, "--mode", options.search);
    CLI::App* const path = app.add_subcommand(
        "path", "Finds edges of a mesh that lead from vertex to vertex, for cut");
    addCommonOptions(*path, options.common);
    path->add_option("-o,--output", options.edgesOutput,
                     "The file of edges to write; standard output without");
    addPathOptions(*path, options.path);
    CLI::App* const cut =
        app.add_subcommand("cut", "Cuts the UVs of the meshes of a file open along edges");
    addCommonOptions(*cut, options.common);
    addOutput(*cut, options.output);
    addCutOptions(*cut, options.cut, options.seams);
    CLI::App* const sew =
        app.add_subcommand("sew", "Sews UV islands together where their borders meet in space");
    addCommonOptions(*sew, options.common);
    addOutput(*sew, options.output);
    addSewOptions(*sew, options.sew, options.seams);
    CLI::App* const optimize =
        app.add_subcommand("optimize", "Relaxes the UVs of a file where they lie");
    addCommonOptions(*optimize, options.common);
    addOutput(*optimize, options.output);
    addRelaxOptions(*optimize, options.relax);
    addStraightOptions(*optimize, options.straight, MayHoldEdges);
    CLI::App* const constrain = app.add_subcommand(
        "constrain", "Relaxes the UVs of a file with edges laid straight along an axis");
    addCommonOptions(*constrain, options.common);
    addOutput(*constrain, options.output);
    addRelaxOptions(*constrain, options.relax);
    addStraightOptions(*constrain, options.straight, HasToHoldEdges);
    CLI::App* const repair =
        app.add_subcommand("repair", "Parts the triangles of a file where they are not manifold");
    addCommonOptions(*repair, options.common);
    addOutput(*repair, options.output);
    CLI::App* const project = app.add_subcommand(
        "project", "Throws an image onto the meshes of a file from a plane, a cylinder or a box");
    addProjections(*project, options);

    CLI::App* const transfer = app.add_subcommand(
        "transfer", "Gives the meshes of a file the UVs of others of the same shape");
    transfer->add_option("SOURCE", options.transfer.source, "The mesh file with the UVs")
        ->required();
    addCommonOptions(*transfer, options.common, "TARGET", "The mesh file that gets them");
    addOutput(*transfer, options.output);
    addTransferOptions(*transfer, options.transfer);

    CLI::App* const transform = app.add_subcommand(
        "transform", "Scales, turns and moves the UVs of a file, or of some of its islands");
    addCommonOptions(*transform, options.common);
    addOutput(*transform, options.output);
    addTransformOptions(*transform, options.edit, options.transform);
    CLI::App* const worldSize = app.add_subcommand(
        "worldsize", "Scales each UV island of a file to the size of its surface in the scene");
    addCommonOptions(*worldSize, options.common);
    addOutput(*worldSize, options.output);
    addWorldSizeOptions(*worldSize, options.edit, options.worldSize);
    CLI::App* const lattice =
        app.add_subcommand("lattice", "Bends the UVs of a file with a grid of control points");
    addCommonOptions(*lattice, options.common);
    lattice->add_option("-o,--output", options.output, "The mesh file to write");
    addLatticeOptions(*lattice, options.edit, options.lattice);

    checkCommand(app, arguments);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::Success& asked) {
        std::ostringstream text;
        app.exit(asked, text, text);
        answer = text.str();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw CommandError(WrongUsage, std::string(error.what()) + "; see uvtool --help");
    }
    if (pack->parsed() && pack->get_option("--scale-mode")->empty())
        options.pack.settings.setPreScaleMode(kyUVTypes::PreScale0);
    if (unfold->parsed() && options.straight.isGiven())
        keepLinesAligned(*unfold, options.pack.settings);
    options.command = unfold->parsed()      ? Options::Unfold
                      : pack->parsed()      ? Options::Pack
                      : islands->parsed()   ? Options::Islands
                      : seams->parsed()     ? Options::Seams
                      : path->parsed()      ? Options::Path
                      : cut->parsed()       ? Options::Cut
                      : sew->parsed()       ? Options::Sew
                      : optimize->parsed()  ? Options::Optimize
                      : constrain->parsed() ? Options::Constrain
                      : repair->parsed()    ? Options::Repair
                      : project->parsed()   ? Options::Project
                      : transfer->parsed()  ? Options::Transfer
                      : transform->parsed() ? Options::Transform
                      : worldSize->parsed() ? Options::WorldSize
                      : lattice->parsed()   ? Options::Lattice
                                            : Options::Info;
    settleSlots(options);
    checkTogether(options);
    return options;
}

} // namespace uvtool
