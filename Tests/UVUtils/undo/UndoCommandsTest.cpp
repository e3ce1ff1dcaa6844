// What the random histories do not show of the commands and guards: texts, which of them merge,
// and what happens to nodes that go.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/undo/RandomEdits.h"
#include "UVUtils/undo/kyNoCompactUVValueChangeUndoGuard.h"
#include "UVUtils/undo/kyUVConstraintsChangeUndoGuard.h"
#include "UVUtils/undo/kyUVContinousChangeLazyCommand.h"
#include "UVUtils/undo/kyUVGeneralToggleCommand.h"
#include "UVUtils/undo/kyUVLattiCtrlPntContinousChangeCommand.h"
#include "UVUtils/undo/kyUVMaxIterationContinousChangeCommand.h"
#include "UVUtils/undo/kyUVMergeGroup.h"
#include "UVUtils/undo/kyUVPivotContinousChangeCommand.h"
#include "UVUtils/undo/kyUVRemoveTexCoordSlotCommand.h"
#include "UVUtils/undo/kyUVScaleChangeCommand.h"
#include "UVUtils/undo/kyUVValueChangeUndoGuard.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

using kyUVTypes::UVSet0;
using kyUVTypes::UVSet1;

namespace
{

using Lazy = kyUVContinousChangeLazyCommand;
using Pivot = kyUVPivotContinousChangeCommand;
using Points = kyUVLattiCtrlPntContinousChangeCommand;
using Iterations = kyUVMaxIterationContinousChangeCommand;

osg::RefPtr<osg::Node> quadNode()
{
    return osg::RefPtr<osg::Node>(nodeOf(quad()));
}
UVs uvsOf(const osg::NodePtr& node)
{
    return kyUVUtils::getUVValuesLocal(coreOf(node), UVSet0);
}
void setUVs(const osg::NodePtr& node, float u, kyUVTypes::UVSet set = UVSet0)
{
    kyUVUtils::setLocalUVs(coreOf(node), set, UVs(4, Vec2f(u, 0)));
}

/// The application's stack, its clock and what it is told. Plain geometries are worked on as such.
class UndoCommands : public testing::Test
{
protected:
    UndoCommands()
    {
        kyUndoCommand::setClock([this] { return time; });
        kyOpenSGUtils::setCallHandler([this](const char* name, int) {
            messages += std::string(name) + ' ';
            return 0;
        });
    }
    ~UndoCommands() override
    {
        stack.clear();
        kyOpenSGUtils::setCallHandler(nullptr);
        kyUndoCommand::setClock(nullptr);
    }

