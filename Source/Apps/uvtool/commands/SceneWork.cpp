#include "commands/SceneWork.h"

namespace uvtool
{

void forEachScene(Task& task,
                  const std::function<void(const SceneGeometry&, const SceneIslands&)>& use)
{
    const std::size_t slot = task.options.common.slot;
    const auto useScene = [&](const SceneGeometry& scene) {
        use(scene, findSceneIslands(task.document, scene, slot, task.console));
    };
    if (task.options.common.shell) {
        useScene(makeShellScene(task.document, task.chosen, slot));
        return;
    }
    for (const std::size_t number : task.chosen) {
        task.throwIfCancelled();
        useScene(makePlainScene(task.document, number, slot));
    }
}

} // namespace uvtool
