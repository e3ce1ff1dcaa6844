#pragma once

#include "commands/Task.h"
#include "scene/SceneIslands.h"

#include <functional>
#include <span>

namespace uvtool
{

/// Has the library find the islands of what a task is about: of each chosen geometry by itself, or
/// of all as one shell. `use` gets one after the other; each is gone when it is done with it.
void forEachScene(Task& task,
                  const std::function<void(const SceneGeometry&, const SceneIslands&)>& use);

/// The same, with other vertices than the distinct corners, as makeScene takes them.
void forEachScene(Task& task, const VerticesOf& verticesOf,
                  const std::function<void(const SceneGeometry&, const SceneIslands&)>& use);

/// The same of another slot than that of the options, at the distinct corners.
void forEachScene(Task& task, std::size_t slot,
                  const std::function<void(const SceneGeometry&, const SceneIslands&)>& use);

/// A CommandError of status WrongUsage when ids of vertices were given and there are several
/// geometries that they may belong to.
///
/// option  by which they were given
void throwUnlessOneScene(const Task& task, const char* option);

/// The same for ids that no vertex of the scene has.
void throwUnlessInScene(std::span<const unsigned int> ids, const SceneGeometry& scene,
                        const char* option);

} // namespace uvtool
