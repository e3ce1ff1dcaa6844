#include "OpenSG/ChangeNotice.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/TopologySteps.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyUVTopologyChangeCommand.h"
#include "UndoUtils/kyUndoStack.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

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
        kyUVSelection::selectIslandsBySeeds(core, shell, UVSet0, {6});
        list(kyUVTypes::FreeVertices).assign(Ids{7, 1});
        list(kyUVTypes::SelectedEdges).assign(Ids{5, 6, 2, 1});
        list(kyUVTypes::SelectedEdges).setType(osg::GeoPrimitive::Lines);
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
    osg::GeoTmpIndexEditInterface list(unsigned int number) const { return {core, number}; }
    Ids idsOf(unsigned int number) const
    {
        const auto ids = list(number).values();
        return {ids.begin(), ids.end()};
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
    const Ids indices = right()->getIndices()->getValues();
    const auto setIndices = [&](const osg::GeoIndicesPtr& property, const Ids& values) {
        property->setValues(values);
        right()->setIndices(property);
        osg::notifyChanged(right(), osg::Geometry::IndicesFieldMask);
    };
    const struct
    {
        const char* name;
        std::function<void()> change, back;
    } cases[] = {
        {"other triangles",
         [&] {
             setIndices(osg::GeoIndicesUI32::create(), {0, 1, 2, 0, 3, 2});
         },
         [&] { setIndices(osg::GeoIndicesUI32::create(), indices); }},
        {"another class", [&] { setIndices(osg::GeoIndicesUI16::create(), indices); },
         [&] { setIndices(osg::GeoIndicesUI32::create(), indices); }},
        {"a hidden surface", [&] { shell->getChild(1)->setTravMask(0); },
         [&] {
             shell->getChild(1)->setTravMask(1);
             CompactShellMesh::getCMesh(core, shell, UVSet0)->touch(); // no notice tells of it
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        c.change();
        const steps::State changed = steps::stateOf(shell);
        EXPECT_TRUE(stack.undo()) << "the stack moves on";
        EXPECT_TRUE(steps::stateOf(shell) == changed);
        stack.redo();
        EXPECT_TRUE(steps::stateOf(shell) == changed);
        EXPECT_EQ(messages, "");
        c.back();
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
    list(kyUVTypes::FreeVertices).assign(Ids{2});
    stack.undo();
    EXPECT_EQ(stack.steps().at(0).text, "UV Topology Change");
    EXPECT_EQ(stack.steps().at(0).description, "UV Editor");
    EXPECT_TRUE(steps::stateOf(shell).indices == before.indices);
    EXPECT_EQ(uvs(), UVs(8, osg::Vec2f(3, 3)));
    EXPECT_EQ(idsOf(kyUVTypes::FreeVertices), (Ids{2}));
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
