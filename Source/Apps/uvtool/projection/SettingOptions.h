#pragma once

#include "UVUtils/projection/kyUVCylindricalProjectionSettings.h"
#include "UVUtils/projection/kyUVPlanarProjectionSettings.h"
#include "UVUtils/projection/kyUVTriplanarProjectionSettings.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

// The settings of the projections under names of the command line, one table for each projection:
// what can be given there, and what the report tells.

namespace uvtool
{

/// What the numbers of a setting may be.
enum SettingRange : std::int32_t
{
    AnyNumber,
    NotZero,
    AboveZero
};

/// A setting as the user sees it.
struct SettingText
{
    const char* name;  ///< of the option, without dashes
    const char* parts; ///< a word for each of its numbers
    const char* help;
    SettingRange range;
    std::size_t count; ///< of numbers
};

template <class Settings>
struct SettingOption : SettingText
{
    std::function<void(Settings&, const std::vector<double>&)> set; ///< takes `count` numbers
    std::function<std::vector<double>(const Settings&)> get;
};

/// Settings by their names.
using NamedSettings = std::vector<std::pair<std::string, std::vector<double>>>;

std::span<const SettingOption<kyUVPlanarProjectionSettings>> planarOptions();
std::span<const SettingOption<kyUVCylindricalProjectionSettings>> cylindricalOptions();
/// But for the mode, which is no number.
std::span<const SettingOption<kyUVTriplanarProjectionSettings>> triplanarOptions();

inline auto optionsOf(const kyUVPlanarProjectionSettings&)
{
    return planarOptions();
}
inline auto optionsOf(const kyUVCylindricalProjectionSettings&)
{
    return cylindricalOptions();
}
inline auto optionsOf(const kyUVTriplanarProjectionSettings&)
{
    return triplanarOptions();
}

/// All of the settings, in the order of their table.
template <class Settings>
NamedSettings namedSettings(const Settings& settings)
{
    NamedSettings named;
    for (const SettingOption<Settings>& option : optionsOf(settings))
        named.emplace_back(option.name, option.get(settings));
    return named;
}

} // namespace uvtool
