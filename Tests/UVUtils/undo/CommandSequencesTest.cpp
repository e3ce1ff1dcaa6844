// Random histories of every kind of command on the undo stack, walked back and forth.

#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/TopologySteps.h"
#include "UVUtils/editing/IslandLabels.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/NodeState.h"
#include "UVUtils/undo/RandomEdits.h"
#include "UVUtils/undo/kyUVTopologyChangeCommand.h"
#include "UndoUtils/kyUndoStack.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string>

using kyUVTypes::UVSet0;

namespace
{

/// Where the edges lie that a node holds straight in a direction. Those without length are left
/// out: a sew may close them.
using Place = std::array<float, 3>;
std::set<std::pair<Place, Place>> heldPlaces(const osg::NodePtr& node,
                                             kyUVTypes::EdgeConstraint constraint)
{
    std::vector<Place> placeOfVertex;
    for (const ActiveSurface& surface : activeSurfaces(node))
        for (const osg::Pnt3f& p : surface.geometry->getPositions()->getValues())
            placeOfVertex.push_back({p[0], p[1], p[2]});
    std::set<std::pair<Place, Place>> places;
    for (const Edge& edge : kyUVUtils::getConstrainedEdges(coreOf(node), node, constraint)) {
        const auto ends = std::minmax(placeOfVertex.at(edge.first), placeOfVertex.at(edge.second));
        if (ends.first != ends.second)
            places.insert(ends);
    }
    return places;
}

/// Must the mesh be what a build from its surfaces makes? Not where two of its vertices in one
/// place are so near in UV that a build welds them: a cut moves sides by a hundred times that, but
/// two can go nearly the same way. And not where triangles of one surface touch in a point, as far
/// as this surface goes: cutting and sewing part or join them in the mesh and in the surface by
/// what is around them there.
bool isAsBuilt(const osg::NodePtr& node)
{
    const CompactMeshScope scope(coreOf(node), node, UVSet0);
    const auto positions = scope.getGeometry()->getPositions()->getValues();
    const auto uvs = kyUVUtils::getUVValuesLocal(scope.getGeometry(), UVSet0);
    std::vector<bool> isOnSurface(positions.size(), false);
    for (const ActiveSurface& surface : activeSurfaces(node)) {
        std::set<unsigned int> verticesOfSurface;
        for (unsigned int i = 0; i < surface.vertexCount; ++i) {
            const unsigned int vertex = scope.getMesh()->mapVertFToC(surface.firstId + i);
            isOnSurface[vertex] = true;
            if (!verticesOfSurface.insert(vertex).second)
                return false;
        }
    }
    for (std::size_t i = 0; i < positions.size(); ++i)
        for (std::size_t k = i + 1; k < positions.size() && positions[k] == positions[i]; ++k)
            if ((uvs[k] - uvs[i]).length() < 5e-7F)
                return false;
    return std::find(isOnSurface.begin(), isOnSurface.end(), false) == isOnSurface.end();
}

/// Do the triangles at each vertex of a surface hang together there through edges? Where they touch
/// in the vertex alone, a cut of another surface can part on the mesh what stays one vertex here;
/// the mesh follows the surface then, and a fresh one welds otherwise.
bool haveOneFanAVertex(const osg::NodePtr& node)
{
    return std::ranges::all_of(activeSurfaces(node), [](const ActiveSurface& surface) {
        const Ids ids = surface.geometry->getIndices()->getValues();
        // Each corner joins the two spokes of its vertex that it lies between.
        std::map<std::pair<unsigned int, unsigned int>, unsigned int> spokes;
        Ids joined;
        for (std::size_t i = 0; i < ids.size(); ++i)
            for (const unsigned int turn : {1U, 2U, 2U}) {
                const std::pair spoke(ids[i], ids[i - i % 3 + (i + turn) % 3]);
                const auto number = static_cast<unsigned int>(spokes.size());
                joined.push_back(spokes.try_emplace(spoke, number).first->second);
            }
        const auto fans = labelIslands(joined, static_cast<unsigned int>(spokes.size()));
        return fans.islandCount == std::set<unsigned int>(ids.begin(), ids.end()).size();
    });
}

/// A node with a history, and what it should be at each point of that.
class History
{
public:
    History(osg::RefPtr<osg::Node> node, std::uint32_t seed, bool isExact)
        : node_(std::move(node)), random_(seed), isExact_(isExact)
    {
        for (const ActiveSurface& surface : activeSurfaces(node_)) {
            // Normals without a direction would make a sew blind to what comes behind them.
            std::vector<osg::Vec3f> normals(surface.vertexCount, osg::Vec3f(0, 0, 1));
            surface.geometry->getNormals()->setValues(normals);
            const Ids indices = surface.geometry->getIndices()->getValues();
            if (indices.empty())
                continue;
            const Ids edges = randomEdges(indices, 6);
            setUVConstraints(surface.geometry, {{edges, Ids(edges.begin(), edges.begin() + 2)}});
        }
        renewLists();
        kyUVUtils::setUVValues(core(), node_, UVSet0, edits_.distinctUVs(vertexCount()));
        stack_.clear();
        kyOpenSGUtils::setCallHandler([this](const char* name, int) {
            messages_ += std::string(name) + ' ';
            return 0;
        });
    }
    ~History()
    {
        kyOpenSGUtils::setCallHandler(nullptr);
        stack_.clear();
    }
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    void move()
    {
        const unsigned int choice = random_.below(12);
        if (choice < 4 && mayChangeTopology())
            change(choice < 2);
        else if (choice < 8)
            edit();
        else
            walk(choice == 11);
        checkLists();
    }

private:
    struct Step
    {
        State before, after;
        Application applicationBefore, applicationAfter;
        RandomEdits::Step edit; ///< where it is no change of topology
        bool isTopology = true;
        bool isInert = false; ///< left no record
    };

