#pragma once

#include "commands/Task.h"
#include "scene/SceneIslands.h"

#include <functional>

namespace uvtool
{

/// Has the library find the islands of what a task is about: of each chosen geometry by itself, or
/// of all as one shell. `use` gets one after the other; each is gone when it is done with it.
void forEachScene(Task& task,
                  const std::function<void(const SceneGeometry&, const SceneIslands&)>& use);

} // namespace uvtool
