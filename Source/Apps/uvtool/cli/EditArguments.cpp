#include "cli/EditArguments.h"

#include "cli/IdOption.h"
#include "document/NumberText.h"

#include <charconv>
#include <functional>
#include <string_view>

namespace uvtool
{
namespace
{

/// Takes the text of an option; returns why it is refused, empty where it isn't.
using ReadText = std::function<std::string(const std::string&)>;

CLI::Option* addText(CLI::App& command, const char* name, const char* type, const char* help,
                     const ReadText& read)
{
    return command
        .add_option_function<std::string>(
            name,
            [name, read](const std::string& text) {
                if (const std::string fault = read(text); !fault.empty())
                    throw CLI::ValidationError(name, fault);
            },
            help)
        ->type_name(type);
}

/// "0.5,-1": two numbers that single precision can hold.
bool readPair(std::string_view text, Vec2f& pair)
{
    const std::size_t comma = text.find(',');
    double u = 0.0;
    double v = 0.0;
    if (comma == std::string_view::npos || !readNumber(text.substr(0, comma), u) ||
        !readNumber(text.substr(comma + 1), v))
        return false;
    pair = {static_cast<float>(u), static_cast<float>(v)};
    return true;
}

std::string noPair(const std::string& text)
{
    return "\"" + text + "\" is no pair of numbers, such as 0.5,-1";
}

ReadText pairReader(std::optional<Vec2f>& pair)
{
    return [&pair](const std::string& text) {
        return readPair(text, pair.emplace()) ? "" : noPair(text);
    };
}

std::string readMove(const std::string& text, Vec2f& move)
{
    return readPair(text, move) ? "" : noPair(text);
}

/// "2,0.5", or "2" for both.
std::string readScale(const std::string& text, Vec2f& scale)
{
    const std::string both =
        text.find(',') == std::string::npos ? std::string(text).append(",").append(text) : text;
    if (!readPair(both, scale))
        return noPair(text);
    return scale[0] == 0.0F || scale[1] == 0.0F ? "a factor can't be 0" : "";
}

std::string readDegrees(const std::string& text, double& degrees)
{
    return readNumber(text, degrees) ? "" : "\"" + text + "\" is no number";
}

std::string readLength(const std::string& text, double& length)
{
    return readNumber(text, length) && length > 0.0 ? "" : "\"" + text + "\" is no length above 0";
}

/// "4x3": control points along the two axes, as many as the library's surfaces take without a loss.
std::string readGrid(const std::string& text, LatticeOptions& lattice)
{
    constexpr unsigned int most = 24;
    const auto isPossible = [](unsigned int res) { return res >= 2 && res <= most; };
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, lattice.resU);
    if (first.ec == std::errc{} && first.ptr != end && *first.ptr == 'x') {
        const auto second = std::from_chars(first.ptr + 1, end, lattice.resV);
        if (second.ec == std::errc{} && second.ptr == end && isPossible(lattice.resU) &&
            isPossible(lattice.resV))
            return {};
    }
    return "\"" + text + "\" is no grid; give it as NxM, such as 4x4, from 2 to " +
           std::to_string(most) + " points along each axis";
}

UVBox readBox(const std::vector<double>& bounds)
{
    UVBox box;
    box.lo = {static_cast<float>(bounds[0]), static_cast<float>(bounds[1])};
    box.hi = {static_cast<float>(bounds[2]), static_cast<float>(bounds[3])};
    if (!(box.lo[0] < box.hi[0] && box.lo[1] < box.hi[1] && std::isfinite(box.hi[0] - box.lo[0]) &&
          std::isfinite(box.hi[1] - box.lo[1])))
        throw CLI::ValidationError("--box", "the box has no area, or an endless one; give its "
                                            "lower left and its upper right corner");
    return box;
}

void addSelection(CLI::App& command, EditOptions& edit)
{
    addIdOption(command, "--islands", edit.islands,
                "Only the islands of these vertices; all without");
}

} // namespace

void addTransformOptions(CLI::App& command, EditOptions& edit, TransformOptions& transform)
{
    addSelection(command, edit);
    CLI::Option_group* const what = command.add_option_group("Transform", "One at least");
    addText(*what, "--scale", "SU,SV", "First scale, by these factors; a negative one mirrors",
            [&transform](const std::string& text) { return readScale(text, transform.scale); });
    addText(*what, "--rotate", "DEG", "Then turn, by these degrees from u to v",
            [&transform](const std::string& text) { return readDegrees(text, transform.degrees); });
    addText(*what, "--move", "DU,DV", "Then move, by these lengths",
            [&transform](const std::string& text) { return readMove(text, transform.move); });
    what->require_option(1, 3);
    addText(command, "--about", "U,V",
            "What scaling and turning leave in place; the centre of the box around what is "
            "transformed without",
            pairReader(transform.about));
}

void addWorldSizeOptions(CLI::App& command, EditOptions& edit, WorldSizeOptions& worldSize)
{
    addSelection(command, edit);
    addText(command, "--width", "W", "What one unit of u is to stand for, in units of the scene",
            [&worldSize](const std::string& text) { return readLength(text, worldSize.width); })
        ->required();
    addText(command, "--height", "H", "The same of v", [&worldSize](const std::string& text) {
        return readLength(text, worldSize.height);
    })->required();
}

void addLatticeOptions(CLI::App& command, EditOptions& edit, LatticeOptions& lattice)
{
    addSelection(command, edit);
    addText(command, "--grid", "NxM", "Control points along u and v",
            [&lattice](const std::string& text) { return readGrid(text, lattice); })
        ->required();
    CLI::Option* const points =
        command
            .add_option("--points", lattice.points,
                        "The file of control points: \"u v\" a line, row by row from below")
            ->type_name("FILE");
    command
        .add_option("--save-points", lattice.saved,
                    "Write the control points that leave all in place, to start from")
        ->excludes(points)
        ->type_name("FILE");
    command.add_option("--amount", lattice.amount, "How much of the way to go, 0 to 1")
        ->check(numberFrom(0.0, 1.0))
        ->capture_default_str();
    command
        .add_option_function<std::vector<double>>(
            "--box",
            [&lattice](const std::vector<double>& bounds) { lattice.box = readBox(bounds); },
            "The rectangle of the grid; the box around what is bent without")
        ->expected(4)
        ->allow_extra_args(false)
        ->type_name("U0 V0 U1 V1");
}

std::string faultOfLattice(const LatticeOptions& lattice, bool hasOutput)
{
    if (!lattice.saved.empty())
        return hasOutput ? "--save-points writes no mesh; leave --output out" : "";
    if (lattice.points.empty())
        return "--points is needed; --save-points writes a file to start from";
    return hasOutput ? "" : "--output is required with --points";
}

} // namespace uvtool
