#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGExt/UVConstraintAttachment.h"
#include "OpenSGExt/UVConstraintsTracker.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/Captures.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/solver/PackSettings.h"
#include "UVUtils/solver/UnfoldSettings.h"
#include "UndoUtils/kyUndoStack.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
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

/// All geometries of a node: its core, and those of its children, active or not.
std::vector<osg::GeometryPtr> geometriesOf(const osg::NodePtr& node)
{
    std::vector<osg::GeometryPtr> geometries{coreOf(node)};
    for (unsigned int i = 0; i < node->getNChildren(); ++i)
        if (surfaceOf(node, i))
            geometries.push_back(surfaceOf(node, i));
    return geometries;
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
        const unsigned int number = kyUVTypes::HorizontalEdges + (constraint == Vertical ? 1 : 0);
        expectShown(coreOf(node), number, heldOn(node, constraint));
        for (const ActiveSurface& surface : activeSurfaces(node))
            expectShown(surface.geometry, number,
                        edgesOf(getUVConstraints(surface.geometry, constraint)));
    }
}

std::vector<unsigned int> stampsOf(const osg::NodePtr& node)
{
    std::vector<unsigned int> stamps;
    for (const osg::GeometryPtr& geometry : geometriesOf(node))
        for (const unsigned int number : {9U, 10U})
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
        if (*rc::gen::inRange(0, 3) == 0) // as after a change of topology
            osg::GeoTmpIndexEditInterface::setNullforAll(
                geometriesOf(node)[*rc::gen::inRange<std::size_t>(0, node->getNChildren() > 0)]);
    }
}

TEST(EdgeConstraints, LeaveNothingBehindWithTheirGeometry)
{
    osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const unsigned int id = coreOf(node)->getId();
    const auto isTracked = [id] {
        const auto end = UVConstraintsTracker::the()->geomEnd();
        return std::find_if(UVConstraintsTracker::the()->geomBegin(), end,
                            [id](const auto& entry) { return entry.first == id; }) != end;
    };
    kyUVUtils::setConstrainedEdges(coreOf(node), node, {}, Vertical);
    EXPECT_FALSE(isTracked()) << "nothing was there and nothing came";
    kyUVUtils::setConstrainedEdges(coreOf(node), node, {{0, 1}}, Vertical);
    EXPECT_TRUE(isTracked());
    node = osg::NullFC;
    EXPECT_FALSE(isTracked());

    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    EXPECT_FALSE(kyUVUtils::setConstrainedEdges(coreOf(broken), broken, {{0, 1}}, Vertical));
    EXPECT_FALSE(kyUVUtils::unconstrainEdges(coreOf(broken), broken, Vertical));
    listOf(coreOf(broken), kyUVTypes::SelectedEdges).assign(Ids{0, 1});
    EXPECT_TRUE(kyUVUtils::constrainEdges(coreOf(broken), broken, Vertical));
    EXPECT_TRUE(kyUVUtils::unconstrainEdges(coreOf(broken), broken, Vertical));
    EXPECT_EQ(getUVConstraints(coreOf(broken)), std::vector{UVConstraintData()});
}

/// Where the held edges of a node lie, but for those without length, which a sew may close.
using Place = std::array<float, 3>;
std::set<std::array<Place, 2>> placesOf(const osg::NodePtr& node, EdgeConstraint constraint)
{
    std::vector<Place> placeOfVertex;
    for (const ActiveSurface& surface : activeSurfaces(node))
        for (const osg::Pnt3f& p : surface.geometry->getPositions()->getValues())
            placeOfVertex.push_back({p[0], p[1], p[2]});
    std::set<std::array<Place, 2>> places;
    for (const Edge& edge : heldOn(node, constraint)) {
        const auto ends = std::minmax(placeOfVertex[edge.first], placeOfVertex[edge.second]);
        if (ends.first != ends.second)
            places.insert({ends.first, ends.second});
    }
    return places;
}

/// Each edge of a triangle list with the same chance, in either order.
FlatEdgeList someEdges(const Ids& triangles)
{
    FlatEdgeList pairs;
    for (std::size_t i = 0; i < triangles.size(); ++i)
        if (*rc::gen::inRange(0, 3) == 0)
            pairs.insert(pairs.end(), {triangles[i % 3 == 2 ? i - 2 : i + 1], triangles[i]});
    return pairs;
}

