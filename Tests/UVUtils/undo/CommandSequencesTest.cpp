// Random histories of cuts, sews and UV edits on the undo stack, walked back and forth.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/TopologySteps.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"
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

struct SurfaceState
{
    std::vector<float> merged; ///< positions, normals, other UVs: what a sew compares
    UVs uvs;
    Ids indices;
    std::string indexClass;
    std::vector<UVConstraintData> constraints;
    bool operator==(const SurfaceState&) const = default;
};

/// The temporary lists. What is made from the mesh is compared by what it names: which of several
/// welded vertices stands there, and in which order, depends on how the mesh came to be.
struct Lists
{
    std::vector<Ids> saved; ///< seeds, vertices, edges, and the vertices of these
    std::set<Ids> triangles, vertices, borders;
    bool operator==(const Lists&) const = default;
};

/// What an undo has to bring back.
struct State
{
    std::vector<SurfaceState> surfaces;
    UVs uvs;
    Ids welded; ///< for each vertex the lowest of those that the mesh has made one with it
    std::size_t islandCount = 0;
    Lists lists;
};

template <class Property>
void appendNumbers(std::vector<float>& numbers, const Property& property)
{
    if (property)
        for (const auto& value : property->getValues())
            for (unsigned int k = 0; k < std::decay_t<decltype(value)>::Size; ++k)
                numbers.push_back(value[k]);
}

SurfaceState stateOf(const osg::GeometryPtr& surface)
{
    SurfaceState state;
    appendNumbers(state.merged, surface->getPositions());
    appendNumbers(state.merged, surface->getNormals());
    appendNumbers(state.merged, osg::dcast<osg::GeoTexCoords2f>(surface->getTexSlot(1)));
    state.uvs = kyUVUtils::getUVValuesLocal(surface, UVSet0);
    state.indices = surface->getIndices()->getValues();
    state.indexClass = surface->getIndices()->getType().getName();
    state.constraints = getUVConstraints(surface);
    return state;
}

osg::GeoTmpIndexEditInterface listOf(const osg::NodePtr& node, unsigned int number)
{
    return {coreOf(node), number};
}

/// Of the vertices that the mesh has welded, the lowest.
Ids lowestOfWelded(const osg::NodePtr& node)
{
    Ids lowest = kyUVUtils::getAllVertices(coreOf(node), node);
    const CompactMeshScope scope(coreOf(node), node, UVSet0);
    std::map<unsigned int, unsigned int> lowestOf;
    if (scope.getMesh())
        for (unsigned int& id : lowest)
            id = lowestOf.emplace(scope.getMesh()->mapVertFToC(id), id).first->second;
    return lowest;
}

/// The vertices, edges or triangles in a list, each with its lowest vertex first.
std::set<Ids> namedBy(const osg::GeoTmpIndexEditInterface& list, unsigned int size,
                      const Ids& lowest)
{
    std::set<Ids> named;
    for (unsigned int i = 0; i + size <= list.getSize(); i += size) {
        Ids one;
        for (const unsigned int id : list.values().subspan(i, size))
            one.push_back(lowest.at(id));
        std::sort(one.begin(), one.end());
        named.insert(one);
    }
    return named;
}

Lists listsOf(const osg::NodePtr& node, const Ids& lowest)
{
    Lists lists;
    for (const unsigned int number : {3U, 4U, 6U, 7U}) {
        const osg::GeoTmpIndexEditInterface list = listOf(node, number);
        lists.saved.emplace_back(list.values().begin(), list.values().end());
    }
    lists.triangles = namedBy(listOf(node, kyUVTypes::IslandTriangles), 3, lowest);
    lists.vertices = namedBy(listOf(node, kyUVTypes::IslandVertices), 1, lowest);
    lists.borders = namedBy(listOf(node, kyUVTypes::BorderEdges), 2, lowest);
    return lists;
}

