#pragma once

#include "UVUtils/Meshes.h"
#include "UVUtils/RandomShells.h"
#include "UndoUtils/kyUndoStack.h"

#include <memory>
#include <string>

/// What the application keeps beside the scene graph and its commands change.
struct Application
{
    Vec2f pivot;
    bool flag = false;
    UVs points{4};
    float value = 0;
    int iterations = 10;
    bool isOn = false;
    int mode = 0; ///< as the application was told
    bool operator==(const Application&) const = default;
};

/// Random steps on the stack of every kind but cuts and sews, each made as an application would.
class RandomEdits
{
public:
    enum Kind : unsigned
    {
        Mode,
        Toggle,
        LatticeReset,
        Constraints,
        OtherSlot,
        Pivot,
        Points,
        Iterations,
        Group,
        KindsWithoutUVs, ///< those before leave the values in slot 0 alone
        Values = KindsWithoutUVs,
        Scale,
        Lazy,
        KindsOnMesh, ///< those before need no new compact mesh
        NoCompactValues = KindsOnMesh,
        Slot,
        KindCount
    };

    struct Step
    {
        Kind kind = Mode;
        std::string messages; ///< of an undo or redo
        std::string messagesOnAdd;
    };

    RandomEdits(osg::NodePtr node, Random& random);
    ~RandomEdits();
    RandomEdits(const RandomEdits&) = delete;
    RandomEdits& operator=(const RandomEdits&) = delete;

    /// One step, by up to three edits in quick succession where they merge.
    Step make(Kind kind);
    /// UVs of which no two are equal, so that nothing comes together by chance.
    UVs distinctUVs(std::size_t count);

    Application application;

private:
    using Command = std::unique_ptr<kyUndoCommandBase>;

    void edit(Kind kind);
    Command newCommand(Kind kind);
    Command newLatticeReset();
    Command newPivot();
    Command newPoints();
    void editValues();
    void editNoCompactValues();
    void editConstraints();
    void setUVs(const Ids& ids);
    Ids someVertices();

    osg::NodePtr node_;
    osg::GeometryPtr core_ = coreOf(node_);
    Random& random_;
    Ids ids_; ///< of the present step
    bool isOfAll_ = false;
    double time_ = 0;
    kyUndoStack& stack_ = kyUndoStack::get(0);
};
