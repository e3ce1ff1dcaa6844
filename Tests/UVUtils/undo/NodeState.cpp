#include "UVUtils/undo/NodeState.h"

#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <map>

using kyUVTypes::UVSet0;

namespace
{

template <class Property>
void appendNumbers(std::vector<float>& numbers, const Property& property)
{
    if (property)
        for (const auto& value : property->getValues())
            for (unsigned int k = 0; k < std::decay_t<decltype(value)>::Size; ++k)
                numbers.push_back(value[k]);
}

/// The lower vertex of an edge first: who writes edges back has them so.
std::vector<Edge> edgesOf(const Ids& pairs)
{
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < pairs.size(); i += 2)
        edges.emplace_back(pairs[i], pairs[i + 1]);
    return edges;
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
    for (unsigned int slot = 0; slot < 8; ++slot)
        state.hasSlot.push_back(
            kyUVUtils::getLocalUVCount(surface, static_cast<kyUVTypes::UVSet>(slot)) > 0);
    for (const UVConstraintData& data : getUVConstraints(surface))
        state.constraints = {edgesOf(data.edgesU), edgesOf(data.edgesV)};
    return state;
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

void takeWithinRounding(UVs& uvs, const UVs& expected)
{
    if (uvs.size() != expected.size())
        return;
    for (std::size_t i = 0; i < uvs.size(); ++i)
        if ((uvs[i] - expected[i]).length() <= 1e-5F * std::max(1.0F, expected[i].length()))
            uvs[i] = expected[i];
}

} // namespace

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

osg::GeoTmpIndexEditInterface listOf(const osg::NodePtr& node, unsigned int number)
{
    return {coreOf(node), number};
}

std::string differences(const State& a, const State& b)
{
    std::string text;
    const auto note = [&](bool isEqual, const std::string& what) {
        text += isEqual ? "" : what + ' ';
    };
    note(a.uvs == b.uvs, "uvs");
    note(a.welded == b.welded, "mesh");
    note(a.islandCount == b.islandCount, "islands");
    note(a.lists == b.lists, "lists");
    note(a.surfaces.size() == b.surfaces.size(), "surfaces");
    for (std::size_t i = 0; i < std::min(a.surfaces.size(), b.surfaces.size()); ++i)
        note(a.surfaces[i] == b.surfaces[i], "surface" + std::to_string(i));
    return text;
}

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

void takeWithinRounding(State& state, const State& expected)
{
    takeWithinRounding(state.uvs, expected.uvs);
    for (std::size_t i = 0; i < state.surfaces.size() && i < expected.surfaces.size(); ++i)
        takeWithinRounding(state.surfaces[i].uvs, expected.surfaces[i].uvs);
}
