#pragma once

#include "cli/ExitStatus.h"
#include "commands/Task.h"
#include "layout/UVBox.h"
#include "scene/LayoutEdit.h"
#include "scene/SceneIslands.h"

#include "UVUtils/model/kyUVTypes.h"

#include <functional>
#include <span>
#include <vector>

namespace uvtool
{

/// UVs that are moved as the user says, on their islands: the work of `transform`, `worldsize` and
/// `lattice`. What is beside the chosen islands stays to the last bit.
class EditWork
{
public:
    /// What is edited of a scene.
    struct Subject
    {
        SceneGeometry scene;
        SceneIslands found;
        LayoutEdit edit;
        std::vector<char> isChosen;         ///< [island]
        std::vector<unsigned int> vertices; ///< of the chosen islands, ascending

        bool hasWork() const { return !vertices.empty(); }
    };

    /// Has the library edit the vertices of a subject in its scene.
    using Operation = std::function<kyUVTypes::ReturnCode(const Subject&)>;

    explicit EditWork(Task& task) : task_(task) {}

    /// Finds the islands, and those that the options choose. It is an error when there are no UVs.
    void choose();

    /// The box around the UVs of all that was chosen.
    UVBox bounds() const;

    /// Edits one scene after the other, puts each into the document and checks it as it stands
    /// there. A scene is gone when it is done. Flips and overlaps are told and are no error, for
    /// the user may want them; values that aren't finite are one.
    void edit(const Operation& operation);

    /// Checks all together, writes the document and draws the pictures.
    void writeFiles();

private:
    Subject choose(const SceneGeometry& scene, const SceneIslands& found) const;
    void edit(Subject& subject, const Operation& operation, GeometryReport& entry);
    void putIntoDocument(Subject& subject, GeometryReport& entry);

    Task& task_;
    std::vector<Subject> subjects_;
    DocumentLayout layout_; ///< of all scenes, as it stands in the document
};

/// Runs a command of this kind: its operation is carried out on what the options choose.
///
/// makeOperation  asked once, when it is known what is chosen
ExitStatus runEdit(const char* name, const Options& options, Console& console,
                   const std::function<EditWork::Operation(const EditWork&)>& makeOperation);

} // namespace uvtool
