#pragma once

#include "check/Lines.h"
#include "commands/LayoutSubject.h"
#include "commands/Task.h"
#include "mesh/Survey.h"
#include "report/CheckReport.h"
#include "seams/MeshSeams.h"
#include "solver/Part.h"

#include <vector>

namespace uvtool
{

/// Geometries on their way to new UVs, or all as one shell: what the commands that change a layout
/// have in common.
class LayoutWork
{
public:
    explicit LayoutWork(Task& task) : task_(task) {}

    /// Looks at the chosen geometries and adds them to the report of the task.
    void start(UVNeed need);

    /// Opens the geometries that have no seams, or shall get others, along new ones. One in which
    /// the search fails stays as it is, with a warning.
    void openAlongSeams();

    /// Takes the open islands of the geometries as they are now.
    void makeParts();

    std::vector<Part> parts; ///< the islands to work on; an empty part keeps its UVs

    // Of each part: its geometry, a shell being one, and its entry in the report.
    const DocumentGeometry& geometry(std::size_t part) const { return subjects_[part].geometry(); }
    GeometryReport& entry(std::size_t part) { return task_.report.geometries[part]; }

    /// Sides of triangles of the geometry that are to lie along an axis; of a single part only.
    HeldSides held;
    HeldSides heldOf(const Part& part) const { return sidesAmong(part.mesh.sourceTriangle, held); }

    bool isEmpty() const;

    /// Packs the parts, together or each by itself.
    void pack();

    /// Puts the UVs of the parts into the document and checks what stands there now. Without what
    /// is demanded of it the layout is a CommandError of status Unsound.
    ///
    /// isPacked  the islands have to keep to the boxes and distances of the packing, which are
    ///           added to the demands
    void putIntoDocument(LayoutDemands demands, bool isPacked);

    /// Writes the document and, where one was asked for, the picture; a stage of this share.
    void writeFiles(double share);

private:
    void openAlongSeams(std::size_t part);
    void noteSeams(SeamProposal& seams, std::size_t part);
    void noteKeptIslands(std::size_t part);
    std::vector<char> trianglesLeftOut(std::size_t part) const;
    void check(LayoutDemands demands);

    Task& task_;
    std::vector<LayoutSubject> subjects_; ///< [part]
    std::vector<Survey> surveys_;         ///< [part] before the work, opened along seams
    std::vector<UVBox> boxes_;
    DocumentLayout layout_; ///< of all parts, as it stands in the document
};

} // namespace uvtool
