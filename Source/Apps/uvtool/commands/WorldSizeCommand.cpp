#include "commands/Commands.h"

#include "commands/EditWork.h"

#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/kyUVUtils.h"

#include <cmath>

namespace uvtool
{
namespace
{

/// Lengths of the user are those of the scene, the library measures in the frame of the subject.
float lengthInFrame(double length, const SceneGeometry& scene)
{
    return static_cast<float>(std::ldexp(length, scene.exponent));
}

kyUVTypes::ReturnCode matchWorldSize(const Options& options, const EditWork::Subject& subject)
{
    const auto set = static_cast<kyUVTypes::UVSet>(options.common.slot);
    const SceneGeometry& scene = subject.scene;
    const std::vector<unsigned int>& islands = options.edit.islands;
    if (!islands.empty())
        kyUVSelection::selectIslandsBySeeds(scene.core(), scene.node, set, islands);
    return kyUVUtils::scaleToMatchWorldSize(
        scene.core(), scene.node, set, lengthInFrame(options.worldSize.width, scene),
        lengthInFrame(options.worldSize.height, scene), !islands.empty());
}

} // namespace

ExitStatus runWorldSize(const Options& options, Console& console)
{
    return runEdit("worldsize", options, console, [&options](const EditWork&) {
        return [&options](const EditWork::Subject& subject) {
            return matchWorldSize(options, subject);
        };
    });
}

} // namespace uvtool