    const WithoutCompactMesh noMesh;
    osg::RefPtr<osg::Node> node = quadNode();
    kyUndoStack& stack = kyUndoStack::get(0);
    double time = 0;
    std::string messages;
};

TEST_F(UndoCommands, SayWhatTheyAre)
{
    const auto core = coreOf(node);
    stack.add(new kyUVScaleChangeCommand(core, node, UVSet0, nullptr, 3, Vec2f(), 2, 2, nullptr));
    stack.add(new kyUVRemoveTexCoordSlotCommand(node, UVSet0, nullptr));
    stack.add(new Lazy(core, node, UVSet0, 4, false, nullptr));
    {
        const kyUVConstraintsChangeUndoGuard constraints({"Hold", "Edges"}, {node});
    }
    {
        const kyUVValueChangeUndoGuard values({node}, UVSet0);
    }
    {
        const kyNoCompactUVValueChangeUndoGuard noCompact({node}, UVSet0);
    }
    std::string text;
    for (int i = 0; i < stack.count(); ++i) {
        text += stack.command(i)->makeMessage().toStdString() + ", ";
        if (const auto* step = dynamic_cast<const kyMultiCommand*>(stack.command(i)))
            text += step->at(0)->makeMessage().toStdString() + ", ";
    }
    EXPECT_EQ(text, "UV Scale Change (UV Editor), Set UV Set (UV Editor), "
                    "UV Continuous Change (UV Editor), "
                    "Hold (Edges), UV Constraints Change (UV Editor), "
                    "Change UV values, UV Values Change (UV Editor), "
                    "Change UV values, UV Values Change (UV Editor), ");
}

TEST_F(UndoCommands, PassOverNodesThatVanish)
{
    osg::RefPtr<osg::Node> first = quadNode(), second = quadNode(), third = quadNode();
    const osg::RefPtr<osg::Node> coreless(osg::Node::create());
    const std::vector<osg::NodePtr> nodes{first, osg::NullFC, second, coreless, third};
    const auto held = [&] {
        return kyUVUtils::getConstrainedEdges(coreOf(third), third, kyUVTypes::Vertical).size();
    };
    setUVs(third, 3);
    messages.clear();
    {
        const kyUVValueChangeUndoGuard values(nodes, UVSet0);
        const kyUVConstraintsChangeUndoGuard constraints({"Hold", ""}, nodes);
        const kyNoCompactUVValueChangeUndoGuard noCompact(nodes, UVSet0);
        setUVs(first, 4);
        setUVs(third, 5);
        kyUVUtils::setConstrainedEdges(coreOf(third), third, {{0, 1}}, kyUVTypes::Vertical);
        second = osg::NullFC;
    }
    EXPECT_EQ(messages, "UVChanged UVChanged UVConstraintChanged UVConstraintChanged "
                        "UVConstraintChanged UVConstraintChanged UVChanged UVChanged ");
    stack.undo();
    EXPECT_TRUE(uvsOf(first).empty() && uvsOf(third)[0] == Vec2f(3, 0) && held() == 0);
    stack.redo();
    EXPECT_TRUE(uvsOf(first)[0] == Vec2f(4, 0) && uvsOf(third)[0] == Vec2f(5, 0) && held() == 1);
    first = third = osg::NullFC;
    stack.undo();
    stack.redo();
}

TEST_F(UndoCommands, OfOneNodeAndSlotBecomeOneWithinASecondOfTheFirst)
{
    const osg::RefPtr<osg::Node> other = quadNode();
    const struct
    {
        double wait;
        osg::NodePtr node;
        kyUVTypes::UVSet set;
        int steps;
    } cases[] = {{0, node, UVSet0, 1},    {0.6, node, UVSet0, 1}, {0.4, node, UVSet0, 1},
                 {0.01, node, UVSet0, 2}, {0, node, UVSet1, 3},   {0, other, UVSet1, 4}};
    float u = 0;
    for (const auto& c : cases) {
        time += c.wait;
        {
            const kyNoCompactUVValueChangeUndoGuard guard({c.node}, c.set);
            setUVs(c.node, ++u, c.set);
        }
        EXPECT_EQ(stack.count(), c.steps) << u;
    }
    while (stack.index() > 1)
        stack.undo();
    EXPECT_EQ(uvsOf(node)[0], Vec2f(3, 0));
    stack.undo();
    EXPECT_TRUE(uvsOf(node).empty()) << "as before the first";
}

TEST_F(UndoCommands, GiveSlotsBackAsTheSameObjects)
{
    setUVs(node, 1);
    const osg::GeoTexCoordsPtr slot = coreOf(node)->getTexSlot(0);
    stack.add(new kyUVRemoveTexCoordSlotCommand(node, UVSet0, nullptr));
    stack.add(new kyUVRemoveTexCoordSlotCommand(osg::NullFC, UVSet0, nullptr));
    stack.undo();
    EXPECT_FALSE(coreOf(node)->getTexSlot(0));
    stack.undo();
    EXPECT_EQ(coreOf(node)->getTexSlot(0), slot);
    EXPECT_EQ(messages, "UVChanged UVChanged UVChanged UVChanged ") << "of no geometry too";
}

TEST_F(UndoCommands, ScaleBackWhereThereIsAReciprocalFactor)
{
    setUVs(node, 1);
    const Ids ids{0};
    for (const unsigned int count : {1U, 0U})
        stack.add(new kyUVScaleChangeCommand(coreOf(node), node, UVSet0, ids.data(), count,
                                             Vec2f(3, 1), 0, 4, nullptr));
    EXPECT_EQ(uvsOf(node)[0], Vec2f(3, -3));
    stack.undo();
    stack.undo();
    EXPECT_EQ(uvsOf(node)[0], Vec2f(3, 0)) << "flattened for good";
    EXPECT_EQ(messages, "UVChanged UVChanged ") << "none of no vertices";
}

TEST_F(UndoCommands, AreCompatibleByWhatTheyWorkOn)
{
    const osg::RefPtr<osg::Node> other = quadNode();
    const Lazy some(coreOf(node), node, UVSet0, 4, false, nullptr);
    EXPECT_TRUE(Lazy(coreOf(node), other, UVSet1, 4, false, nullptr).isCompatible(&some));
    EXPECT_FALSE(Lazy(coreOf(other), node, UVSet0, 4, false, nullptr).isCompatible(&some));
    EXPECT_FALSE(Lazy(coreOf(node), node, UVSet0, 3, false, nullptr).isCompatible(&some));
    EXPECT_FALSE(Lazy(coreOf(node), node, UVSet0, 4, true, nullptr).isCompatible(&some));
    const Points two({"", ""}, {}, {}, UVs(2), 0, nullptr);
    EXPECT_TRUE(Points({"", ""}, {}, {}, UVs(2), 1, nullptr).isCompatible(&two));
    EXPECT_FALSE(Points({"", ""}, {}, {}, UVs(3), 0, nullptr).isCompatible(&two));
    const Iterations one({"", ""}, 1, {}, {}, nullptr);
    EXPECT_TRUE(Iterations({"", ""}, 2, {}, {}, nullptr).canMergeWith(&one));
    EXPECT_FALSE(one.canMergeWith(&two) || one.canMergeWith(nullptr));
    const kyUVMergeGroup group({"", ""}, 7);
    EXPECT_EQ(group.getMark(), 7U);
    EXPECT_EQ((std::set{some.id(), two.id(), one.id(), group.id(), Pivot::commandId(), -1}).size(),
              6U);
    EXPECT_EQ(kyUndoCommand::makeId(typeid(Lazy)), kyUndoCommand::makeId(typeid(Lazy)));
    for (int i = 0; i < 2; ++i)
        stack.add(new kyUVGeneralToggleCommand({"Toggle", ""}, {}, nullptr));
    EXPECT_EQ(stack.count(), 2);
}

TEST_F(UndoCommands, OfARunAreOneStepFromBeforeTheFirstToAfterTheLast)
{
    Vec2f pivot;
    const auto add = [&](double wait, int key) {
        time += wait;
        stack.add(new Pivot(
            {"Pivot", ""}, key, [&](const Vec2f& p) { return std::exchange(pivot, p); },
            pivot + Vec2f(1, 0), [](bool flag) { return flag; }, false, nullptr));
        return stack.count();
    };
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(add(0.45, 1), 1); // each soon after the one before
    stack.undo();
    EXPECT_EQ(pivot, Vec2f(0, 0));
    stack.redo();
    EXPECT_EQ(pivot, Vec2f(10, 0));
    EXPECT_EQ(add(0, 1), 2) << "not right after a redo";
    EXPECT_EQ(add(0, 2), 3) << "nor with another key";
    EXPECT_EQ(add(0.6, 2), 4) << "nor too late";
}

TEST_F(UndoCommands, OfALazyKindTakeTheValuesOfTheSelectionOnce)
{
    osg::GeoTmpIndexEditInterface list(coreOf(node), 4);
    for (const auto& [selection, isOfAll] :
         {std::pair(Ids{2, 1}, false), {Ids{2, 1}, true}, {Ids{}, false}})
    {
        setUVs(node, 0);
        list.assign(selection);
        auto* command = new Lazy(coreOf(node), node, UVSet0, 4, isOfAll, nullptr);
        EXPECT_EQ(stack.add(command), command);
        stack.undo();
        stack.redo(); // nothing to exchange yet
        command->lazyInit();
        setUVs(node, 1);
        list.assign(Ids{0});
        command->lazyInit(); // not again
        stack.undo();
        const Vec2f unselected(isOfAll || selection.empty() ? 0.F : 1.F, 0);
        EXPECT_EQ(uvsOf(node), (UVs{unselected, Vec2f(), Vec2f(), unselected}));
        stack.redo();
        EXPECT_EQ(uvsOf(node), UVs(4, Vec2f(1, 0)));
    }
    node = osg::NullFC;
    stack.undo();
    stack.redo();
}

} // namespace
