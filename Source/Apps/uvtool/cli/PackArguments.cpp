#include "cli/PackArguments.h"

#include "cli/ExitStatus.h"
#include "cli/NumberRange.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace uvtool
{
namespace
{

using Settings = kyUnfold3D::PackSettings;

constexpr int mostTexels = 16384;

/// A day.
constexpr double mostSeconds = 86400.0;

/// Along each axis; the solver takes no more.
constexpr int mostTiles = 1000;

/// Degrees.
constexpr double upsideDown = 180.0;

/// "2x3": tiles along the two axes.
std::string readTiles(const std::string& text, Settings& settings)
{
    int tiles[2] = {0, 0};
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, tiles[0]);
    if (first.ec == std::errc{} && first.ptr != end && *first.ptr == 'x') {
        const auto second = std::from_chars(first.ptr + 1, end, tiles[1]);
        if (second.ec == std::errc{} && second.ptr == end && std::min(tiles[0], tiles[1]) > 0 &&
            std::max(tiles[0], tiles[1]) <= mostTiles)
        {
            settings.setTilesU(tiles[0]);
            settings.setTilesV(tiles[1]);
            return {};
        }
    }
    return "\"" + text + "\" is no grid of tiles; give it as UxV, such as 2x1, up to " +
           std::to_string(mostTiles) + " along each axis";
}

std::string readBox(const std::vector<double>& bounds, Settings& settings)
{
    const auto isSide = [](double length) { return length > 0 && std::isfinite(length); };
    if (!isSide(bounds[2] - bounds[0]) || !isSide(bounds[3] - bounds[1]))
        return "the box has no area, or an endless one; give its lower left and its upper right "
               "corner";
    settings.setBox(bounds[0], bounds[2], bounds[1], bounds[3]);
    return {};
}

/// An option whose values are words. Docs/Engine.md tells what the solver makes of each.
template <class Value>
void addWordOption(CLI::App& command, const char* name, const std::map<std::string, Value>& words,
                   Settings& settings, void (Settings::*set)(Value), const char* help)
{
    command
        .add_option_function<std::string>(
            name,
            [&settings, set, words](const std::string& word) { (settings.*set)(words.at(word)); },
            help)
        ->check(CLI::IsMember(words));
}

void addPackModes(CLI::App& command, Settings& settings)
{
    addWordOption<kyUVTypes::PreScaleMode>(
        command, "--scale-mode",
        {{"keep", kyUVTypes::PreScale0},
         {"area", kyUVTypes::PreScale1},
         {"total", kyUVTypes::PreScale2}},
        settings, &Settings::setPreScaleMode,
        "Sizes of the islands before the layout is scaled. keep: as they are; area: each by\n"
        "the area of its surface; total: in the ratios that they have, all together by the area\n"
        "of their surfaces. area for unfold, keep for pack if not given");
    addWordOption<kyUVTypes::PostScaleMode>(
        command, "--fit",
        {{"shrink", kyUVTypes::PostScale0},
         {"fill", kyUVTypes::PostScale1},
         {"stretch", kyUVTypes::PostScale2}},
        settings, &Settings::setPostScaleMode,
        "Size of the layout. shrink: as it is, smaller where it doesn't fit; fill: as large as\n"
        "it fits; stretch: the same, pulled to the sides of the box. fill if not given");
    addWordOption<kyUVTypes::PreRotateMode>(
        command, "--align",
        {{"none", kyUVTypes::PreRotate0},
         {"side-u", kyUVTypes::PreRotate1},
         {"side-v", kyUVTypes::PreRotate2},
         {"box", kyUVTypes::PreRotate3},
         {"box-u", kyUVTypes::PreRotate4},
         {"box-v", kyUVTypes::PreRotate5}},
        settings, &Settings::setPreRotateMode,
        "Turn of each island before any other. none; side-u, side-v: its longest straight side\n"
        "along u or v; box: its box as small as can be; box-u, box-v: the same, and long along\n"
        "u or v. box-u if not given");
    addWordOption<kyUVTypes::TileAssignMode>(
        command, "--tile-assign",
        {{"nearest", kyUVTypes::TileOfBoxCenter}, {"distribute", kyUVTypes::TileDistribute}},
        settings, &Settings::setTileAssignMode,
        "Tile of each island. nearest: the one that it lies in or is nearest to; distribute:\n"
        "any. distribute if not given");
}

} // namespace

