#include "UVUtils/compactmesh/CompactShellMesh.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/compactmesh/MeshTables.h"
#include "UVUtils/model/kyUVUtils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace
{

using Table = MeshTables;
using Base = osg::GeometryBase;

TEST(MeshRegistry, GivesAMeshOnlyWhereOneIsUsed)
{
    const osg::RefPtr<osg::Node> plain(nodeOf(quad()));
    const osg::RefPtr<osg::Node> shell(shellOf({quad()}));
    EXPECT_EQ(CompactShellMesh::getCMesh(osg::NullFC, plain, kyUVTypes::UVSet0), nullptr);
    EXPECT_EQ(CompactShellMesh::getCMesh(coreOf(plain), osg::NullFC, kyUVTypes::UVSet0), nullptr);
    EXPECT_NE(meshOf(plain), nullptr);
    EXPECT_EQ(meshOf(plain), meshOf(plain));
    const WithoutCompactMesh scope;
    EXPECT_EQ(meshOf(plain), nullptr);
    EXPECT_NE(meshOf(shell), nullptr);
    EXPECT_FALSE(kyUVUtils::useCMesh(osg::NullFC));
}

TEST(MeshRegistry, BuildsAMeshWithoutUVsForANumberThatIsNoSlot)
{
    const osg::RefPtr<osg::Node> plain(nodeOf(quad()));
    for (const int number : {8, -1}) {
        const CompactShellMesh* mesh = meshOf(plain, static_cast<kyUVTypes::UVSet>(number));
        ASSERT_NE(mesh, nullptr);
        EXPECT_EQ(mesh->getGeomPtr()->getPositions()->getSize(), 4U);
        for (unsigned slot = 0; slot < 8; ++slot)
            EXPECT_FALSE(mesh->getGeomPtr()->getTexSlot(slot));
    }
}

TEST(MeshRegistry, BuildsAgainOnlyWhenNeeded)
{
    const osg::RefPtr<osg::Node> shell(shellOf({quad(), quad()}));
    CompactShellMesh* mesh = meshOf(shell);
    tiny::NoticeJournal builds;
    builds.watch(mesh->getGeomPtr());
    const auto buildsAgain = [&](kyUVTypes::UVSet slot) {
        builds.notices.clear();
        EXPECT_EQ(meshOf(shell, slot), mesh);
        EXPECT_EQ(mesh->getSlot(), slot);
        return !builds.notices.empty();
    };
    EXPECT_FALSE(buildsAgain(kyUVTypes::UVSet0));
    EXPECT_TRUE(buildsAgain(kyUVTypes::UVSet1));
    EXPECT_TRUE(buildsAgain(kyUVTypes::UVSet0)) << "though nothing changed";
    mesh->touch();
    EXPECT_TRUE(buildsAgain(kyUVTypes::UVSet0));

    // Each build adds the surfaces once more to what is watched, and the owner never again.
    EXPECT_EQ(Table::watchers(surfaceOf(shell, 1)->getId()), 4U);
    EXPECT_EQ(Table::watchers(coreOf(shell)->getId()), 1U);
    shell->subChild(shell->getChild(0));
    EXPECT_FALSE(Table::isClean(*mesh)) << "a surface was destroyed";
    EXPECT_EQ(Table::vertFToC(*meshOf(shell)).size(), 4U);
}

TEST(MeshRegistry, HearsOfTheFieldsThatAMeshIsMadeOf)
{
    const osg::RefPtr<osg::Node> shell(shellOf({quad()}));
    struct Case
    {
        const char* name;
        osg::FieldMask mask;
        bool isDirty;
        bool dropsLists;
    };
    const Case cases[] = {
        {"positions", Base::PositionsFieldMask, true, false},
        {"types", Base::TypesFieldMask, true, false},
        {"lengths", Base::LengthsFieldMask, true, false},
        {"indices", Base::IndicesFieldMask, true, true},
        {"geometry type", Base::GeometryTypeFieldMask, true, true},
        {"index mapping", Base::IndexMappingFieldMask, true, false},
        {"the slot", Base::TexCoords3FieldMask, true, false},
        {"another slot", Base::TexCoords2FieldMask, false, false},
        {"normals", Base::NormalsFieldMask, false, false},
        {"everything", osg::FieldMask::all(), true, true},
    };
    for (const Case& c : cases)
        for (const bool enabled : {true, false})
            for (const osg::GeometryPtr& changed : {surfaceOf(shell, 0), coreOf(shell)}) {
                SCOPED_TRACE(c.name);
                CompactShellMesh* mesh = meshOf(shell, kyUVTypes::UVSet3);
                osg::GeoTmpIndexEditInterface list(changed, 2);
                list.make();
                mesh->enableGeomChangeCB(enabled);
                osg::notifyChanged(changed, c.mask);
                mesh->enableGeomChangeCB(true);
                EXPECT_EQ(!Table::isClean(*mesh), c.isDirty && enabled);
                EXPECT_EQ(list.isNull(), c.dropsLists && enabled);
                mesh->touch();
            }
}

/// A mesh that is being watched for the destruction of its geometry.
struct Watched
{
    explicit Watched(const osg::NodePtr& node) : geometryId(meshOf(node)->getGeomPtr()->getId()) {}
    bool isAlive() const
    {
        return bool(osg::FieldContainerFactory::the()->getContainer(geometryId));
    }
    unsigned geometryId;
};

TEST(MeshRegistry, LetsAMeshGoWhenAllThatHoldItAreGoneInEveryOrder)
{
    std::array<unsigned, 3> order{0, 1, 2}; // the shell's core and two surfaces
    do {
        osg::RefPtr<osg::Node> shell(shellOf({quad(), quad()}));
        const Watched mesh(shell);
        std::vector<osg::RefPtr<osg::Geometry>> cores;
        Ids ids;
        for (const auto core : {coreOf(shell), surfaceOf(shell, 0), surfaceOf(shell, 1)}) {
            cores.emplace_back(core);
            ids.push_back(core->getId());
        }
        shell = osg::NullFC;
        for (unsigned step = 0; step < 3; ++step) {
            EXPECT_TRUE(mesh.isAlive());
            cores[order[step]] = osg::NullFC;
            EXPECT_EQ(Table::watchers(ids[order[step]]), 0U);
            EXPECT_EQ(Table::isOwner(ids[0]), bool(cores[0]));
        }
        EXPECT_FALSE(mesh.isAlive());
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(MeshRegistry, NeverGivesOutAMeshThatOnlyItsSurfacesHold)
{
    const osg::RefPtr<osg::Geometry> surface(quad());
    osg::RefPtr<osg::Node> first(shellOf({surface}));
    const Watched old(first);
    first = osg::NullFC;
    EXPECT_TRUE(old.isAlive());
    const osg::RefPtr<osg::Node> second(shellOf({surface}));
    const Watched fresh(second);
    EXPECT_NE(fresh.geometryId, old.geometryId);
    EXPECT_EQ(Table::watchers(surface->getId()), 2U);
    osg::notifyChanged(surface, Base::PositionsFieldMask);
    EXPECT_TRUE(Table::isClean(*meshOf(second)));
}

TEST(MeshRegistry, DropsAMeshWithItsPlainGeometry)
{
    osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const Watched mesh(node);
    EXPECT_EQ(Table::watchers(coreOf(node)->getId()), 2U) << "as owner, and as what was read";
    node = osg::NullFC;
    EXPECT_FALSE(mesh.isAlive());
}

} // namespace
