#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGExt/UVConstraintAttachment.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/Captures.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/solver/OptimizeSettings.h"
#include "UVUtils/solver/PackSettings.h"
#include "UVUtils/solver/UnfoldSettings.h"
#include "UndoUtils/kyUndoStack.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <set>

using kyUVTypes::EdgeConstraint;
using kyUVTypes::Horizontal;
using kyUVTypes::Vertical;

namespace
{

using Edges = std::vector<Edge>;

osg::GeoTmpIndexEditInterface listOf(const osg::GeometryPtr& geometry, unsigned int number)
{
    return {geometry, number};
}

Edges heldOn(const osg::NodePtr& node, EdgeConstraint constraint)
{
    return kyUVUtils::getConstrainedEdges(coreOf(node), node, constraint);
}

bool isShell(const osg::NodePtr& node)
{
    return coreOf(node)->getGeometryType() == osg::Geometry::ShellType;
}

/// Pairs of vertices in either order, edges of the mesh or not; on a shell some beyond the end.
FlatEdgeList randomPairs(const osg::NodePtr& node, unsigned int most)
{
    const unsigned int end = vertexCountOf(activeSurfaces(node)) + (isShell(node) ? 2 : 0);
    return *rc::gen::container<FlatEdgeList>(2 * *rc::gen::inRange(0U, most),
                                             rc::gen::inRange(0U, end));
}

/// The edges that the surfaces of a node can hold: those within one of them.
std::set<Edge> holdable(const osg::NodePtr& node, const FlatEdgeList& pairs)
{
    const std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    std::set<Edge> edges;
    for (const Edge& edge : edgesOf(pairs))
        for (const ActiveSurface& surface : surfaces)
            if (!isShell(node) || (edge.first >= surface.firstId &&
                                   edge.second < surface.firstId + surface.vertexCount))
                edges.insert(edge);
    return edges;
}

/// The lists that show held edges say what the geometries hold, are lines, and null without any.
void expectListsShow(const osg::NodePtr& node)
{
    const auto expectShown = [](const osg::GeometryPtr& geometry, unsigned int number,
                                const Edges& held) {
        const auto list = listOf(geometry, number);
        RC_ASSERT(edgesOf(list.values()) == held);
        RC_ASSERT(list.isNull() == held.empty());
        RC_ASSERT(held.empty() || list.getType() == osg::GeoPrimitive::Lines);
    };
    for (const EdgeConstraint constraint : {Horizontal, Vertical}) {
        const unsigned int number = constraint == Horizontal ? 9 : 10;
        expectShown(coreOf(node), number, heldOn(node, constraint));
        for (const ActiveSurface& surface : activeSurfaces(node))
            expectShown(surface.geometry, number,
                        edgesOf(getUVConstraints(surface.geometry, number - 9)));
    }
}

/// Leaves a shell out that lacks one of the lists: edges of hidden surfaces have it filled anew.
std::vector<unsigned int> stampsOf(const osg::NodePtr& node)
{
    std::vector<unsigned int> stamps;
    for (const osg::GeometryPtr& geometry : geometriesOf(node))
        for (const unsigned int number : {9U, 10U})
            if (geometry != coreOf(node) || !isShell(node) ||
                (!listOf(geometry, 9).isNull() && !listOf(geometry, 10).isNull()))
                stamps.push_back(listOf(geometry, number).getStamp());
    return stamps;
}

RC_GTEST_PROP(EdgeConstraints, AreHeldMovedFreedAndShown, ())
{
    const osg::RefPtr<osg::Node> node = randomNode();
    RC_PRE(kyUVUtils::isValidGeometry(coreOf(node), node, false));
    std::set<osg::GeometryPtr> active;
    for (const ActiveSurface& surface : activeSurfaces(node))
        active.insert(surface.geometry);
    for (const osg::GeometryPtr& geometry : geometriesOf(node)) // what nobody must touch
        if (!active.contains(geometry) && geometry != coreOf(node))
            setUVConstraints(geometry, {{{0, 1}, {2, 3}}});

    std::array<std::set<Edge>, 2> expected;
    for (int step = 0; step < 6; ++step) {
        const auto constraint = static_cast<EdgeConstraint>(*rc::gen::inRange(0, 2));
        auto& held = expected[static_cast<std::size_t>(constraint)];
        auto& heldOtherwise = expected[constraint == Horizontal ? 1 : 0];
        auto selection = listOf(coreOf(node), kyUVTypes::SelectedEdges);
        const FlatEdgeList pairs = randomPairs(node, 6);
        selection.assign(pairs);
        const std::set<Edge> selected = holdable(node, pairs);
        if (*rc::gen::inRange(0, 3) > 0) {
            RC_ASSERT(kyUVUtils::constrainEdges(coreOf(node), node, constraint));
            held.insert(selected.begin(), selected.end());
            std::erase_if(heldOtherwise, [&](const Edge& edge) { return selected.contains(edge); });
        } else {
            if (*rc::gen::arbitrary<bool>()) {
                selection.setNull();
                RC_ASSERT(!kyUVUtils::constrainEdges(coreOf(node), node, constraint));
                held.clear();
            }
            RC_ASSERT(kyUVUtils::unconstrainEdges(coreOf(node), node, constraint));
            std::erase_if(held, [&](const Edge& edge) { return selected.contains(edge); });
        }

        for (const EdgeConstraint direction : {Horizontal, Vertical}) {
            Edges now = heldOn(node, direction);
            std::sort(now.begin(), now.end());
            const auto& wanted = expected[static_cast<std::size_t>(direction)];
            RC_ASSERT(now == Edges(wanted.begin(), wanted.end()));
        }
        for (const osg::GeometryPtr& geometry : geometriesOf(node)) {
            const UVConstraintData data = getUVConstraints(geometry).front();
            RC_ASSERT(active.contains(geometry) || geometry == coreOf(node) ||
                      data == (UVConstraintData{{0, 1}, {2, 3}}));
            const bool hasAttachment =
                geometry->findAttachment(osg::UVConstraintAttachment::_type) != osg::NullFC;
            RC_ASSERT(hasAttachment == (data != UVConstraintData()));
        }
        kyUVUtils::updateConstrainedEdgesTempIndices();
        expectListsShow(node);
        const auto stamps = stampsOf(node);
        kyUVUtils::updateConstrainedEdgesTempIndices();
        RC_ASSERT(stampsOf(node) == stamps);
        // As after a change of topology.
        const auto geometries = geometriesOf(node);
        osg::GeoTmpIndexEditInterface::setNullforAll(
            geometries[*rc::gen::inRange<std::size_t>(0, geometries.size())]);
    }
}

TEST(EdgeConstraints, AreNotTakenByABrokenGeometry)
{
    const osg::RefPtr<osg::Node> node(nodeOf(brokenQuad()));
    EXPECT_FALSE(kyUVUtils::unconstrainEdges(coreOf(node), node, Vertical));
    listOf(coreOf(node), kyUVTypes::SelectedEdges).assign(Ids{0, 1});
    EXPECT_TRUE(kyUVUtils::constrainEdges(coreOf(node), node, Vertical));
    EXPECT_TRUE(kyUVUtils::unconstrainEdges(coreOf(node), node, Vertical));
    EXPECT_EQ(getUVConstraints(coreOf(node)), std::vector{UVConstraintData()});
}

UVs uvsOf(const osg::NodePtr& node)
{
    UVs uvs;
    kyUVUtils::getUVValues(coreOf(node), node, slot, uvs);
    return uvs;
}

/// One edge is held in each direction, and lies so.
void expectStraight(const osg::NodePtr& node)
{
    const UVs uvs = uvsOf(node);
    for (const EdgeConstraint constraint : {Horizontal, Vertical}) {
        const Edges held = heldOn(node, constraint);
        ASSERT_EQ(held.size(), 1U);
        const osg::Vec2f along = uvs[held[0].first] - uvs[held[0].second];
        EXPECT_NEAR(along[constraint == Horizontal ? 1 : 0], 0, 1e-6);
        EXPECT_GT(along.length(), 0.01F);
    }
}

void unfold(const osg::NodePtr& node)
{
    kyUnfold3D::PackSettings packSettings; // has a first turn; others are allowed too
    packSettings.setRotate(true);
    packSettings.setRotateStep(45);
    ASSERT_EQ(kyUVUtils::unfoldGeometryUnfold3D(coreOf(node), node, slot, {}, packSettings),
              kyUVTypes::Success);
}

TEST(EdgeConstraints, AreStraightInUnfoldsThroughCutUndoAndSew)
{
    const OutputCapture output;
    const LogCapture log;
    kyUndoStack& stack = kyUndoStack::get(0);
    for (std::uint32_t seed = 0; seed < 4; ++seed) {
        SCOPED_TRACE(seed);
        const osg::RefPtr<osg::Node> node = randomManifoldShell(seed);
        const osg::GeometryPtr core = coreOf(node);
        const Ids triangles = trianglesOf(node);
        Ids sides; // one of each triangle
        for (std::size_t i = 0; i < triangles.size(); i += 3)
            sides.insert(sides.end(), {triangles[i], triangles[i + 1]});
        ASSERT_GT(sides.size(), 10U);
        kyUVUtils::setConstrainedEdges(core, node, {{sides[0], sides[1]}}, Horizontal);
        kyUVUtils::setConstrainedEdges(core, node, {edgesOf(sides).back()}, Vertical);
        unfold(node);
        expectStraight(node);

        const UVs before = uvsOf(node);
        auto selection = listOf(core, kyUVTypes::SelectedEdges);
        selection.assign(std::span(sides).first(sides.size() / 4 * 2));
        kyUVUtils::cutAlongEdgesUndo({node}, slot);
        unfold(node);
        expectStraight(node);
        stack.undo();
        EXPECT_EQ(uvsOf(node), before);
        expectStraight(node);

        kyUVUtils::updateBorderEdges(core, node, slot);
        selection.assign(listOf(core, kyUVTypes::BorderEdges).values());
        kyUVUtils::sewAlongEdgesUndo({node}, slot);
        kyUVUtils::optimizeUVsUnfold3D(core, node, slot, {}, kyUVUtils::SelectAll);
        expectStraight(node);
        stack.clear();
    }
}

} // namespace
