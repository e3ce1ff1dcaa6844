#include "commands/SceneWork.h"

#include "cli/ExitStatus.h"

namespace uvtool
{

namespace
{

using UseOfScene = std::function<void(const SceneGeometry&, const SceneIslands&)>;

void forEachScene(Task& task, std::size_t slot, const VerticesOf& verticesOf, const UseOfScene& use)
{
    const auto useScene = [&](std::span<const std::size_t> numbers, bool isShell) {
        task.throwIfCancelled();
        const SceneGeometry scene = makeScene(task.document, numbers, slot, isShell, verticesOf);
        use(scene, findSceneIslands(task.document, scene, slot, task.console));
    };
    if (task.options.common.shell) {
        useScene(task.chosen, true);
        return;
    }
    for (const std::size_t& number : task.chosen)
        useScene(std::span(&number, 1), false);
}

} // namespace

void forEachScene(Task& task, const VerticesOf& verticesOf, const UseOfScene& use)
{
    forEachScene(task, task.options.common.slot, verticesOf, use);
}

void forEachScene(Task& task, std::size_t slot, const UseOfScene& use)
{
    forEachScene(
        task, slot,
        [&task](std::size_t number) { return distinctCorners(task.document.geometries[number]); },
        use);
}

void forEachScene(Task& task, const UseOfScene& use)
{
    forEachScene(task, task.options.common.slot, use);
}

void throwUnlessOneScene(const Task& task, const char* option)
{
    if (task.chosen.size() == 1 || task.options.common.shell)
        return;
    throw CommandError(WrongUsage, std::string(option) + ": " + task.report.input + " holds " +
                                       std::to_string(task.chosen.size()) +
                                       " geometries with vertices of their own; choose one with "
                                       "--geometry, or take all as one with --shell");
}

void throwUnlessInScene(std::span<const unsigned int> ids, const SceneGeometry& scene,
                        const char* option)
{
    for (const unsigned int id : ids)
        if (id >= scene.vertexCount)
            throw CommandError(WrongUsage, std::string(option) + ": there is no vertex " +
                                               std::to_string(id) + "; ids go from 0 to " +
                                               std::to_string(scene.vertexCount - 1));
}

} // namespace uvtool
