#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"

#include <vector>

/// The selected islands of a geometry, which are what three of its lists hold: IslandTriangles,
/// IslandVertices and IslandSeeds of kyUVTypes::TempIndexList. Selecting replaces all three.
///
/// Islands, and the order of triangles and vertices, are those of kyUVUtils::findUVIslands. A
/// geometry without triangles, and one that is not valid, has no islands: the lists are empty then,
/// but for seeds that were given, and not null.
class kyUVSelection
{
public:
    kyUVSelection() = delete;

    static void selectAllIslands(osg::GeometryPtr geometry, osg::NodePtr node,
                                 kyUVTypes::UVSet set);
    /// Selects the islands that the seeds lie in. They become the list of seeds as they stand; none
    /// deselects all islands. A seed that lies in no island selects the first one.
    static void selectIslandsBySeeds(osg::GeometryPtr geometry, osg::NodePtr node,
                                     kyUVTypes::UVSet set, const std::vector<unsigned int>& seeds);
    /// Selects the islands that some vertices lie in. The lowest vertex of each island becomes its
    /// seed. Null, or a count of 0, deselects all islands.
    ///
    /// ids  [count]  may lie in one of the lists
    static void selectIslandsByVSet(osg::GeometryPtr geometry, osg::NodePtr node,
                                    kyUVTypes::UVSet set, const unsigned int* ids,
                                    unsigned int count);
    /// The three lists become null.
    static void deselectAllIslands(osg::GeometryPtr geometry, osg::NodePtr node);

    /// The seed of each island, which is its lowest vertex id.
    ///
    /// islandVertCounts  [island]  how many entries of islandVerts it has
    /// islandVerts       the vertices of the islands, one island after the other
    ///
    /// Returns [island]; 0xFFFFFFFF for an island without vertices. Linear.
    static std::vector<unsigned int>
    getIslandsSeeds(const std::vector<unsigned int>& islandVertCounts,
                    const std::vector<unsigned int>& islandVerts);

private:
    /// Null ids, or a count of 0, for all islands. The ids may lie in one of the lists.
    static void doSelectIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                kyUVTypes::UVSet set, const unsigned int* ids, unsigned int count,
                                bool idsAreSeeds);
};
