#pragma once

#include "commands/Task.h"
#include "scene/LayoutEdit.h"
#include "scene/SceneIslands.h"

#include <cstddef>
#include <string>

namespace uvtool
{

/// Layouts that are relaxed where they lie: the work of `optimize` and `constrain`.
class RelaxWork
{
public:
    explicit RelaxWork(Task& task) : task_(task) {}

    /// Relaxes one scene after the other, puts each into the document and checks it as it stands
    /// there. A scene without UVs, or one that the library fails on, stays as it is; it is an error
    /// when all do.
    void relax();

    /// Checks all scenes together, for the report.
    void lookAtAll();

    /// Writes the document and, where one was asked for, the picture; a stage of this share.
    void writeFiles(double share);

private:
    void relax(const SceneGeometry& scene, const SceneIslands& found);
    void choose(const SceneGeometry& scene, const SceneIslands& found, const SceneEdges& edges,
                LayoutEdit& edit, GeometryReport& entry) const;
    bool carryOut(const SceneGeometry& scene, const SceneEdges& edges, LayoutEdit& edit,
                  GeometryReport& entry);
    void putIntoDocument(const SceneGeometry& scene, const SceneIslands& found, LayoutEdit& edit,
                         GeometryReport& entry);
    void check(const CheckReport& before, const CheckReport& after) const;

    Task& task_;
    DocumentLayout layout_;   ///< of all scenes, as it stands in the document
    std::size_t relaxed_ = 0; ///< scenes
    std::string firstError_;
};

} // namespace uvtool
