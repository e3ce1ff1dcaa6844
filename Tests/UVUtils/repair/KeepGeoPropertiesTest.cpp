#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/Group.h"
#include "OpenSG/SimpleMaterial.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/repair/kyKeepGeoProperties.h"
#include "Utils/kyStackedProgress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace
{

using Keep = kyKeepGeoProperties;

/// Makes a geometry a unit square from x on, in n by n quads and without UVs.
void tessellate(osg::Geometry& geometry, float x, unsigned n)
{
    std::vector<osg::Pnt3f> positions;
    Ids indices;
    const auto cells = static_cast<float>(n);
    for (unsigned j = 0; j <= n; ++j)
        for (unsigned i = 0; i <= n; ++i)
            positions.emplace_back(x + static_cast<float>(i) / cells, static_cast<float>(j) / cells,
                                   0.F);
    for (unsigned a = 0; a < n * (n + 1); ++a)
        if (a % (n + 1) < n)
            indices.insert(indices.end(), {a, a + 1, a + n + 2, a, a + n + 2, a + n + 1});
    geometry.setPositions(tiny::positions(positions));
    geometry.setIndices(tiny::indices(indices));
    geometry.setNormals(osg::GeoNormals3f::create());
    for (std::size_t i = 0; i < positions.size(); ++i)
        geometry.getNormals()->addValue(osg::Vec3f(0, 0, 1));
    for (const unsigned slot : {0U, 1U})
        geometry.setTexSlot(slot, osg::NullFC);
}

UVs wantedUVs(const osg::Geometry& geometry, unsigned slot)
{
    UVs uvs;
    for (const osg::Pnt3f& p : geometry.getPositions()->getValues())
        uvs.emplace_back(p.x() / 8, p.y() + static_cast<float>(slot));
    return uvs;
}

bool hasWantedUVs(const osg::Geometry& geometry, unsigned slot)
{
    const auto near = [](const osg::Vec2f& a, const osg::Vec2f& b) {
        return std::abs(a.x() - b.x()) < 1e-5F && std::abs(a.y() - b.y()) < 1e-5F;
    };
    const osg::GeoTexCoordsPtr uvs = geometry.getTexSlot(slot);
    return uvs && std::ranges::equal(uvs->getValues(), wantedUVs(geometry, slot), near);
}

/// The cores, then the nodes of a scene. The first two are the surfaces of the shell.
using Name = unsigned;
constexpr Name left = 0, right = 1, single = 2, slotOneOnly = 3, noSurface = 4;
constexpr Name instanceOfSingle = 5, shell = 6, root = 7;
using Names = std::vector<Name>;

struct Scene
{
    Scene()
    {
        for (Name core = left; core <= noSurface; ++core) {
            geometries.emplace_back(core == noSurface ? osg::Geometry::create()
                                                      : osg::SurfaceBase::create());
            tessellate(*geometries[core], static_cast<float>(core), 2);
            if (core != slotOneOnly)
                geometries[core]->setTexSlot(0, tiny::texCoords(wantedUVs(*geometries[core], 0)));
            if (core == right || core == slotOneOnly)
                geometries[core]->setTexSlot(1, tiny::texCoords(wantedUVs(*geometries[core], 1)));
        }
        const osg::NodePtr shellNode = shellOf({geometries[left], geometries[right]});
        nodes = {shellNode->getChild(0), shellNode->getChild(1)};
        for (const Name core : {single, slotOneOnly, noSurface, single})
            nodes.push_back(nodeOf(geometries[core]));
        nodes.push_back(shellNode);
        rootNode = nodeOf(osg::Group::create());
        for (Name node = single; node <= shell; ++node)
            rootNode->addChild(nodes[node]);
        nodes.push_back(rootNode);
    }

    void regenerate()
    {
        for (unsigned i = 0; i < geometries.size(); ++i)
            tessellate(*geometries[i], static_cast<float>(i), 3);
    }

    /// The cores that have in a slot what they had before.
    Names keepersOf(unsigned slot) const
    {
        Names keepers;
        for (Name core = left; core <= noSurface; ++core)
            if (hasWantedUVs(*geometries[core], slot))
                keepers.push_back(core);
        return keepers;
    }

    osg::RefPtr<osg::Node> rootNode;
    std::vector<osg::NodePtr> nodes;
    std::vector<osg::RefPtr<osg::Geometry>> geometries;
};

/// What the progress display shows while it lives: the percent that are done, or -1 at an end.
struct ShownPercents
{
    ShownPercents()
    {
        kyStackedProgress::setObserver([this](const kyStackedProgress& progress) {
            EXPECT_EQ(progress.name(), "Transfer UVs...");
            percents.push_back(
                progress.running() ? static_cast<int>(std::lround(progress.fraction() * 100)) : -1);
        });
    }
    ~ShownPercents() { kyStackedProgress::setObserver(nullptr); }
    std::vector<int> percents;
};

constexpr const char* noSlot = "error: Transfer Geo Properties (UVs): Source geometry has no UVs.";

TEST(KeepGeoProperties, SurfacesOfOneShellAndInstancesOfOneCoreAreCarriedOverTogether)
{
    const Names both{left, right};
    const std::vector<int> oneWithoutSlotOne{0, 100, 100, 100, -1};
    const std::vector<int> oneShell{0, 50, 100, 100, 100, 100, 100, -1};
    const struct
    {
        const char* name;
        Names added;
        Names keepers;
        std::vector<int> percents; ///< each target adds its part once for each slot
    } rows[] = {
        {"a surface", {single}, {single}, oneWithoutSlotOne},
        {"two instances", {instanceOfSingle, single}, {single}, oneWithoutSlotOne},
        {"a shell", {shell}, both, oneShell},
        {"one surface of it", {right}, {right}, {0, 100, 100, 100, 100, -1}},
        {"one after the other", both, both, oneShell},
        {"a surface, then the shell", {left, shell}, both, oneShell},
        {"the shell first", {shell, left, right}, both, oneShell},
        {"all", {root}, {left, right, single}, {0, 25, 50, 50, 75, 100, 100, 100, 100, 100, -1}},
        {"nothing to keep", {slotOneOnly, noSurface}, {}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Scene scene;
        const LogCapture log;
        Keep keep(Keep::KeepUVs);
        for (const Name name : row.added)
            keep.addNodes({osg::NullFC, scene.nodes[name]});
        scene.regenerate();
        const ShownPercents shown;
        keep.transfer();
        EXPECT_EQ(scene.keepersOf(0), row.keepers);
        EXPECT_EQ(shown.percents, row.percents);
        const bool hasRight = std::ranges::count(row.keepers, right) > 0;
        EXPECT_EQ(scene.keepersOf(1), hasRight ? Names{right} : Names());
        EXPECT_EQ(scene.geometries[single]->getTexSlot(1), osg::NullFC);
        EXPECT_EQ(std::ranges::count(log.lines, noSlot), std::ranges::count(row.keepers, single));
    }
}

TEST(KeepGeoProperties, HoldsWhatItKeepsUntilTheLastCopyGoes)
{
    const auto livingCount = [] { return osg::FieldContainerFactory::the()->getContainerCount(); };
    const std::size_t atStart = livingCount();
    {
        Scene scene;
        const LogCapture log;
        const osg::RefPtr<osg::Material> material(osg::SimpleMaterial::create());
        scene.geometries[single]->setMaterial(material);
        const std::size_t before = livingCount();
        for (const unsigned flags : {0U, 2U}) {
            Keep keep(flags);
            keep.addNodes(scene.nodes);
            keep.transfer();
            EXPECT_EQ(livingCount(), before) << "flags " << flags;
        }
        kyNodeUtils::setScenegraphRoot(scene.nodes[instanceOfSingle]);
        auto keep = std::make_unique<Keep>(Keep::KeepUVs);
        keep->addNodes({scene.nodes[single]});
        EXPECT_EQ(livingCount() - before, 6U) << "a node and a core with four properties";
        kyNodeUtils::setScenegraphRoot(scene.nodes[shell]);
        Keep outside(Keep::KeepUVs);
        outside.addNodes({scene.nodes[single]});
        EXPECT_EQ(livingCount() - before, 6U) << "no instance stands below the root";
        kyNodeUtils::setScenegraphRoot(osg::NullFC);

        Keep copy(*keep);
        keep.reset();
        EXPECT_EQ(material->getRefCount(), 3);
        scene.regenerate();
        scene.rootNode = osg::NullFC;
        copy.transfer();
        EXPECT_EQ(scene.keepersOf(0), Names{single}) << "though its node is gone";
    }
    EXPECT_EQ(livingCount(), atStart);
}

} // namespace