    osg::GeometryPtr core() const { return coreOf(node_); }
    unsigned int vertexCount() const { return vertexCountOf(activeSurfaces(node_)); }
    unsigned int sizeOf(const Ids& ids) const { return static_cast<unsigned int>(ids.size()); }

    /// Pairs out of the edges of a triangle list, in any order, with repeats.
    Ids randomEdges(const Ids& triangles, unsigned int count)
    {
        Ids edges;
        while (!triangles.empty() && edges.size() < 2 * std::size_t{count}) {
            const unsigned int corner = random_.below(sizeOf(triangles));
            const unsigned int next = corner % 3 == 2 ? corner - 2 : corner + 1;
            edges.push_back(triangles[random_.oneIn(2) ? corner : next]);
            edges.push_back(triangles[edges.back() == triangles[corner] ? next : corner]);
        }
        edges.resize(std::max<std::size_t>(edges.size(), 2));
        return edges;
    }

    Ids randomSelection(bool isCut)
    {
        const Ids triangles = trianglesOf(node_);
        if (isCut)
            return randomEdges(triangles, random_.between(0, sizeOf(triangles) / 4));
        kyUVUtils::updateBorderEdges(core(), node_, UVSet0);
        const auto borders = listOf(node_, kyUVTypes::BorderEdges).values();
        Ids edges;
        for (std::size_t i = 0; i < borders.size(); i += 2)
            if (random_.oneIn(2))
                edges.insert(edges.end(), {borders[i + 1], borders[i]});
        return edges;
    }

    void select(bool isCut)
    {
        const Ids edges = randomSelection(isCut);
        listOf(node_, kyUVTypes::SelectedEdges).assign(edges);
        kyUVUtils::updateEdgeVSet(core());
        const Ids triangles = trianglesOf(node_);
        listOf(node_, kyUVTypes::FreeVertices)
            .assign(Ids{triangles[random_.below(sizeOf(triangles))]});
        const unsigned int seed = triangles[random_.below(sizeOf(triangles))];
        kyUVSelection::selectIslandsBySeeds(core(), node_, UVSet0, Ids(random_.below(2), seed));
    }

