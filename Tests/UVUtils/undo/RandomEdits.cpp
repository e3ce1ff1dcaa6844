#include "UVUtils/undo/RandomEdits.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/undo/kyNoCompactUVValueChangeUndoGuard.h"
#include "UVUtils/undo/kyUVConstraintsChangeUndoGuard.h"
#include "UVUtils/undo/kyUVContinousChangeLazyCommand.h"
#include "UVUtils/undo/kyUVGeneralToggleCommand.h"
#include "UVUtils/undo/kyUVLattiCtrlPntContinousChangeCommand.h"
#include "UVUtils/undo/kyUVLatticeToolStateResetCommand.h"
#include "UVUtils/undo/kyUVMaxIterationContinousChangeCommand.h"
#include "UVUtils/undo/kyUVMergeGroup.h"
#include "UVUtils/undo/kyUVPivotContinousChangeCommand.h"
#include "UVUtils/undo/kyUVRemoveTexCoordSlotCommand.h"
#include "UVUtils/undo/kyUVScaleChangeCommand.h"
#include "UVUtils/undo/kyUVSelectionModeChangeCommand.h"
#include "UVUtils/undo/kyUVValueChangeUndoGuard.h"

#include <utility>

using kyUVTypes::UVSet0;

RandomEdits::RandomEdits(osg::NodePtr node, Random& random) : node_(node), random_(random)
{
    kyUndoCommand::setClock([this] { return time_; });
}

RandomEdits::~RandomEdits()
{
    kyUndoCommand::setClock(nullptr);
    kyUVUtils::setSelectMode(kyUVUtils::SelectAll);
}

RandomEdits::Step RandomEdits::make(Kind kind)
{
    const bool merges = kind == NoCompactValues || kind == Lazy || kind == Group ||
                        (kind >= Pivot && kind <= Iterations);
    const unsigned int count = merges ? random_.between(1, 3) : 1;
    time_ += 10;
    lazyIds_ = someVertices();
    isLazyOfAll_ = random_.oneIn(2);
    Step step;
    step.kind = kind;
    for (unsigned int i = 0; i < count; ++i) {
        edit(kind);
        time_ += 0.4;
        step.messages = messagesOf(kind);
        step.messagesOnAdd += kind == Lazy ? "" : step.messages;
    }
    return step;
}

UVs RandomEdits::distinctUVs(std::size_t count)
{
    UVs uvs(count);
    for (Vec2f& uv : uvs)
        uv = Vec2f(static_cast<float>(random_.below(1U << 20U)),
                   static_cast<float>(random_.below(1U << 20U))) *
             1e-6F;
    return uvs;
}

void RandomEdits::edit(Kind kind)
{
    switch (kind) {
    case Mode:
        return setMode();
    case Pivot:
        stack_.add(newPivot());
        return;
    case LatticePoints:
        stack_.add(newPoints());
        return;
    case Iterations:
        stack_.add(newIterations());
        return;
    case LatticeReset:
        stack_.add(newLatticeReset());
        return;
    case Group:
        return addGroup();
    case Constraints:
        return editConstraints();
    case Values:
        return editValues();
    case Scale:
        return scale();
    case Lazy:
        return editLazily();
    case NoCompactValues:
        return editNoCompactValues();
    case Toggle:
        stack_.add(new kyUVGeneralToggleCommand(
            {"Toggle", ""}, [this] { application.isOn = !application.isOn; }, nullptr));
        return;
    default:
        stack_.add(new kyUVRemoveTexCoordSlotCommand(
            node_, kind == Slot ? UVSet0 : kyUVTypes::UVSet1, nullptr));
    }
}

void RandomEdits::editValues()
{
    const kyUVValueChangeUndoGuard guard({osg::NullFC, node_}, UVSet0);
    const Ids ids = someVertices();
    if (random_.oneIn(2))
        kyUVUtils::setUVValues(core_, node_, UVSet0,
                               distinctUVs(vertexCountOf(activeSurfaces(node_))));
    else
        kyUVUtils::setUVValues(core_, node_, UVSet0, ids.data(),
                               static_cast<unsigned int>(ids.size()), distinctUVs(ids.size()));
}

void RandomEdits::editNoCompactValues()
{
    const kyNoCompactUVValueChangeUndoGuard guard({node_, osg::NullFC}, UVSet0);
    UVs uvs;
    kyUVUtils::getNoCompactUVValues(node_, UVSet0, uvs);
    if (random_.oneIn(2))
        uvs = distinctUVs(uvs.size()); // no border is welded any more
    for (Vec2f& uv : uvs)
        std::swap(uv[0], uv[1]);
    kyUVUtils::setNoCompactUVValues(node_, UVSet0, uvs);
}

