#include "UVUtils/editing/kyUVSelection.h"

#include "OpenSG/CoreAs.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace
{

using Ids = std::vector<unsigned int>;

void fillList(const osg::GeometryPtr& geometry, kyUVTypes::TempIndexList number, unsigned int type,
              const Ids& ids)
{
    osg::GeoTmpIndexEditInterface list(geometry, number);
    list.setType(type);
    list.assign(ids);
    list.commit();
}

} // namespace

void kyUVSelection::selectAllIslands(osg::GeometryPtr geometry, osg::NodePtr node,
                                     kyUVTypes::UVSet set)
{
    doSelectIslands(geometry, node, set, nullptr, 0, false);
}

void kyUVSelection::selectIslandsBySeeds(osg::GeometryPtr geometry, osg::NodePtr node,
                                         kyUVTypes::UVSet set, const Ids& seeds)
{
    if (seeds.empty())
        deselectAllIslands(geometry, node);
    else
        doSelectIslands(geometry, node, set, seeds.data(), static_cast<unsigned int>(seeds.size()),
                        true);
}

void kyUVSelection::selectIslandsByVSet(osg::GeometryPtr geometry, osg::NodePtr node,
                                        kyUVTypes::UVSet set, const unsigned int* ids,
                                        unsigned int count)
{
    if (!ids || count == 0)
        deselectAllIslands(geometry, node);
    else
        doSelectIslands(geometry, node, set, ids, count, false);
}

void kyUVSelection::deselectAllIslands(osg::GeometryPtr geometry, osg::NodePtr /*node*/)
{
    for (const auto list :
         {kyUVTypes::IslandTriangles, kyUVTypes::IslandVertices, kyUVTypes::IslandSeeds})
        osg::GeoTmpIndexEditInterface(geometry, list).setNull();
}

void kyUVSelection::doSelectIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                    kyUVTypes::UVSet set, const unsigned int* ids,
                                    unsigned int count, bool idsAreSeeds)
{
    const Ids given = ids ? Ids(ids, ids + count) : Ids(); // the lists are written below
    Ids triangles;
    Ids triangleCounts;
    Ids vertices;
    Ids vertexCounts;
    kyUVUtils::findUVIslands(geometry, node, set, given.data(), count, false, triangles,
                             triangleCounts, vertices, vertexCounts);
    fillList(geometry, kyUVTypes::IslandTriangles, osg::GeoPrimitive::Triangles, triangles);
    fillList(geometry, kyUVTypes::IslandVertices, osg::GeoPrimitive::Points, vertices);
    fillList(geometry, kyUVTypes::IslandSeeds, osg::GeoPrimitive::Points,
             idsAreSeeds && !given.empty() ? given : getIslandsSeeds(vertexCounts, vertices));
}

void kyUVUtils::restoreIslandSelection(const osg::NodePtr& node, kyUVTypes::UVSet uvSet)
{
    const auto geometry = osg::coreAs<osg::Geometry>(node);
    const osg::GeoTmpIndexEditInterface vertices(geometry, kyUVTypes::IslandVertices);
    if (!vertices.isNull())
        kyUVSelection::selectIslandsByVSet(geometry, node, uvSet, vertices.getData(),
                                           vertices.getSize());
}

std::vector<unsigned int>
kyUVSelection::getIslandsSeeds(const std::vector<unsigned int>& islandVertCounts,
                               const std::vector<unsigned int>& islandVerts)
{
    constexpr unsigned int absent = 0xFFFFFFFFU;
    std::vector<unsigned int> seeds;
    seeds.reserve(islandVertCounts.size());
    std::span<const unsigned int> rest(islandVerts);
    for (const unsigned int count : islandVertCounts) {
        const auto island = rest.first(std::min<std::size_t>(count, rest.size()));
        rest = rest.subspan(island.size());
        seeds.push_back(island.empty() ? absent : *std::min_element(island.begin(), island.end()));
    }
    return seeds;
}

std::vector<unsigned int> kyUVUtils::getAllIslandSeeds(const osg::GeometryPtr& geometry,
                                                       const osg::NodePtr& node,
                                                       kyUVTypes::UVSet uvSet)
{
    Ids triangles;
    Ids triangleCounts;
    Ids vertices;
    Ids vertexCounts;
    findUVIslands(geometry, node, uvSet, nullptr, 0, false, triangles, triangleCounts, vertices,
                  vertexCounts);
    return kyUVSelection::getIslandsSeeds(vertexCounts, vertices);
}
