#pragma once

#include "cli/Options.h"
#include "projection/ProjectionReport.h"
#include "projection/ProjectionScene.h"
#include "projection/SettingsTexts.h"

namespace uvtool
{

struct Projection
{
    ProjectionReport report;
    SettingsTexts texts; ///< that stand on the nodes now
};

/// Has the library project a scene: all of its nodes at once, with one set of settings.
///
/// These start from a file or from what fits the nodes, and take over what the options give. Where
/// they are to be saved they are rounded to the saved texts first, so that a run with these repeats
/// this one to the last bit.
///
/// A FileError of kind Read for a file without settings of this projection; a CommandError of
/// status Failed for settings that nothing can be projected with.
Projection projectScene(const ProjectionScene& scene, const Options& options);

} // namespace uvtool
