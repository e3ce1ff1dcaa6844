#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/TempIndexList.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <optional>

namespace
{

/// The lists of triangles, vertices and seeds; nothing for a null one.
using Lists = std::array<std::optional<Ids>, 3>;

Lists listsOf(const osg::NodePtr& node)
{
    Lists lists;
    for (unsigned int i = 0; i < 3; ++i) {
        const osg::GeoTmpIndexEditInterface list(coreOf(node), i + 1);
        if (!list.isNull())
            lists[i].emplace(list.values().begin(), list.values().end());
    }
    return lists;
}

TEST(UVSelection, HoldsTheIslandsOfSeedsOrVerticesUntilDeselected)
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(nodeOf(quadsApart(3)));
    const osg::GeometryPtr core = coreOf(node);
    const Lists last{Ids{8, 9, 10, 8, 10, 11}, Ids{8, 9, 10, 11}, Ids{10, 9}};
    kyUVSelection::selectIslandsBySeeds(core, node, slot, {10, 9});
    EXPECT_EQ(listsOf(node), last) << "the island once, the seeds as they were given";
    for (const auto& [list, type] : {std::pair(1U, 4U), std::pair(2U, 0U), std::pair(3U, 0U)})
        EXPECT_EQ(osg::GeoTmpIndexEditInterface(core, list).getType(), type);

    kyUVUtils::restoreIslandSelection(node, slot);
    EXPECT_EQ(listsOf(node), (Lists{last[0], last[1], Ids{8}})) << "its lowest vertex";
    osg::GeoTmpIndexEditInterface(core, kyUVTypes::IslandVertices).make();
    kyUVUtils::restoreIslandSelection(node, slot);
    EXPECT_EQ(listsOf(node), Lists()) << "an empty list deselects, and lists are null then";
    kyUVUtils::restoreIslandSelection(node, slot);
    kyUVUtils::restoreIslandSelection(nodeOf(osg::NullFC), slot);

    kyUVSelection::selectAllIslands(core, node, slot);
    EXPECT_EQ(listsOf(node)[2], (Ids{0, 4, 8}));
    kyUVSelection::selectIslandsBySeeds(core, node, slot, {});
    EXPECT_EQ(listsOf(node), Lists());

    core->setIndices(tiny::indices({}));
    kyUVSelection::selectAllIslands(core, node, slot);
    EXPECT_EQ(listsOf(node), (Lists{Ids{}, Ids{}, Ids{}})) << "made, and empty";
}

RC_GTEST_PROP(UVSelection, OfAnyVerticesStandsWhenRestored, ())
{
    const auto node = randomNode();
    const osg::GeometryPtr core = coreOf(node);
    const Ids all = kyUVUtils::getAllVertices(core, node);
    RC_PRE(!all.empty());
    const Ids given = *rc::gen::nonEmpty(rc::gen::container<Ids>(rc::gen::elementOf(all)));
    kyUVSelection::selectIslandsBySeeds(core, node, slot, given);
    const Lists bySeeds = listsOf(node);
    RC_ASSERT(bySeeds[2] == given);
    kyUVSelection::selectIslandsByVSet(core, node, slot, given.data(),
                                       static_cast<unsigned int>(given.size()));
    const Lists byVertices = listsOf(node);
    RC_ASSERT(byVertices[0] == bySeeds[0] && byVertices[1] == bySeeds[1]);
    RC_PRE(!bySeeds[0]->empty()); // nothing that is selected is restored as no selection
    kyUVUtils::restoreIslandSelection(node, slot);
    RC_ASSERT(listsOf(node) == byVertices);
}

} // namespace
