#include "projection/SettingsCheck.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace uvtool
{

namespace
{

std::string endlessText(const std::string& name)
{
    std::ostringstream text;
    text << "the meshes are too large to project, the setting \"" << name
         << "\" is beyond single precision; give --" << name;
    return text.str();
}

} // namespace

std::string whyEndless(const NamedSettings& settings)
{
    for (const auto& [name, numbers] : settings)
        if (!std::all_of(numbers.begin(), numbers.end(), [](double x) { return std::isfinite(x); }))
            return endlessText(name);
    return {};
}

std::string whyWithoutSize(const NamedSettings& settings)
{
    for (const auto& [name, numbers] : settings) {
        if (name != "size" || std::min(numbers[0], numbers[1]) > 0)
            continue;
        std::ostringstream why;
        why << "the image would have no size, it is " << numbers[0] << " by " << numbers[1]
            << "; give --size";
        return why.str();
    }
    return {};
}

} // namespace uvtool