void setTurnStep(double step, kyUnfold3D::PackSettings& settings)
{
    settings.setRotate(step > 0);
    settings.setRotateStep(step);
}

void keepLinesAligned(const CLI::App& command, kyUnfold3D::PackSettings& settings)
{
    const auto refuse = [](const char* option, const char* others) {
        throw CommandError(WrongUsage, std::string(option) +
                                           " would turn the edges that are to lie along an axis; "
                                           "leave it out, or give " +
                                           others);
    };
    if (command.get_option("--align")->empty())
        settings.setPreRotateMode(kyUVTypes::PreRotate0);
    else if (settings.getPreRotateMode() != kyUVTypes::PreRotate0)
        refuse("--align", "none");
    if (command.get_option("--rotate-step")->empty())
        setTurnStep(upsideDown, settings);
    else if (std::fmod(settings.getRotateStep(), upsideDown) != 0.0)
        refuse("--rotate-step", "0 or 180");
}

void addPackOptions(CLI::App& command, PackOptions& pack)
{
    const auto texels = numberFrom(0.0, double{mostTexels});
    const std::map<std::string, Atlas> atlases{{"shared", SharedAtlas}, {"each", AtlasEach}};
    command
        .add_option_function<std::string>(
            "--atlas", [&pack, atlases](const std::string& word) { pack.atlas = atlases.at(word); },
            "shared: one layout for the whole file; each: one for each geometry. shared if not\n"
            "given")
        ->check(CLI::IsMember(atlases));
    addPackModes(command, pack.settings);
    command.add_option("--resolution", pack.resolution, "Texels along the longer side of the box")
        ->check(numberFrom(8, mostTexels))
        ->capture_default_str();
    command.add_option("--gap", pack.gap, "Texels between islands")
        ->check(texels)
        ->capture_default_str();
    command
        .add_option("--margin", pack.margin,
                    "Texels to the sides of the box; half the gap if not given")
        ->check(texels);
    auto* const mutations =
        command
            .add_option_function<int>(
                "--mutations", [&pack](int count) { pack.settings.setMutations(count); },
                "Layouts to try; more take longer and are never worse. 1 if not given")
            ->check(numberFrom(1, 100000));
    command
        .add_option_function<double>(
            "--seconds", [&pack](double seconds) { pack.settings.setSeconds(seconds); },
            "Look for better layouts for so long, instead of a number of mutations")
        ->check(numberFrom(0.001, mostSeconds))
        ->excludes(mutations);
    command
        .add_option_function<double>(
            "--rotate-step", [&pack](double step) { setTurnStep(step, pack.settings); },
            "Degrees between the turns that are tried; 0 to turn nothing. 90 if not given")
        ->check(numberFrom(0.0, 360.0));
    command
        .add_option(
            "--tiles",
            [&pack](const CLI::results_t& words) {
                const std::string error = readTiles(words[0], pack.settings);
                if (!error.empty())
                    throw CLI::ValidationError("--tiles", error);
                return true;
            },
            "A grid of tiles, such as 2x1, instead of one")
        ->type_name("UxV");
    command
        .add_option_function<std::vector<double>>(
            "--box",
            [&pack](const std::vector<double>& bounds) {
                const std::string error = readBox(bounds, pack.settings);
                if (!error.empty())
                    throw CLI::ValidationError("--box", error);
            },
            "The box to fill, 0 0 1 1 if not given")
        ->expected(4)
        ->allow_extra_args(false)
        ->type_name("U0 V0 U1 V1");
}

} // namespace uvtool