    void change(bool isCut)
    {
        select(isCut);
        renewLists();
        Step step;
        step.before = stateOf(node_);
        step.applicationBefore = edits_.application;
        messages_.clear();
        const auto horizontal = heldPlaces(node_, kyUVTypes::Horizontal);
        const auto vertical = heldPlaces(node_, kyUVTypes::Vertical);
        if (isCut)
            kyUVUtils::cutAlongEdgesUndo({osg::NullFC, node_, coreless_}, UVSet0);
        else
            kyUVUtils::sewAlongEdgesUndo({coreless_, node_}, UVSet0);
        RC_ASSERT(messages_ == "");
        checkMesh();
        renewLists();
        step.after = stateOf(node_);
        const std::size_t before = step.before.islandCount;
        const std::size_t after = step.after.islandCount;
        RC_ASSERT(!isCut || after >= before);
        // Where triangles fold over one another a sew can join what the mesh must keep apart, and
        // the mesh follows its surfaces.
        RC_ASSERT(isCut || after <= before || (!isExact_ && kyUVUtils::useCMesh(core())));
        RC_ASSERT(!isExact_ || heldPlaces(node_, kyUVTypes::Horizontal) == horizontal);
        RC_ASSERT(!isExact_ || heldPlaces(node_, kyUVTypes::Vertical) == vertical);
        step.isInert = !hasRecord();
        keep(step);
    }

    /// Is there a record to replay, of something that happened to this node's own triangles?
    bool hasRecord() const
    {
        const auto* command =
            dynamic_cast<const kyUVTopologyChangeCommand*>(stack_.command(stack_.index() - 1));
        RC_ASSERT(command);
        kyTopologyBridge bridge(*command->getTopoBridge());
        const auto& record = *static_cast<const kyTopologyData*>(bridge.getNext());
        const bool isChild =
            kyUVUtils::useCMesh(core()) && core()->getGeometryType() != osg::Geometry::ShellType;
        return !record.shuffle.empty() && (!isChild || record.childIndices.at(0));
    }

    /// Are there UVs for a cut and a sew to work on? Where a mesh is made without, it has zeros
    /// everywhere, and an undo brings these back.
    bool mayChangeTopology() const { return !kyUVUtils::useCMesh(core()) || hasUVs(); }
    bool hasUVs() const
    {
        for (const ActiveSurface& surface : activeSurfaces(node_))
            if (kyUVUtils::getLocalUVCount(surface.geometry, UVSet0) != surface.vertexCount)
                return false;
        return true;
    }

    /// A kind of edit that leads back from here to the last bit.
    RandomEdits::Kind randomKind()
    {
        // A new mesh is the one that was kept up only where that is as built.
        const bool mayBuild = isExact_ && isFollowed_ && isAsBuilt(node_);
        const bool usesMesh = kyUVUtils::useCMesh(core());
        const auto end = !hasUVs()               ? RandomEdits::KindsWithoutUVs
                         : usesMesh && !mayBuild ? RandomEdits::KindsOnMesh
                                                 : RandomEdits::KindCount;
        return static_cast<RandomEdits::Kind>(random_.below(end));
    }

    static bool isMeshBuiltAnew(const RandomEdits::Step& edit)
    {
        return edit.kind >= RandomEdits::KindsOnMesh;
    }

    void edit()
    {
        Step step;
        step.isTopology = false;
        step.before = stateOf(node_);
        step.applicationBefore = edits_.application;
        messages_.clear();
        step.edit = edits_.make(randomKind());
        RC_ASSERT(messages_ == step.edit.messagesOnAdd);
        afterEdit(step.edit);
        step.after = stateOf(node_);
        keep(step);
    }

    void afterEdit(const RandomEdits::Step& edit)
    {
        if (isMeshBuiltAnew(edit))
            listOf(node_, kyUVTypes::BorderEdges).setNull(); // names edges that may be inner now
        renewLists();
    }

    void keep(const Step& step)
    {
        steps_.resize(done_);
        steps_.push_back(step);
        steps_.back().applicationAfter = edits_.application;
        ++done_;
        RC_ASSERT(stack_.count() == static_cast<int>(steps_.size()));
    }

