#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/RandomNodes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <map>
#include <optional>
#include <set>

namespace
{

/// A move by (a, b), a scale by a and b, or a turn by sine a and cosine b.
struct Transform
{
    decltype(&kyUVUtils::rotateUV) operation; ///< null for a move
    Vec2f center;
    float a, b;

    void apply(const osg::GeometryPtr& geometry, const osg::NodePtr& node, const Ids& ids) const
    {
        const auto count = static_cast<unsigned int>(ids.size());
        if (operation)
            operation(geometry, node, slot, ids.data(), count, center, a, b);
        else
            kyUVUtils::translateUV(geometry, node, slot, ids.data(), count, a, b);
    }
    Vec2f newUV(const Vec2f& uv) const
    {
        const Vec2f d = uv - center;
        if (!operation)
            return uv + Vec2f(a, b);
        return center + (operation == &kyUVUtils::scaleUV
                             ? Vec2f(d.x() * a, d.y() * b)
                             : Vec2f(d.dot(Vec2f(b, -a)), d.dot(Vec2f(a, b))));
    }
};

using Slots = std::map<osg::GeometryPtr, UVs>;

Slots slotsOf(const osg::NodePtr& node)
{
    Slots slots;
    for (const osg::GeometryPtr& geometry : geometriesOf(node))
        slots[geometry] = kyUVUtils::getUVValuesLocal(geometry, slot);
    return slots;
}

/// A vertex of the mesh changes once, and all surface vertices that it stands for become that;
/// without a mesh a vertex changes as often as it is named.
Slots expectedSlots(const osg::NodePtr& node, const Ids& ids, const Transform& transform)
{
    Slots slots = slotsOf(node);
    const CompactShellMesh* mesh = CompactShellMesh::getCMesh(coreOf(node), node, slot);
    std::set<unsigned int> changed;
    for (const unsigned int id : ids) {
        UVs& uvs = slots[coreOf(node)];
        if (!mesh && id < uvs.size())
            uvs[id] = transform.newUV(uvs[id]);
        else if (mesh && id < mesh->getVertFToC().size())
            changed.insert(mesh->mapVertFToC(id));
    }
    for (const ActiveSurface& surface : activeSurfaces(node))
        for (unsigned int i = 0; mesh && i < slots[surface.geometry].size(); ++i)
            if (const unsigned int c = mesh->mapVertFToC(surface.firstId + i); changed.contains(c))
                slots[surface.geometry][i] =
                    transform.newUV(mesh->getGeomPtr()->getTexSlot(slot)->getValue(c));
    return slots;
}

RC_GTEST_PROP(UVTransforms, ChangeEachVertexOfAMeshOnceOnAllItsSurfaces, ())
{
    const auto node = randomNode();
    std::optional<WithoutCompactMesh> plainly;
    if (*rc::gen::arbitrary<bool>())
        plainly.emplace();
    const osg::GeometryPtr core = coreOf(node);
    const Ids ids = *rc::gen::container<Ids>(rc::gen::weightedOneOf<unsigned int>(
        {{30, rc::gen::inRange(0U, 40U)}, {1, rc::gen::just(0xFFFFFFFFU)}}));
    const auto number = [] { return static_cast<float>(*rc::gen::inRange(-64, 65)) / 32; };
    const Vec2f center(number(), number());
    const float du = number();
    for (const Transform& transform :
         {Transform{nullptr, center, du, 2}, Transform{&kyUVUtils::scaleUV, center, 4, -.5F},
          Transform{&kyUVUtils::rotateUV, center, 1, 0}})
    {
        const Slots expected = expectedSlots(node, ids, transform);
        transform.apply(core, node, ids);
        RC_ASSERT(slotsOf(node) == expected);
        RC_ASSERT(plainly || !CompactShellMesh::isBuildDue(core, slot));
    }
    UVs after;
    kyUVUtils::getUVValues(core, node, slot, after);
    constexpr float largest = std::numeric_limits<float>::max();
    const bool hasUVs =
        CompactShellMesh::getCMesh(core, node, slot) || core->getTexSlot(slot) != osg::NullFC;
    Vec2f low = hasUVs ? Vec2f(largest, largest) : Vec2f(3, 4);
    Vec2f high = hasUVs ? Vec2f(-largest, -largest) : Vec2f(5, 6);
    for (const unsigned int id : ids)
        for (unsigned int axis = 0; axis < 2 && id < after.size(); ++axis) {
            low[axis] = std::min(low[axis], after[id][axis]);
            high[axis] = std::max(high[axis], after[id][axis]);
        }
    Vec2f min(3, 4); // stays without UVs
    Vec2f max(5, 6);
    kyUVUtils::getUVBoundingBox(core, node, slot, ids.data(), static_cast<unsigned int>(ids.size()),
                                min, max);
    RC_ASSERT(min == low && max == high);
}

TEST(UVTransforms, TellOfTheMeshAndThenOfTheSurfacesThatChanged)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    for (const unsigned int child : {0U, 1U})
        surfaceOf(shell, child)->setTexSlot(slot, tiny::texCoords(UVs(4)));
    const auto mesh = CompactShellMesh::getCMesh(coreOf(shell), shell, slot)->getGeomPtr();
    tiny::NoticeJournal journal;
    std::vector<tiny::NoticeJournal::Notice> expected;
    for (const osg::GeometryPtr& geometry : {mesh, surfaceOf(shell, 0), surfaceOf(shell, 1)}) {
        journal.watch(geometry);
        journal.watch(geometry->getTexSlot(slot));
        expected.push_back({geometry->getTexSlot(slot)->getId(), osg::FieldMask::all(), 1});
        expected.push_back({geometry->getId(), osg::Geometry::TexCoordsFieldMask, 1});
    }
    journal.watch(coreOf(shell));
    const Transform move{nullptr, {}, 1, 0};
    move.apply(coreOf(shell), shell, {7, 1, 4}); // at the border
    EXPECT_EQ(std::exchange(journal.notices, {}), expected);
    move.apply(coreOf(shell), shell, {0}); // on the first surface only
    expected.resize(4);
    EXPECT_EQ(std::exchange(journal.notices, {}), expected);
    move.apply(osg::NullFC, shell, {0});
    move.apply(coreOf(shell), osg::NullFC, {0});
    move.apply(coreOf(shell), shell, {});
    move.apply(coreOf(shell), shell, {99});
    kyUVUtils::translateUV(coreOf(shell), shell, slot, nullptr, 1, 1, 1);
    EXPECT_TRUE(journal.notices.empty());
}

} // namespace
