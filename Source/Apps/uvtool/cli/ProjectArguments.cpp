#include "cli/ProjectArguments.h"

#include "document/NumberText.h"
#include "projection/SettingOptions.h"

#include <array>
#include <charconv>
#include <map>
#include <string>
#include <vector>

namespace uvtool
{
namespace
{

constexpr std::array commands{
    ProjectionCommand{ProjectOptions::Planar, "planar",
                      "Throws an image straight onto the meshes, from a plane"},
    ProjectionCommand{ProjectOptions::Cylindrical, "cylindrical",
                      "Wraps an image around the meshes, as around a cylinder"},
    ProjectionCommand{ProjectOptions::Triplanar, "triplanar",
                      "Throws an image onto the meshes from the six sides of a box"}};

CLI::Validator numberIn(SettingRange range)
{
    const auto refuse = [range](const std::string& word) -> std::string {
        double number = 0;
        if (!readNumber(word, number))
            return "\"" + word + "\" is no number";
        if (range == AboveZero && number <= 0)
            return "\"" + word + "\" is no number above 0";
        if (range == NotZero && number == 0)
            return "it can't be 0";
        return {};
    };
    return CLI::Validator(refuse, "");
}

/// The option of a setting.
void addSetting(CLI::App& command, const SettingText& setting, ProjectOptions& project)
{
    command
        .add_option_function<std::vector<double>>(
            std::string("--") + setting.name,
            [&project, name = setting.name](const std::vector<double>& numbers) {
                project.given[name] = numbers;
            },
            setting.help)
        ->expected(static_cast<int>(setting.count))
        ->allow_extra_args(false)
        ->check(numberIn(setting.range))
        ->type_name(setting.parts);
}

template <class Settings>
void addSettings(CLI::App& command, std::span<const SettingOption<Settings>> settings,
                 ProjectOptions& project)
{
    for (const SettingText& setting : settings)
        addSetting(command, setting, project);
}

template <class Value>
CLI::Option* addWords(CLI::App& command, const char* name,
                      const std::map<std::string, Value>& words, std::optional<Value>& chosen,
                      const char* help)
{
    return command
        .add_option_function<std::string>(
            name, [&chosen, words](const std::string& word) { chosen = words.at(word); }, help)
        ->check(CLI::IsMember(words));
}

void addPlanar(CLI::App& command, ProjectOptions& project)
{
    addSettings(command, planarOptions(), project);
    addWords<ProjectOptions::Side>(command, "--from",
                                   {{"front", ProjectOptions::Front},
                                    {"back", ProjectOptions::Back},
                                    {"left", ProjectOptions::Left},
                                    {"right", ProjectOptions::Right},
                                    {"top", ProjectOptions::Top},
                                    {"bottom", ProjectOptions::Bottom}},
                                   project.from,
                                   "The side that the plane stands on. With --up y the front is "
                                   "that of +z, with\n--up z that of -y; +x is on the right")
        ->excludes("--rotate");
}

void addCylindrical(CLI::App& command, ProjectOptions& project)
{
    addSettings(command, cylindricalOptions(), project);
    addWords<ProjectOptions::Axis>(
        command, "--axis",
        {{"x", ProjectOptions::AxisX}, {"y", ProjectOptions::AxisY}, {"z", ProjectOptions::AxisZ}},
        project.axis, "The direction of the cylinder's axis")
        ->excludes("--rotate");
}

void addTriplanar(CLI::App& command, ProjectOptions& project)
{
    using Settings = kyUVTriplanarProjectionSettings;
    addSettings(command, triplanarOptions(), project);
    addWords<Settings::Mode>(
        command, "--mode",
        {{"dominant", Settings::DominantAxis}, {"propagated", Settings::PropagatedAxis}},
        project.mode,
        "Side of a triangle. dominant: the one that it faces most; propagated: where it faces\n"
        "several, one that its neighbours have, for fewer islands. dominant if not given");
}

/// "1024x512".
std::string readImageSize(const std::string& text, ImageSize& image)
{
    constexpr unsigned int mostPixels = 1U << 20U;
    ImageSize size;
    const char* const end = text.data() + text.size();
    const auto width = std::from_chars(text.data(), end, size.width);
    if (width.ec == std::errc{} && width.ptr != end && *width.ptr == 'x') {
        const auto height = std::from_chars(width.ptr + 1, end, size.height);
        if (height.ec == std::errc{} && height.ptr == end && size.width > 0 && size.height > 0 &&
            size.width <= mostPixels && size.height <= mostPixels)
        {
            image = size;
            return {};
        }
    }
    return "\"" + text + "\" is no size of an image; give it as WxH, such as 1024x512, in pixels";
}

void addImage(CLI::App& command, ProjectOptions& project)
{
    command
        .add_option(
            "--image",
            [&project](const CLI::results_t& words) {
                const std::string error = readImageSize(words[0], project.image);
                if (!error.empty())
                    throw CLI::ValidationError("--image", error);
                return true;
            },
            "Size of the image in pixels, whose proportions the defaults then keep")
        ->type_name("WxH");
}

void addFiles(CLI::App& command, ProjectOptions& project)
{
    command
        .add_option("--settings", project.settingsFile,
                    "Start from the settings of a file in place of the defaults, which fit the\n"
                    "meshes; single options come on top")
        ->excludes("--image")
        ->type_name("FILE");
    command
        .add_option("--save-settings", project.savedFile,
                    "Write the settings, to six digits, and project with just these")
        ->type_name("FILE");
}

} // namespace

std::span<const ProjectionCommand> projectionCommands()
{
    return commands;
}

const char* nameOf(ProjectOptions::Kind kind)
{
    return commands[static_cast<std::size_t>(kind)].name;
}

void addProjectOptions(CLI::App& command, ProjectOptions::Kind kind, ProjectOptions& project)
{
    addImage(command, project);
    addFiles(command, project);
    const std::map<std::string, bool> axes{{"y", false}, {"z", true}};
    command
        .add_option_function<std::string>(
            "--up", [&project, axes](const std::string& axis) { project.isZUp = axes.at(axis); },
            "The way that is up for the camera; y if not given, whatever the kind of the file")
        ->check(CLI::IsMember(axes));
    switch (kind) {
    case ProjectOptions::Planar:
        return addPlanar(command, project);
    case ProjectOptions::Cylindrical:
        return addCylindrical(command, project);
    case ProjectOptions::Triplanar:
        return addTriplanar(command, project);
    }
}

} // namespace uvtool
