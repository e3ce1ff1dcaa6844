#include "UVUtils/compactmesh/CompactShellMesh.h"

#include "UVUtils/RandomShells.h"
#include "UVUtils/compactmesh/MeshTables.h"
#include "UVUtils/compactmesh/ReferenceMesh.h"
#include "UVUtils/model/FloatOrder.h"
#include "UVUtils/model/PositionOrder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

using osg::Pnt3f;
using Table = MeshTables;

std::span<const Pnt3f> positionsOf(const osg::GeometryPtr& geometry)
{
    return osg::dcast<osg::GeoPositions3f>(geometry->getPositions())->values();
}

std::span<const Vec2f> uvsOf(const osg::GeometryPtr& geometry, unsigned slot)
{
    return osg::dcast<osg::GeoTexCoords2f>(geometry->getTexSlot(slot))->values();
}

template <class T>
bool sameBits(const T& a, const T& b)
{
    return std::equal(a.getValues(), a.getValues() + T::Size, b.getValues(),
                      [](float x, float y) { return orderedBits(x) == orderedBits(y); });
}

std::array<unsigned, 3> compactTriple(const CompactShellMesh& mesh, const Ids& faces, unsigned at)
{
    return {mesh.mapVertFToC(faces[at]), mesh.mapVertFToC(faces[at + 1]),
            mesh.mapVertFToC(faces[at + 2])};
}

void expectInverseVertexTables(const CompactShellMesh& mesh)
{
    const Ids& toCompact = Table::vertFToC(mesh);
    std::vector<char> seen(toCompact.size());
    for (unsigned c = 0; c < Table::vertCToF(mesh).size(); ++c) {
        EXPECT_FALSE(Table::vertCToF(mesh)[c].empty());
        for (const unsigned f : Table::vertCToF(mesh)[c]) {
            ASSERT_LT(f, seen.size());
            EXPECT_FALSE(std::exchange(seen[f], 1));
            EXPECT_EQ(toCompact[f], c);
        }
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), static_cast<long>(seen.size()));
    EXPECT_EQ(positionsOf(mesh.getGeomPtr()).size(), Table::vertCToF(mesh).size());
}

void expectAscending(const CompactShellMesh& mesh, const Ids& offsets,
                     const std::vector<unsigned>& places)
{
    Ids sorted = offsets;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, Table::faceOrder012(mesh)) << "each triangle once";
    const auto before = [&](unsigned a, unsigned b) {
        const auto x = compactTriple(mesh, Table::facesSortedF(mesh), a);
        const auto y = compactTriple(mesh, Table::facesSortedF(mesh), b);
        for (const unsigned place : places)
            if (x[place] != y[place])
                return x[place] < y[place];
        return false;
    };
    EXPECT_TRUE(std::is_sorted(offsets.begin(), offsets.end(), before));
}

void expectFaceInvariants(const CompactShellMesh& mesh, const Ids& triangles)
{
    const Ids& facesF = Table::facesF(mesh);
    const Ids& sorted = Table::facesSortedF(mesh);
    ASSERT_EQ(facesF.size(), triangles.size());
    for (unsigned t = 0; t < triangles.size() / 3; ++t) {
        const unsigned k = Table::faceMapping(mesh)[t];
        EXPECT_TRUE(std::equal(&facesF[3 * k], &facesF[3 * k] + 3, &triangles[3 * t]));
    }
    for (unsigned at = 0; at < facesF.size(); at += 3) {
        const auto ids = compactTriple(mesh, sorted, at);
        EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
        EXPECT_TRUE(std::is_permutation(&facesF[at], &facesF[at] + 3, &sorted[at]));
        EXPECT_EQ(Table::faceOrder012(mesh)[at / 3], at);
    }
    expectAscending(mesh, Table::faceOrder012(mesh), {0, 1, 2});
    expectAscending(mesh, Table::faceOrder02(mesh), {0, 2});
    expectAscending(mesh, Table::faceOrder12(mesh), {1, 2});
}

void expectGeometry(const CompactShellMesh& mesh)
{
    const osg::GeometryPtr geometry = mesh.getGeomPtr();
    const auto positions = positionsOf(geometry);
    EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end(), isBefore));
    const Ids indices = geometry->getIndices()->getValues();
    ASSERT_EQ(indices.size(), Table::facesF(mesh).size());
    for (unsigned i = 0; i < indices.size(); ++i)
        EXPECT_EQ(indices[i], mesh.mapVertFToC(Table::facesF(mesh)[i]));
    EXPECT_EQ(geometry->getTypes()->getValues(), Ids{osg::GeoPrimitive::Triangles});
    EXPECT_EQ(geometry->getLengths()->getValues(), Ids{static_cast<unsigned>(indices.size())});
    EXPECT_EQ(geometry->getIndexMapping(),
              (std::vector<std::uint16_t>{osg::Geometry::MapPosition | osg::Geometry::MapNormal |
                                          osg::Geometry::MapTexCoords}));
    const auto slot = static_cast<unsigned>(mesh.getSlot());
    for (unsigned other = 0; other < 8; ++other)
        EXPECT_EQ(bool(geometry->getTexSlot(other)), other == slot);
}

/// The same vertices out of the same F ids, in any order where positions are equal.
void expectLikeReference(const CompactShellMesh& mesh, const ReferenceMesh& reference)
{
    ASSERT_EQ(Table::vertCToF(mesh).size(), reference.vertices.size());
    const auto positions = positionsOf(mesh.getGeomPtr());
    const auto uvs = uvsOf(mesh.getGeomPtr(), static_cast<unsigned>(mesh.getSlot()));
    for (const ReferenceMesh::Vertex& vertex : reference.vertices) {
        const unsigned c = mesh.mapVertFToC(vertex.fIds[0]);
        EXPECT_TRUE(std::equal(vertex.fIds.begin(), vertex.fIds.end(),
                               Table::vertCToF(mesh)[c].begin(), Table::vertCToF(mesh)[c].end()));
        EXPECT_TRUE(sameBits(positions[c], vertex.position));
        EXPECT_TRUE(sameBits(uvs[c], vertex.uv));
    }
}