void RandomEdits::editConstraints()
{
    const kyUVConstraintsChangeUndoGuard guard({"Constraints", ""}, {osg::NullFC, node_});
    const Ids triangles = trianglesOf(node_);
    const unsigned int corner = 3 * random_.below(static_cast<unsigned int>(triangles.size() / 3));
    osg::GeoTmpIndexEditInterface(core_, kyUVTypes::SelectedEdges)
        .assign(Ids{triangles[corner], triangles[corner + 1], triangles[corner + 1],
                    triangles[corner + 2]});
    const auto constraint = random_.oneIn(2) ? kyUVTypes::Horizontal : kyUVTypes::Vertical;
    if (random_.oneIn(3))
        kyUVUtils::unconstrainEdges(core_, node_, constraint);
    else
        kyUVUtils::constrainEdges(core_, node_, constraint);
}

void RandomEdits::scale()
{
    const Ids ids = someVertices();
    const float factors[] = {2.0F, 1.5F, 0.8F, -1.0F};
    stack_.add(new kyUVScaleChangeCommand(
        core_, node_, UVSet0, ids.data(), static_cast<unsigned int>(ids.size()),
        Vec2f(0.25F, 0.75F), factors[random_.below(4)], factors[random_.below(4)], nullptr));
}

void RandomEdits::editLazily()
{
    osg::GeoTmpIndexEditInterface(core_, kyUVTypes::FreeVertices).assign(lazyIds_);
    auto* command = new kyUVContinousChangeLazyCommand(
        core_, node_, UVSet0, kyUVTypes::FreeVertices, isLazyOfAll_, nullptr);
    static_cast<kyUVContinousChangeLazyCommand*>(stack_.add(command))->lazyInit();
    kyUVUtils::setUVValues(core_, node_, UVSet0, lazyIds_.data(),
                           static_cast<unsigned int>(lazyIds_.size()),
                           distinctUVs(lazyIds_.size()));
}

void RandomEdits::setMode()
{
    const int before = application.mode;
    const int after = static_cast<int>(random_.below(3));
    stack_.add(new kyUVSelectionModeChangeCommand(
        {"Mode", ""}, static_cast<kyUVUtils::ESelectMode>(after),
        [this, after] { application.mode = after; }, [this, before] { application.mode = before; },
        nullptr));
}

kyUndoCommandBase* RandomEdits::newPivot()
{
    return new kyUVPivotContinousChangeCommand(
        {"Pivot", ""}, 1,
        [this](const Vec2f& pivot) { return std::exchange(application.pivot, pivot); },
        distinctUVs(1)[0], [this](bool flag) { return std::exchange(application.flag, flag); },
        random_.oneIn(2), nullptr);
}

kyUndoCommandBase* RandomEdits::newPoints()
{
    return new kyUVLattiCtrlPntContinousChangeCommand(
        {"Points", ""},
        [this](UVs& points, float& value) {
            points = application.points;
            value = application.value;
        },
        [this](const UVs& points, float value) {
            application.points = points;
            application.value = value;
        },
        distinctUVs(4), static_cast<float>(random_.below(100)), nullptr);
}

kyUndoCommandBase* RandomEdits::newIterations()
{
    return new kyUVMaxIterationContinousChangeCommand(
        {"Iterations", ""}, static_cast<int>(random_.below(1000)),
        [this] { return application.iterations; },
        [this](int iterations) { application.iterations = iterations; }, nullptr);
}

kyUndoCommandBase* RandomEdits::newLatticeReset()
{
    auto* command = new kyUVLatticeToolStateResetCommand(
        {"Reset", ""},
        [this](kyUVLatticeToolState& state) {
            state.controlPoints = application.points;
            state.amount = application.value;
        },
        [this](const kyUVLatticeToolState& state) {
            application.points = state.controlPoints;
            application.value = state.amount;
        },
        nullptr);
    command->getStateRef().controlPoints = distinctUVs(4);
    return command;
}

void RandomEdits::addGroup()
{
    auto* group = new kyUVMergeGroup({"Group", ""}, 1);
    group->append(std::unique_ptr<kyUndoCommandBase>(newPoints()));
    group->append(std::unique_ptr<kyUndoCommandBase>(newPivot()));
    stack_.add(group);
}

/// What the step on top of the stack tells when it is undone or redone.
std::string RandomEdits::messagesOf(Kind kind) const
{
    switch (kind) {
    case Mode:
        return "VESelectionChanged UVSelectionModeChanged ";
    case LatticeReset:
        return "VESelectionChanged ";
    case Pivot:
    case Iterations:
    case Toggle:
        return "";
    case Constraints:
        return messagesOfEach("UVConstraintChanged ");
    case Values:
    case NoCompactValues:
        return messagesOfEach("UVChanged ");
    default:
        return "UVChanged ";
    }
}

/// One for each command of the step.
std::string RandomEdits::messagesOfEach(const char* message) const
{
    std::string messages;
    const auto* step = static_cast<const kyMultiCommand*>(stack_.command(stack_.index() - 1));
    for (std::size_t i = 0; i < step->size(); ++i)
        messages += message;
    return messages;
}

/// Of those that triangles use, in any order, with repeats.
Ids RandomEdits::someVertices()
{
    const Ids triangles = trianglesOf(node_);
    Ids ids(random_.between(1, 20));
    for (unsigned int& id : ids)
        id = triangles[random_.below(static_cast<unsigned int>(triangles.size()))];
    return ids;
}