void expectToSurviveSeams(const osg::RefPtr<osg::Node>& node)
{
    RC_PRE(!trianglesOf(node).empty());
    for (const EdgeConstraint constraint : {Horizontal, Vertical}) {
        listOf(coreOf(node), kyUVTypes::SelectedEdges).assign(someEdges(trianglesOf(node)));
        kyUVUtils::constrainEdges(coreOf(node), node, constraint);
    }
    using State = std::pair<Edges, Edges>;
    const auto state = [&] { return State(heldOn(node, Horizontal), heldOn(node, Vertical)); };
    const auto horizontal = placesOf(node, Horizontal);
    const auto vertical = placesOf(node, Vertical);
    std::vector<State> states{state()};
    for (const bool isCut : {true, false}) {
        listOf(coreOf(node), kyUVTypes::SelectedEdges).assign(someEdges(trianglesOf(node)));
        (isCut ? kyUVUtils::cutAlongEdgesUndo : kyUVUtils::sewAlongEdgesUndo)({node}, slot);
        RC_ASSERT(placesOf(node, Horizontal) == horizontal);
        RC_ASSERT(placesOf(node, Vertical) == vertical);
        kyUVUtils::updateConstrainedEdgesTempIndices();
        expectListsShow(node);
        states.push_back(state());
    }
    kyUndoStack& stack = kyUndoStack::get(0);
    std::size_t at = 2;
    for (const bool isUndo : {true, true, false, false}) {
        isUndo ? stack.undo() : stack.redo();
        RC_ASSERT(state() == states[isUndo ? --at : ++at]);
    }
}

RC_GTEST_PROP(EdgeConstraints, GoThroughCutSewUndoAndRedo, ())
{
    struct ClearedStack
    {
        ~ClearedStack() { kyUndoStack::get(0).clear(); }
    } const cleared;
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    ShellTraits traits;
    traits.nearlyEqual = traits.extraSheets = traits.degenerate = false;
    expectToSurviveSeams(seed % 3 == 0 ? randomPlain(seed, slot, traits)
                                       : randomManifoldShell(seed));
}

/// A sheet over columns x rows squares with a bump in it, as surfaces of one row of squares each.
osg::RefPtr<osg::Node> bumpyShell(unsigned int columns, unsigned int rows)
{
    std::vector<osg::GeometryPtr> surfaces;
    for (unsigned int row = 0; row < rows; ++row) {
        std::vector<osg::Pnt3f> positions;
        Ids triangles;
        for (unsigned int k = 0; k < 2 * (columns + 1); ++k) {
            const auto x = static_cast<float>(k / 2);
            const auto y = static_cast<float>(row + k % 2);
            positions.emplace_back(x, y, std::sin(0.9F * x) * std::cos(0.7F * y));
            if (k >= 2)
                for (const unsigned int corner : {k - 2 + k % 2, k, k - 1 - k % 2})
                    triangles.push_back(corner);
        }
        surfaces.push_back(geometryOf(positions, triangles));
    }
    return osg::RefPtr<osg::Node>(shellOf(surfaces));
}

TEST(EdgeConstraints, AreStraightAfterAnUnfold)
{
    const OutputCapture output;
    const LogCapture log;
    const osg::RefPtr<osg::Node> node = bumpyShell(7, 5);
    // Of surface r the vertices (i, r) and (i, r + 1) are 16 r + 2 i and one more.
    const auto vertex = [](unsigned int i, unsigned int row) { return 16 * row + 2 * i; };
    Edges across;
    Edges along;
    for (unsigned int i = 0; i < 7; ++i)
        across.emplace_back(vertex(i, 2), vertex(i + 1, 2));
    for (unsigned int row = 0; row < 5; ++row)
        along.emplace_back(vertex(3, row), vertex(3, row) + 1);
    // Turned from how the sheet lies, so that it takes more than the shape to have them straight.
    kyUVUtils::setConstrainedEdges(coreOf(node), node, across, Vertical);
    kyUVUtils::setConstrainedEdges(coreOf(node), node, along, Horizontal);
    kyUnfold3D::PackSettings packSettings; // has a first turn; others are allowed too
    packSettings.setRotate(true);
    packSettings.setRotateStep(45);
    ASSERT_EQ(kyUVUtils::unfoldGeometryUnfold3D(coreOf(node), node, slot, {}, packSettings),
              kyUVTypes::Success);
    UVs uvs;
    kyUVUtils::getUVValues(coreOf(node), node, slot, uvs);
    float size = 0;
    for (const Vec2f& uv : uvs)
        size = std::max(size, (uv - uvs[0]).length());
    ASSERT_GT(size, 0.5F);
    for (const Edge& edge : across)
        EXPECT_NEAR(uvs[edge.first][0], uvs[edge.second][0], 1e-6F * size);
    for (const Edge& edge : along)
        EXPECT_NEAR(uvs[edge.first][1], uvs[edge.second][1], 1e-6F * size);
}

} // namespace
