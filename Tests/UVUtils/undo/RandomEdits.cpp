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

namespace
{

/// What an undo or redo of each kind tells.
const char* const messagesOf[RandomEdits::KindCount] = {
    "VESelectionChanged UVSelectionModeChanged ",
    "",
    "VESelectionChanged ",
    "UVConstraintChanged UVConstraintChanged ",
    "UVChanged ",
    "",
    "UVChanged ",
    "",
    "UVChanged ",
    "UVChanged ",
    "UVChanged ",
    "UVChanged ",
    "UVChanged ", // of each surface
    "UVChanged "};

std::size_t commandsInStep(const kyUndoCommandBase& step)
{
    return static_cast<const kyMultiCommand&>(step).size();
}

} // namespace

RandomEdits::Step RandomEdits::make(Kind kind)
{
    const bool merges = (kind >= Pivot && kind <= Group) || kind == Lazy || kind == NoCompactValues;
    const unsigned int count = merges ? random_.between(1, 3) : 1;
    time_ += 10;
    ids_ = someVertices();
    isOfAll_ = random_.oneIn(2);
    Step step{kind, messagesOf[kind], ""};
    for (unsigned int i = 0; i < count; ++i) {
        edit(kind);
        time_ += 0.4;
        if (kind == NoCompactValues && i == 0)
            for (std::size_t k = 1; k < commandsInStep(*stack_.command(stack_.index() - 1)); ++k)
                step.messages += messagesOf[kind];
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
    if (kind == Values)
        return editValues();
    if (kind == NoCompactValues)
        return editNoCompactValues();
    if (kind == Constraints)
        return editConstraints();
    if (kind == Lazy)
        osg::GeoTmpIndexEditInterface(core_, kyUVTypes::FreeVertices).assign(ids_);
    auto* command = stack_.add(newCommand(kind).release());
    if (kind == Lazy) {
        static_cast<kyUVContinousChangeLazyCommand*>(command)->lazyInit();
        setUVs(ids_);
    }
}

RandomEdits::Command RandomEdits::newCommand(Kind kind)
{
    const float factors[] = {2.0F, 1.5F, 0.8F, -1.0F};
    const int mode = static_cast<int>(random_.below(3));
    switch (kind) {
    case Mode:
        return std::make_unique<kyUVSelectionModeChangeCommand>(
            kyUndoString("Mode", ""), static_cast<kyUVUtils::ESelectMode>(mode),
            [this, mode] { application.mode = mode; },
            [this, before = application.mode] { application.mode = before; }, nullptr);
    case Toggle:
        return std::make_unique<kyUVGeneralToggleCommand>(
            kyUndoString("Toggle", ""), [this] { application.isOn = !application.isOn; }, nullptr);
    case LatticeReset:
        return newLatticeReset();
    case Pivot:
        return newPivot();
    case Points:
        return newPoints();
    case Iterations:
        return std::make_unique<kyUVMaxIterationContinousChangeCommand>(
            kyUndoString("Iterations", ""), mode, [this] { return application.iterations; },
            [this](int iterations) { application.iterations = iterations; }, nullptr);
    case Group: {
        auto group = std::make_unique<kyUVMergeGroup>(kyUndoString("Group", ""), 1);
        group->append(newPoints());
        group->append(newPivot());
        return group;
    }
    case Scale:
        return std::make_unique<kyUVScaleChangeCommand>(
            core_, node_, UVSet0, ids_.data(), static_cast<unsigned int>(ids_.size()),
            Vec2f(0.25F, 0.75F), factors[random_.below(4)], factors[random_.below(4)], nullptr);
    case Lazy:
        return std::make_unique<kyUVContinousChangeLazyCommand>(
            core_, node_, UVSet0, kyUVTypes::FreeVertices, isOfAll_, nullptr);
    default:
        return std::make_unique<kyUVRemoveTexCoordSlotCommand>(
            node_, kind == Slot ? UVSet0 : kyUVTypes::UVSet1, nullptr);
    }
}

RandomEdits::Command RandomEdits::newLatticeReset()
{
    auto command = std::make_unique<kyUVLatticeToolStateResetCommand>(
        kyUndoString("Reset", ""),
        [this](kyUVLatticeToolState& state) { state.controlPoints = application.points; },
        [this](const kyUVLatticeToolState& state) { application.points = state.controlPoints; },
        nullptr);
    command->getStateRef().controlPoints = distinctUVs(4);
    return command;
}

RandomEdits::Command RandomEdits::newPivot()
{
    return std::make_unique<kyUVPivotContinousChangeCommand>(
        kyUndoString("Pivot", ""), 1,
        [this](const Vec2f& pivot) { return std::exchange(application.pivot, pivot); },
        distinctUVs(1)[0], [this](bool flag) { return std::exchange(application.flag, flag); },
        random_.oneIn(2), nullptr);
}

RandomEdits::Command RandomEdits::newPoints()
{
    return std::make_unique<kyUVLattiCtrlPntContinousChangeCommand>(
        kyUndoString("Points", ""),
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

void RandomEdits::editValues()
{
    const kyUVValueChangeUndoGuard guard({osg::NullFC, node_}, UVSet0);
    if (isOfAll_)
        kyUVUtils::setUVValues(core_, node_, UVSet0,
                               distinctUVs(vertexCountOf(activeSurfaces(node_))));
    else
        setUVs(ids_);
}

void RandomEdits::setUVs(const Ids& ids)
{
    kyUVUtils::setUVValues(core_, node_, UVSet0, ids.data(), static_cast<unsigned int>(ids.size()),
                           distinctUVs(ids.size()));
}

void RandomEdits::editConstraints()
{
    const kyUVConstraintsChangeUndoGuard guard({"Constraints", ""}, {osg::NullFC, node_});
    const Ids triangles = trianglesOf(node_);
    const unsigned int corner = 3 * random_.below(static_cast<unsigned int>(triangles.size() / 3));
    osg::GeoTmpIndexEditInterface(core_, kyUVTypes::SelectedEdges)
        .assign(Ids{triangles[corner], triangles[corner + 1]});
    const auto constraint = isOfAll_ ? kyUVTypes::Horizontal : kyUVTypes::Vertical;
    if (random_.oneIn(3))
        kyUVUtils::unconstrainEdges(core_, node_, constraint);
    else
        kyUVUtils::constrainEdges(core_, node_, constraint);
}

void RandomEdits::editNoCompactValues()
{
    const kyNoCompactUVValueChangeUndoGuard guard({node_, osg::NullFC}, UVSet0);
    UVs uvs;
    kyUVUtils::getNoCompactUVValues(node_, UVSet0, uvs);
    if (isOfAll_)
        uvs = distinctUVs(uvs.size()); // no border is welded any more
    for (Vec2f& uv : uvs)
        std::swap(uv[0], uv[1]);
    kyUVUtils::setNoCompactUVValues(node_, UVSet0, uvs);
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