State stateOf(const osg::NodePtr& node)
{
    State state;
    for (const ActiveSurface& surface : activeSurfaces(node))
        state.surfaces.push_back(stateOf(surface.geometry));
    kyUVUtils::getUVValues(coreOf(node), node, UVSet0, state.uvs);
    state.islandCount = kyUVUtils::getAllIslandSeeds(coreOf(node), node, UVSet0).size();
    state.welded = lowestOfWelded(node);
    state.lists = listsOf(node, state.welded);
    return state;
}

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
        if (edge.first == edge.second)
            continue; // stands on surfaces without triangles
        const auto ends = std::minmax(placeOfVertex.at(edge.first), placeOfVertex.at(edge.second));
        if (ends.first != ends.second)
            places.insert(ends);
    }
    return places;
}

/// Where two states differ, for the reader of a failure.
std::string differences(const State& a, const State& b)
{
    std::string text;
    const auto note = [&](bool isEqual, const std::string& what) {
        text += isEqual ? "" : what + ' ';
    };
    note(a.uvs == b.uvs, "uvs");
    note(a.welded == b.welded, "mesh");
    note(a.islandCount == b.islandCount, "islands");
    note(a.lists.saved == b.lists.saved, "selections");
    note(a.lists.triangles == b.lists.triangles && a.lists.vertices == b.lists.vertices,
         "selected islands");
    note(a.lists.borders == b.lists.borders, "borders");
    note(a.surfaces.size() == b.surfaces.size(), "surfaces");
    for (std::size_t i = 0; i < std::min(a.surfaces.size(), b.surfaces.size()); ++i) {
        const std::string surface = "surface" + std::to_string(i) + '.';
        note(a.surfaces[i].merged == b.surfaces[i].merged, surface + "properties");
        note(a.surfaces[i].uvs == b.surfaces[i].uvs, surface + "uvs");
        note(a.surfaces[i].indices == b.surfaces[i].indices, surface + "indices");
        note(a.surfaces[i].indexClass == b.surfaces[i].indexClass, surface + "class");
        note(a.surfaces[i].constraints == b.surfaces[i].constraints, surface + "constraints");
    }
    return text;
}

/// Sets all that a sew may take from a neighbour within its tolerances to what it should be.
void takeWithinTolerance(State& state, const State& expected)
{
    RC_ASSERT(state.surfaces.size() == expected.surfaces.size());
    for (std::size_t i = 0; i < state.surfaces.size(); ++i) {
        std::vector<float>& numbers = state.surfaces[i].merged;
        const std::vector<float>& wanted = expected.surfaces[i].merged;
        RC_ASSERT(numbers.size() == wanted.size());
        for (std::size_t k = 0; k < numbers.size(); ++k)
            RC_ASSERT(std::abs(numbers[k] - wanted[k]) < 1e-5F);
        numbers = wanted;
    }
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
    for (const ActiveSurface& surface : activeSurfaces(node)) {
        std::map<unsigned int, std::vector<Edge>> cornersAt; // the other two vertices
        const Ids ids = surface.geometry->getIndices()->getValues();
        for (std::size_t i = 0; i < ids.size(); i += 3)
            for (std::size_t k = 0; k < 3; ++k)
                cornersAt[ids[i + k]].emplace_back(ids[i + (k + 1) % 3], ids[i + (k + 2) % 3]);
        for (auto& [vertex, corners] : cornersAt) {
            std::set<unsigned int> reached{corners.front().first};
            for (bool grows = true; grows;)
                grows = std::erase_if(corners, [&](const Edge& corner) {
                            const bool isJoined =
                                reached.contains(corner.first) || reached.contains(corner.second);
                            if (isJoined)
                                reached.insert({corner.first, corner.second});
                            return isJoined;
                        }) > 0;
            if (!corners.empty())
                return false;
        }
    }
    return true;
}

/// A UV edit as a step of the stack.
class EditUVs : public kyUndoCommand
{
public:
    EditUVs(osg::NodePtr node, UVs before, UVs after)
        : kyUndoCommand({"Edit", ""}), node_(node), before_(std::move(before)),
          after_(std::move(after))
    {}
    void redo() override { kyUVUtils::setUVValues(coreOf(node_), node_, UVSet0, after_); }
    void undo() override { kyUVUtils::setUVValues(coreOf(node_), node_, UVSet0, before_); }

private:
    osg::NodePtr node_;
    UVs before_, after_;
};

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
            const Ids edges = randomEdges(surface.geometry->getIndices()->getValues(), 6);
            setUVConstraints(surface.geometry, {{edges, Ids(edges.begin(), edges.begin() + 2)}});
        }
        renewLists();
        stack_.clear();
        editUVs();
        stack_.clear();
        steps_.clear();
        done_ = 0;
    }
    ~History() { stack_.clear(); }
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    void move()
    {
        const unsigned int choice = random_.below(8);
        if (choice < 2)
            change(true);
        else if (choice < 4)
            change(false);
        else if (choice == 4)
            editUVs();
        else if (choice < 7)
            walk(false);
        else
            walk(true);
        checkLists();
    }

