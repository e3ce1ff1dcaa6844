#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/Group.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/repair/kyKeepGeoProperties.h"
#include "Utils/kyStackedProgress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

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
        uvs.push_back(slot == 0 ? osg::Vec2f(p.x() / 8, p.y() / 2) : osg::Vec2f(p.y(), p.x()));
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

/// A root over a shell of two surfaces side by side, a plain surface and an instance of it, one
/// with UVs in slot 1 only, and a geometry that is no surface.
struct Scene
{
    enum Name
    {
        Left,
        Right,
        Single,
        SlotOneOnly,
        NoSurface,
        Instance,
        Shell,
        Root
    };

    Scene()
    {
        for (unsigned i = Left; i <= NoSurface; ++i) {
            const osg::GeometryPtr geometry =
                i == NoSurface ? osg::Geometry::create() : osg::SurfaceBase::create();
            geometries.push_back(osg::RefPtr<osg::Geometry>(geometry));
            tessellate(*geometry, static_cast<float>(i), 2);
            if (i != SlotOneOnly)
                geometry->setTexSlot(0, tiny::texCoords(wantedUVs(*geometry, 0)));
            if (i == Right || i == SlotOneOnly)
                geometry->setTexSlot(1, tiny::texCoords(wantedUVs(*geometry, 1)));
        }
        const osg::NodePtr shell = shellOf({geometries[Left], geometries[Right]});
        nodes = {shell->getChild(0), shell->getChild(1)};
        for (const unsigned core : {Single, SlotOneOnly, NoSurface, Single})
            nodes.push_back(nodeOf(geometries[core]));
        nodes.push_back(shell);
        root = nodeOf(osg::Group::create());
        for (unsigned i = Single; i < nodes.size(); ++i)
            root->addChild(nodes[i]);
        nodes.push_back(root);
    }

    void regenerate()
    {
        for (unsigned i = 0; i < geometries.size(); ++i)
            tessellate(*geometries[i], static_cast<float>(i), 3);
    }

    /// The geometries that have in a slot what they had before.
    std::vector<Name> keepersOf(unsigned slot) const
    {
        std::vector<Name> keepers;
        for (unsigned i = 0; i < geometries.size(); ++i)
            if (hasWantedUVs(*geometries[i], slot))
                keepers.push_back(static_cast<Name>(i));
        return keepers;
    }

    osg::RefPtr<osg::Node> root;
    std::vector<osg::NodePtr> nodes; ///< by Name
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

TEST(KeepGeoProperties, SurfacesOfOneShellAndInstancesOfOneCoreAreCarriedOverTogether)
{
    using Names = std::vector<Scene::Name>;
    const Names both{Scene::Left, Scene::Right};
    const struct
    {
        const char* name;
        Names added;
        Names keepers;
        std::vector<int> percents; ///< each target adds its part once for each slot
    } rows[] = {
        {"a surface", {Scene::Single}, {Scene::Single}, {0, 100, 100, 100, -1}},
        {"and an instance", {Scene::Instance, Scene::Single}, {Scene::Single}, {0, 100, 100, 100, -1}},
        {"a shell", {Scene::Shell}, both, {0, 50, 100, 100, 100, 100, 100, -1}},
        {"one surface of it", {Scene::Right}, {Scene::Right}, {0, 100, 100, 100, 100, -1}},
        {"one after the other", both, both, {0, 50, 100, 100, 100, 100, 100, -1}},
        {"then the shell",
         {Scene::Left, Scene::Shell},
         both,
         {0, 50, 100, 100, 100, 100, 100, -1}},
        {"the shell first",
         {Scene::Shell, Scene::Left, Scene::Right},
         both,
         {0, 50, 100, 100, 100, 100, 100, -1}},
        {"all",
         {Scene::Root},
         {Scene::Left, Scene::Right, Scene::Single},
         {0, 50, 50, 100, 100, 100, 100, 100, 100, -1}},
        {"nothing to keep", {Scene::SlotOneOnly, Scene::NoSurface}, {}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Scene scene;
        const LogCapture log;
        Keep keep(Keep::KeepUVs);
        for (const Scene::Name name : row.added)
            keep.addNodes({osg::NullFC, scene.nodes[name]});
        scene.regenerate();
        const ShownPercents shown;
        keep.transfer();
        EXPECT_EQ(scene.keepersOf(0), row.keepers);
        EXPECT_EQ(shown.percents, row.percents);
    }
}

} // namespace
