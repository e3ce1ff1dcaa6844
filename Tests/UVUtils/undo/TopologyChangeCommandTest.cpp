#include "OpenSG/ChangeNotice.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/compactmesh/TopologySteps.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyUVTopologyChangeCommand.h"
#include "UndoUtils/kyUndoStack.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

using kyUVTypes::UVSet0;

namespace
{

/// A shell of two quads of which the right one is lifted off, by a command that is on the stack.
class LiftedQuad : public testing::Test
{
protected:
    LiftedQuad()
    {
        // Other indices than the left one: checksums of equal ones cancel out.
        right()->getIndices()->setValues(Ids{0, 2, 3, 0, 1, 2});
        kyUVUtils::setUVValues(core, shell, UVSet0, UVs(8));
        before = steps::stateOf(shell);
        addCommand(true);
        after = steps::stateOf(shell);
        kyOpenSGUtils::setCallHandler([this](const char* name, int) {
            messages += std::string(name) + ' ';
            return 0;
        });
    }
    ~LiftedQuad() override
    {
        kyOpenSGUtils::setCallHandler(nullptr);
        stack.clear();
    }

    void addCommand(bool restore)
    {
        auto command = std::make_unique<kyUVTopologyChangeCommand>(core, shell, UVSet0, restore,
                                                                   restore, nullptr);
        command->setLastUVs(uvs());
        command->saveLastSelections();
        steps::lift(shell, {false, false, true, true}, 8, *command->getTopoBridge());
        osg::GeoTmpIndexEditInterface::setNullforAll(core);
        command->setNextUVs(uvs());
        command->saveNextSelections();
        stack.add(command.release());
    }

    UVs uvs() const
    {
        UVs values;
        kyUVUtils::getUVValues(core, shell, UVSet0, values);
        return values;
    }
    osg::GeometryPtr right() const { return surfaceOf(shell, 1); }

    osg::RefPtr<osg::Node> shell{twoSurfaceShell()};
    osg::GeometryPtr core = coreOf(shell);
    kyUndoStack& stack = kyUndoStack::get(0);
    steps::State before, after;
    std::string messages;
};

TEST_F(LiftedQuad, StaysWhereTheTrianglesAreNoLongerThoseItLeft)
{
    const osg::RefPtr<osg::GeoIndices> original(right()->getIndices());
    const osg::GeoIndicesPtr narrow = osg::GeoIndicesUI16::create();
    narrow->setValues(original->getValues());
    const auto put = [&](const osg::GeoIndicesPtr& indices, unsigned int travMask) {
        right()->setIndices(indices);
        shell->getChild(1)->setTravMask(travMask);
        osg::notifyChanged(right(), osg::Geometry::IndicesFieldMask);
    };
    // Other triangles, another class, a hidden surface.
    for (const auto& [indices, travMask] :
         {std::pair(tiny::indices({0, 1, 2, 0, 3, 2}), 1U), {narrow, 1U}, {original.get(), 0U}})
    {
        put(indices, travMask);
        const steps::State changed = steps::stateOf(shell);
        EXPECT_TRUE(stack.undo()) << "the stack moves on";
        EXPECT_TRUE(steps::stateOf(shell) == changed);
        stack.redo();
        EXPECT_TRUE(steps::stateOf(shell) == changed);
        EXPECT_EQ(messages, "");
        put(original.get(), 1);
    }
    stack.undo();
    EXPECT_EQ(steps::stateOf(shell).indices, before.indices);
}

TEST_F(LiftedQuad, MindsOnlySurfacesThatTheOperationChanged)
{
    auto* command = new kyUVTopologyChangeCommand(core, shell, UVSet0, false, false, nullptr);
    steps::reverseVertices(shell, activeSurfaces(shell)[0], *command->getTopoBridge());
    stack.add(command);
    right()->getIndices()->setValues(Ids{2, 3, 0, 0, 1, 2});
    stack.undo();
    EXPECT_EQ(messages, "VESelectionChanged ");
    EXPECT_EQ(surfaceOf(shell, 0)->getIndices()->getValues(), after.indices[0]);
}

TEST_F(LiftedQuad, RestoresTopologyAloneWhereAsked)
{
    stack.undo();
    addCommand(false);
    kyUVUtils::setUVValues(core, shell, UVSet0, UVs(8, osg::Vec2f(3, 3)));
    osg::GeoTmpIndexEditInterface list(core, kyUVTypes::FreeVertices);
    list.assign(Ids{2});
    stack.undo();
    EXPECT_EQ(stack.steps().at(0).text, "UV Topology Change");
    EXPECT_EQ(stack.steps().at(0).description, "UV Editor");
    EXPECT_TRUE(steps::stateOf(shell).indices == before.indices);
    EXPECT_EQ(uvs(), UVs(8, osg::Vec2f(3, 3)));
    EXPECT_EQ(Ids(list.values().begin(), list.values().end()), (Ids{2}));
}

TEST_F(LiftedQuad, OfNothingOrOfWhatIsGoneIsHarmless)
{
    stack.add(new kyUVTopologyChangeCommand(core, shell, UVSet0, true, true, nullptr));
    stack.undo();
    stack.redo();
    stack.undo();
    EXPECT_EQ(messages, "") << "empty records fit no geometry";
    EXPECT_TRUE(steps::stateOf(shell) == after);
    shell = osg::NullFC;
    stack.undo();
    stack.redo();
}

} // namespace
