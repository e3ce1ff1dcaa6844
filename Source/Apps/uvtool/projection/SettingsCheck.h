#pragma once

#include "cli/Options.h"
#include "projection/SettingOptions.h"
#include "projection/SettingsFit.h"

#include <string>
#include <vector>

namespace uvtool
{

/// Half a sentence where a number is beyond single precision; else empty.
std::string whyEndless(const NamedSettings& settings);

/// The same where the image has no size.
std::string whyWithoutSize(const NamedSettings& settings);

/// Why nothing can be projected with some settings, as half a sentence; empty where it can.
template <class Settings>
std::string whyUnusable(const std::vector<osg::NodePtr>& nodes, const Settings& settings,
                        const ProjectOptions& options)
{
    const NamedSettings named = namedSettings(settings);
    std::string why = whyEndless(named);
    if (!why.empty())
        return why;
    // A size that follows from the meshes can't follow from nothing.
    const bool isFitted = options.settingsFile.empty() && !options.given.contains("size");
    if (isFitted && isEdgeOn(nodes, settings))
        return "the plane sees nothing but an edge of the meshes; name another side with --from, "
               "or give --rotate or --size";
    return whyWithoutSize(named);
}

} // namespace uvtool