private:
    struct Step
    {
        State before, after;
        bool isTopology = true;
        bool isInert = false; ///< left no record
    };

    osg::GeometryPtr core() const { return coreOf(node_); }
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
        const auto horizontal = heldPlaces(node_, kyUVTypes::Horizontal);
        const auto vertical = heldPlaces(node_, kyUVTypes::Vertical);
        if (isCut)
            kyUVUtils::cutAlongEdgesUndo({osg::NullFC, node_, coreless_}, UVSet0);
        else
            kyUVUtils::sewAlongEdgesUndo({coreless_, node_}, UVSet0);
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

    /// To numbers of which no two are equal, so that nothing comes together by chance.
    void editUVs()
    {
        Step step;
        step.before = stateOf(node_);
        step.isTopology = false;
        UVs uvs(step.before.uvs.size());
        for (osg::Vec2f& uv : uvs)
            uv = osg::Vec2f(static_cast<float>(random_.below(1U << 20U)),
                            static_cast<float>(random_.below(1U << 20U))) *
                 1e-6F;
        stack_.add(new EditUVs(node_, step.before.uvs, uvs));
        step.after = stateOf(node_);
        keep(step);
    }

    void keep(const Step& step)
    {
        steps_.resize(done_);
        steps_.push_back(step);
        ++done_;
        RC_ASSERT(stack_.count() == static_cast<int>(steps_.size()));
    }

    /// Undo or redo.
    void walk(bool isForward)
    {
        const State before = stateOf(node_);
        if (!(isForward ? stack_.redo() : stack_.undo())) {
            RC_ASSERT(done_ == (isForward ? steps_.size() : 0));
            return;
        }
        const Step& step = isForward ? steps_[done_++] : steps_[--done_];
        checkMesh();
        renewLists();
        State expected = isForward ? step.after : step.before;
        if (!step.isTopology)
            expected.lists = before.lists;
        else if (step.isInert)
            expected = before;
        State now = stateOf(node_);
        if (!isExact_)
            takeWithinTolerance(now, expected);
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
        const std::size_t vertexCount = kyUVUtils::getAllVertices(core(), node_).size();
        for (unsigned int i = 1; i <= 8; ++i)
            for (const unsigned int id : listOf(node_, i).values())
                RC_ASSERT(id < vertexCount);
    }

    osg::RefPtr<osg::Node> node_;
    const osg::RefPtr<osg::Node> coreless_{osg::Node::create()}; ///< is passed over
    Random random_;
    bool isExact_;
    bool isFollowed_ = haveOneFanAVertex(node_); ///< at each step so far
    kyUndoStack& stack_ = kyUndoStack::get(0);
    std::vector<Step> steps_;
    std::size_t done_ = 0;
};

void runHistory(const osg::RefPtr<osg::Node>& node, std::uint32_t seed, bool isExact)
{
    RC_PRE(!trianglesOf(node).empty());
    History history(node, seed, isExact);
    for (int i = 0; i < 12; ++i)
        history.move();
}

RC_GTEST_PROP(SeamSequences, OnShellsLeadBackBitForBit, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    runHistory(randomManifoldShell(seed), seed, true);
}

RC_GTEST_PROP(SeamSequences, OnShellsOfAnyKindLeadBackWithinTheTolerancesOfASew, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    ShellTraits traits;
    traits.nearlyEqual = false; // of those, a fresh mesh welds other chains than one kept up
    runHistory(randomShell(seed, UVSet0, traits), seed, false);
}

RC_GTEST_PROP(SeamSequences, OnPlainGeometriesLeadBack, ())
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

} // namespace