    /// Undo or redo.
    void walk(bool isForward)
    {
        const State before = stateOf(node_);
        messages_.clear();
        if (!(isForward ? stack_.redo() : stack_.undo())) {
            RC_ASSERT(done_ == (isForward ? steps_.size() : 0));
            return;
        }
        const Step& step = isForward ? steps_[done_++] : steps_[--done_];
        checkMesh();
        RC_ASSERT(step.isInert ||
                  messages_ == (step.isTopology ? "VESelectionChanged " : step.edit.messages));
        RC_ASSERT(edits_.application ==
                  (isForward ? step.applicationAfter : step.applicationBefore));
        RC_ASSERT(edits_.application.mode == kyUVUtils::getSelectMode());
        // An empty record fits triangles of which the checksums cancel out.
        const bool isIdle = step.isInert && messages_.empty();
        afterEdit(step.edit);
        expectState(step, isIdle ? before : isForward ? step.after : step.before, before.lists);
    }

    void expectState(const Step& step, State expected, const Lists& listsBefore)
    {
        State now = stateOf(node_);
        if (!step.isTopology)
            expected.lists = isMeshBuiltAnew(step.edit) ? now.lists : listsBefore;
        if (!step.isTopology)
            expected.lists.saved = listsBefore.saved;
        if (!isExact_)
            takeWithinTolerance(now, expected);
        hasRounded_ = hasRounded_ || step.edit.kind == RandomEdits::Scale;
        if (hasRounded_)
            takeWithinRounding(now, expected);
        RC_ASSERT(differences(now, expected) == "");
    }

    /// As the application does when it hears of a change.
    void renewLists()
    {
        kyUVUtils::updateBorderEdges(core(), node_, UVSet0);
        kyUVUtils::makeIndexForAllVertices(core(), node_);
    }

    void checkMesh()
    {
        const bool isShell = core()->getGeometryType() == osg::Geometry::ShellType;
        isFollowed_ = isFollowed_ && haveOneFanAVertex(node_);
        if (isExact_ && isShell && isFollowed_ && isAsBuilt(node_))
            steps::expectSameAsFreshBuild(node_);
    }

    void checkLists() const
    {
        for (unsigned int i = 1; i <= 8; ++i)
            for (const unsigned int id : listOf(node_, i).values())
                RC_ASSERT(id < vertexCount());
    }

    osg::RefPtr<osg::Node> node_;
    const osg::RefPtr<osg::Node> coreless_{osg::Node::create()}; ///< is passed over
    Random random_;
    RandomEdits edits_{node_, random_};
    std::string messages_;
    bool isExact_;
    bool hasRounded_ = false;                    ///< a scale was undone or redone
    bool isFollowed_ = haveOneFanAVertex(node_); ///< at each step so far
    kyUndoStack& stack_ = kyUndoStack::get(0);
    std::vector<Step> steps_;
    std::size_t done_ = 0;
};

void runHistory(const osg::RefPtr<osg::Node>& node, std::uint32_t seed, bool isExact)
{
    RC_PRE(!trianglesOf(node).empty());
    History history(node, seed, isExact);
    for (int i = 0; i < 16; ++i)
        history.move();
}

RC_GTEST_PROP(CommandSequences, OnShellsLeadBackBitForBit, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    runHistory(randomManifoldShell(seed), seed, true);
}

RC_GTEST_PROP(CommandSequences, OnShellsOfAnyKindLeadBackWithinTheTolerancesOfASew, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    ShellTraits traits;
    traits.nearlyEqual = false; // of those, a fresh mesh welds other chains than one kept up
    runHistory(randomShell(seed, UVSet0, traits), seed, false);
}

RC_GTEST_PROP(CommandSequences, OnPlainGeometriesLeadBack, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    ShellTraits traits;
    traits.nearlyEqual = false;
    runHistory(randomPlain(seed, UVSet0, traits), seed, false);
    traits.extraSheets = traits.degenerate = false;
    runHistory(randomPlain(seed, UVSet0, traits), seed, true);
    const WithoutCompactMesh noMesh;
    runHistory(randomPlain(seed, UVSet0), seed, false);
}

TEST(CommandSequences, LeaveNoContainerBehind)
{
    const auto countAfterRun = [] {
        for (const std::uint32_t seed : {1U, 2U, 3U})
            runHistory(randomManifoldShell(seed), seed, true);
        return osg::FieldContainerFactory::the()->getContainerCount();
    };
    const std::size_t count = countAfterRun(); // with the prototypes of all classes
    EXPECT_EQ(countAfterRun(), count);
}

} // namespace