void expectWhole(const osg::NodePtr& node, kyUVTypes::UVSet slot)
{
    const CompactShellMesh* mesh = meshOf(node, slot);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->getSlot(), slot);
    expectInverseVertexTables(*mesh);
    expectFaceInvariants(*mesh, trianglesOf(node));
    expectGeometry(*mesh);
    expectLikeReference(*mesh, weldPlainly(node, static_cast<unsigned>(slot)));
}

const std::array<ShellTraits, 3> allTraits{ShellTraits{false, false, false, false, false},
                                           ShellTraits{},
                                           ShellTraits{true, true, true, true, true}};

RC_GTEST_PROP(Construction, KeepsItsInvariantsAndWeldsAsThePlainestWayDoes, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    const auto slot = static_cast<kyUVTypes::UVSet>(seed % 8);
    for (const ShellTraits& traits : allTraits) {
        expectWhole(randomShell(seed, slot, traits), slot);
        expectWhole(randomPlain(seed, slot, traits), slot);
    }
    RC_ASSERT_FALSE(::testing::Test::HasFailure());
}

/// A chain of n quads in a row from x on, with UVs equal to x and y plus `apart` in u.
osg::GeometryPtr row(unsigned n, float x, float y, float apart = 0)
{
    std::vector<Pnt3f> positions;
    UVs uvs;
    Ids indices;
    for (unsigned i = 0; i <= n; ++i)
        for (const float up : {0.F, 1.F}) {
            positions.emplace_back(x + static_cast<float>(i), y + up, 0.F);
            uvs.emplace_back(x + static_cast<float>(i) + apart, y + up);
        }
    for (unsigned i = 0; i < n; ++i)
        indices.insert(indices.end(), {2 * i, 2 * i + 2, 2 * i + 3, 2 * i, 2 * i + 3, 2 * i + 1});
    const osg::GeometryPtr geometry = geometryOf(positions, indices);
    geometry->setTexSlot(0, tiny::texCoords(uvs));
    return geometry;
}

/// A triangle on the edge from (0, 1, 0) to (1, 1, 0) that stands up.
osg::GeometryPtr fin()
{
    const auto geometry = geometryOf({Pnt3f(0, 1, 0), Pnt3f(1, 1, 0), Pnt3f(0, 1, 1)}, {0, 1, 2});
    geometry->setTexSlot(0, tiny::texCoords({Vec2f(0, 1), Vec2f(1, 1), Vec2f(9, 9)}));
    return geometry;
}

TEST(Construction, WeldsWhereBordersMeetAlongAnEdge)
{
    constexpr float epsilon = 1.1920929e-7F;
    struct Case
    {
        const char* name;
        std::vector<osg::GeometryPtr> surfaces;
        std::size_t vertices;
    };
    const Case cases[] = {
        {"nothing", {}, 0},
        {"a quad", {row(1, 0, 0)}, 4},
        {"a chain of three edges", {row(3, 0, 0), row(3, 0, 1)}, 12},
        {"the same with other UVs", {row(3, 0, 0), row(3, 0, 1, 0.5F)}, 16},
        {"UVs within the tolerance", {row(1, 0, 0), row(1, 0, 1, epsilon / 4)}, 6},
        {"UVs beyond the tolerance", {row(1, 0, 0), row(1, 0, 1, 4 * epsilon)}, 8},
        {"one point in common", {row(1, 0, 0), row(1, 1, 1)}, 8},
        {"three sheets on an edge", {row(1, 0, 0), row(1, 0, 1), fin()}, 11},
        {"two sheets in one place", {row(1, 0, 0), row(1, 0, 0)}, 8},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const osg::RefPtr<osg::Node> shell(shellOf(c.surfaces));
        const CompactShellMesh* mesh = meshOf(shell);
        ASSERT_NE(mesh, nullptr);
        EXPECT_EQ(Table::vertCToF(*mesh).size(), c.vertices);
        EXPECT_TRUE(Table::isClean(*mesh));
    }
}

TEST(Construction, OnlyReadsSurfaces)
{
    const osg::RefPtr<osg::Node> shell = randomShell(7);
    tiny::NoticeJournal journal;
    journal.watch(shell->getCore());
    for (const ActiveSurface& surface : activeSurfaces(shell)) {
        journal.watch(surface.geometry);
        journal.watch(surface.geometry->getPositions());
    }
    const Ids triangles = trianglesOf(shell);
    meshOf(shell);
    EXPECT_TRUE(journal.notices.empty());
    EXPECT_EQ(trianglesOf(shell), triangles);
    EXPECT_FALSE(coreOf(shell)->getPositions());
}

TEST(Construction, OfAFaultyPlainGeometryIsEmpty)
{
    for (const osg::GeometryPtr geometry : {brokenQuad(), osg::Geometry::create()}) {
        const osg::RefPtr<osg::Node> node(nodeOf(geometry));
        const CompactShellMesh* mesh = meshOf(node);
        ASSERT_NE(mesh, nullptr);
        EXPECT_EQ(positionsOf(mesh->getGeomPtr()).size(), 0U);
        EXPECT_TRUE(Table::faceOrder12(*mesh).empty());
        EXPECT_TRUE(Table::isClean(*mesh));
    }
}

} // namespace
