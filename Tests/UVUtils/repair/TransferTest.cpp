#include "OpenSGExt/NodeUtils.h"
#include "UVUtils/Captures.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/repair/kyTransferGeoProperties.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <tbb/global_control.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <numbers>
#include <tuple>
#include <utility>

namespace
{

using Transfer = kyTransferGeoProperties;
constexpr auto set = kyUVTypes::UVSet0;

/// A surface in patches, each over the unit square of (s, t), with UVs of its own.
struct Surface
{
    unsigned patches;
    osg::Pnt3f (*place)(unsigned patch, float s, float t);
    osg::Vec2f (*uv)(unsigned patch, float s, float t);
};

/// A sphere without its poles, open along a meridian in UVs.
const Surface ball{1,
                   [](unsigned, float s, float t) {
                       const float around = 2 * std::numbers::pi_v<float> * s;
                       const float up = (t - 0.5F) * 2.4F;
                       return osg::Pnt3f(std::cos(up) * std::cos(around),
                                         std::cos(up) * std::sin(around), std::sin(up));
                   },
                   [](unsigned, float s, float t) { return osg::Vec2f(s, t); }};

/// A cube of size 2 about the origin, each face an island.
const Surface cube{6,
                   [](unsigned face, float s, float t) {
                       const float side = face % 2 == 0 ? 1.F : -1.F;
                       osg::Pnt3f p;
                       p[face / 2] = side;
                       p[(face / 2 + 1) % 3] = side * (2 * s - 1);
                       p[(face / 2 + 2) % 3] = 2 * t - 1;
                       return p;
                   },
                   [](unsigned face, float s, float t) {
                       return osg::Vec2f(static_cast<float>(face) + 0.9F * s, 0.9F * t);
                   }};

/// The vertices of a surface, with where they lie in it, as normals those of a sphere.
struct Mesh
{
    std::vector<osg::Pnt3f> positions;
    UVs uvs; ///< empty for a target
    Ids triangles;

    osg::RefPtr<osg::Node> node() const
    {
        const osg::GeometryPtr geometry = geometryOf(positions, triangles);
        const auto normals = osg::GeoNormals3f::create();
        for (const osg::Pnt3f& p : positions)
            normals->addValue(p.subZero().normalized());
        geometry->setNormals(normals);
        if (!uvs.empty())
            geometry->setTexSlot(0, tiny::texCoords(uvs));
        return osg::RefPtr<osg::Node>(nodeOf(geometry));
    }
};

struct Tessellation
{
    unsigned columns;
    unsigned rows;
    float jitter = 0; ///< of vertices inside a patch, in cells
    float shift = 0;  ///< of the start of the columns, in cells; for a closed patch
};

/// Each patch has vertices of its own.
Mesh meshOf(const Surface& surface, const Tessellation& grid)
{
    Mesh mesh;
    Random random(7);
    const auto off = [&] {
        return grid.jitter * (static_cast<float>(random.below(200)) / 100.F - 1);
    };
    for (unsigned patch = 0; patch < surface.patches; ++patch) {
        const auto first = static_cast<unsigned>(mesh.positions.size());
        for (unsigned j = 0; j <= grid.rows; ++j)
            for (unsigned i = 0; i <= grid.columns; ++i) {
                const bool isInner = i % grid.columns != 0 && j % grid.rows != 0;
                const float s = (static_cast<float>(i) + grid.shift + (isInner ? off() : 0.F)) /
                                static_cast<float>(grid.columns);
                const float t = (static_cast<float>(j) + (isInner ? off() : 0.F)) /
                                static_cast<float>(grid.rows);
                mesh.positions.push_back(surface.place(patch, s, t));
                mesh.uvs.push_back(surface.uv(patch, s, t));
            }
        for (unsigned j = 0; j < grid.rows; ++j)
            for (unsigned i = 0; i < grid.columns; ++i) {
                const unsigned a = first + j * (grid.columns + 1) + i;
                const unsigned d = a + grid.columns + 1;
                mesh.triangles.insert(mesh.triangles.end(), {a, a + 1, d + 1, a, d + 1, d});
            }
    }
    return mesh;
}

/// One vertex for all in one place, and no UVs.
Mesh weldedTarget(const Mesh& mesh)
{
    Mesh welded;
    std::map<std::tuple<long, long, long>, unsigned> idOf;
    for (const unsigned vertex : mesh.triangles) {
        const osg::Pnt3f p = mesh.positions[vertex];
        const auto [entry, isNew] =
            idOf.emplace(std::tuple(std::lround(p.x() * 1e4F), std::lround(p.y() * 1e4F),
                                    std::lround(p.z() * 1e4F)),
                         static_cast<unsigned>(welded.positions.size()));
        if (isNew)
            welded.positions.push_back(p);
        welded.triangles.push_back(entry->second);
    }
    return welded;
}

UVs uvsOf(const osg::NodePtr& node)
{
    return uvSlot(coreOf(node), set)->getValues();
}

bool transfer(const osg::NodePtr& source, const osg::NodePtr& target,
              Transfer::SampleMethod method = Transfer::ClosestBVH)
{
    Transfer run(source);
    run.setSampleMethod(method);
    return run.initFromSource(source, set) && run.transferUVs(target, set);
}

const Transfer::SampleMethod allMethods[] = {Transfer::AlongNormal, Transfer::ClosestOctree,
                                             Transfer::ClosestBVH,
                                             static_cast<Transfer::SampleMethod>(3)};

TEST(Transfer, AMeshOntoItselfStaysAsItIs)
{
    for (const Surface& surface : {ball, cube}) {
        const Mesh mesh = meshOf(surface, {12, 8, 0.2F});
        const auto source = mesh.node();
        for (const auto method : allMethods) {
            if (surface.patches == 1 && method == Transfer::AlongNormal)
                continue; // a ray from an open end may miss it
            SCOPED_TRACE(method);
            Mesh bare = mesh;
            bare.uvs.clear();
            const auto target = bare.node();
            ASSERT_TRUE(transfer(source, target, method));
            const UVs uvs = uvsOf(target);
            ASSERT_EQ(uvs.size(), mesh.uvs.size());
            for (std::size_t i = 0; i < uvs.size(); ++i)
                ASSERT_LE((uvs[i] - mesh.uvs[i]).length(), 1e-5F) << "vertex " << i;
        }
    }
}

TEST(Transfer, IslandsOfACubeStayApart)
{
    struct Case
    {
        Tessellation grid;
        float size = 1; ///< of the target; its normals go through the middle of the cube
        Transfer::SampleMethod method = Transfer::ClosestBVH;
    };
    const auto source = meshOf(cube, {9, 9}).node();
    for (const Case& c : {Case{{20, 23}},
                          {{4, 3}},
                          {{9, 9, 0.3F}},
                          {{1, 1}},
                          {{13, 7, 0.3F}},
                          {{4, 3}, 1.05F, Transfer::AlongNormal},
                          {{13, 7, 0.3F}, 0.95F, Transfer::AlongNormal}})
    {
        SCOPED_TRACE(testing::Message() << c.grid.columns << " columns, size " << c.size);
        const Mesh parted = meshOf(cube, c.grid);
        Mesh welded = weldedTarget(parted);
        for (osg::Pnt3f& p : welded.positions)
            p = osg::Pnt3f(p.subZero() * c.size);
        const auto target = welded.node();
        ASSERT_TRUE(transfer(source, target, c.method));
        const UVs uvs = uvsOf(target);
        EXPECT_EQ(uvs.size(), parted.uvs.size());
        EXPECT_EQ(uvs.size(), coreOf(target)->getPositions()->getSize());
        const Ids triangles = trianglesOf(target);
        for (std::size_t i = 0; i < triangles.size(); ++i)
            ASSERT_LE((uvs[triangles[i]] - parted.uvs[parted.triangles[i]]).length(), 5e-4F)
                << "corner " << i;
    }
}

/// The meridian, as far as a triangle goes beyond it, is where its corners stay.
TEST(Transfer, NoTriangleStretchesAcrossTheSeamOfABall)
{
    const auto source = meshOf(ball, {40, 24}).node();
    for (const Tessellation& grid : {Tessellation{90, 50},
                                     {13, 9},
                                     {40, 24, 0.3F},
                                     {40, 24, 0, 0.4F},
                                     {71, 40, 0.3F, 0.5F},
                                     {17, 9, 0.2F, 0.3F}})
    {
        SCOPED_TRACE(grid.columns);
        const Mesh parted = meshOf(ball, grid);
        for (const auto method : {Transfer::ClosestOctree, Transfer::ClosestBVH}) {
            const auto target = weldedTarget(parted).node();
            ASSERT_TRUE(transfer(source, target, method));
            const UVs uvs = uvsOf(target);
            const Ids triangles = trianglesOf(target);
            for (std::size_t i = 0; i < triangles.size(); ++i) {
                const std::size_t first = i / 3 * 3;
                float turns = 0; // of the triangle, as a middle near the seam may be on either side
                for (std::size_t k = first; k < first + 3; ++k)
                    turns += (parted.uvs[parted.triangles[k]].x() - uvs[triangles[k]].x()) / 3;
                osg::Vec2f expected = parted.uvs[parted.triangles[i]];
                expected[0] -= std::round(turns);
                const bool isBeyond = expected.x() < -1e-4F || expected.x() > 1 + 1e-4F;
                expected[0] = std::clamp(expected.x(), 0.F, 1.F);
                const osg::Vec2f error = uvs[triangles[i]] - expected;
                // A corner beyond the seam is drawn along the way to it.
                const float alongSeam = isBeyond ? 1.F / static_cast<float>(grid.rows) : 0.F;
                ASSERT_LE(std::abs(error.x()), 2.5e-3F + 0.1F * alongSeam) << "corner " << i;
                ASSERT_LE(std::abs(error.y()), 4e-3F + alongSeam) << "corner " << i;
            }
        }
    }
}

/// Two quads side by side, (u, v) = (x, y), with their own vertices where they meet.
Mesh twoQuads(float uOfSecond)
{
    Mesh mesh;
    for (const float x : {0.F, 1.F})
        for (const auto& [dx, y] : {std::pair{0.F, 0.F}, {1.F, 0.F}, {1.F, 1.F}, {0.F, 1.F}}) {
            mesh.positions.emplace_back(x + dx, y, 5.F);
            mesh.uvs.emplace_back(x + dx + (x > 0 ? uOfSecond : 0.F), y);
        }
    mesh.triangles = {0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7};
    return mesh;
}

TEST(Transfer, CloseSamplesOfAVertexAreOne)
{
    const WithoutCompactMesh without;
    struct Case
    {
        float gap;
        std::size_t vertices;
        float lower; ///< u of the vertex (1, 0), with a corner on the left and two on the right
    };
    for (const Case& c : {Case{0.0005F, 6, 1 + 0.0005F * 2 / 3},
                          {0.00102F, 8, 1},
                          {0.002F, 8, 1},
                          {-0.002F, 8, 0.998F}})
    {
        const auto target = weldedTarget(twoQuads(0)).node();
        coreOf(target)->setIndices(osg::GeoIndicesUI16::create());
        for (const unsigned id : weldedTarget(twoQuads(0)).triangles)
            coreOf(target)->getIndices()->addValue(id);
        ASSERT_TRUE(transfer(twoQuads(c.gap).node(), target));
        const UVs uvs = uvsOf(target);
        ASSERT_EQ(uvs.size(), c.vertices) << c.gap;
        EXPECT_NEAR(uvs[1].x(), c.lower, 1e-5F) << c.gap;
        if (c.vertices == 8) {
            EXPECT_EQ(coreOf(target)->getPositions()->getValue(6), osg::Pnt3f(1, 0, 5));
            EXPECT_NEAR(uvs[6].x(), std::max(1.F, 1 + c.gap), 1e-5F) << c.gap;
        }
    }
}

/// The target is one vertex a corner apart all over; its UVs tell where it hangs together.
TEST(Transfer, AShellIsSewnWhereItsUVsMeet)
{
    const Mesh parted = meshOf(cube, {4, 4});
    Mesh loose;
    for (const unsigned vertex : parted.triangles) {
        loose.triangles.push_back(static_cast<unsigned>(loose.positions.size()));
        loose.positions.push_back(parted.positions[vertex]);
    }
    const auto first = loose.node();
    const auto second = weldedTarget(parted).node();
    const osg::RefPtr<osg::Node> shell(shellOf({coreOf(first), quad(), coreOf(second)}));
    const OutputCapture output;
    const LogCapture log;
    EXPECT_FALSE(transfer(parted.node(), shell)); // the quad has no normals
    EXPECT_EQ(log.lines, std::vector<std::string>{"error: Transfer Geo Properties (UVs): Target "
                                                  "geometry has no vertex normals."});
    EXPECT_EQ(surfaceOf(shell, 0)->getPositions()->getSize(), parted.positions.size());
    EXPECT_EQ(surfaceOf(shell, 2)->getPositions()->getSize(), parted.positions.size());
}

TEST(Transfer, RefusalsSayWhy)
{
    const auto source = twoQuads(0).node();
    const auto other = twoQuads(0).node();
    const osg::RefPtr<osg::Node> bare(nodeOf(quad()));
    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    const osg::RefPtr<osg::Node> empty(osg::Node::create());
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    const osg::RefPtr<osg::Node> odd(shellOf({quad()}));
    odd->addChild(osg::Node::create());
    NodeUtils::setName(odd, "odd");
    LogCapture log;
    OutputCapture output;
    Transfer run(osg::NullFC);
    EXPECT_FALSE(run.transferUVs(other, set)); // no source so far
    const std::string init = "errorNR: Transfer Geo Properties Init: Source ";
    const std::string uvs = "error: Transfer Geo Properties (UVs): ";
    for (const auto& [node, words] : {std::pair{osg::NodePtr(osg::NullFC), init + "NullFC"},
                                      {broken.get(), init + "not valid"},
                                      {empty.get(), init + "not valid"},
                                      {bare.get(), uvs + "Source geometry has no UVs."},
                                      {shell.get(), uvs + "Source geometry has no UVs."}})
    {
        EXPECT_FALSE(run.initFromSource(node, set));
        EXPECT_EQ(std::exchange(log.lines, {}), std::vector<std::string>{words});
        EXPECT_FALSE(run.transferUVs(other, set));
    }
    ASSERT_TRUE(run.initFromSource(source, set));
    for (const auto& [node, words] :
         {std::pair{osg::NodePtr(osg::NullFC), "target NullFC\n"},
          {broken.get(), "<noname>: target not valid\n"},
          {empty.get(), ""},
          {odd.get(), "ERROR transfer UVs for slot 0 to surface 0 of Shell odd\n"
                      "<noname>: target not valid\n"
                      "ERROR transfer UVs for slot 0 to surface 1 of Shell odd\n"}})
    {
        EXPECT_FALSE(run.transferUVs(node, set));
        EXPECT_EQ(output.take(), words);
    }
    const WithoutCompactMesh without;
    ASSERT_TRUE(run.initFromSource(source, set));
    EXPECT_FALSE(run.transferUVs(source, set)); // onto the geometry that is read
    EXPECT_TRUE(run.transferUVs(other, set));
    EXPECT_EQ(output.take(), "");
    const auto points = twoQuads(0).node();
    coreOf(points)->setIndices(osg::GeoIndicesUI32::create());
    log.lines.clear();
    ASSERT_TRUE(run.initFromSource(points, set));
    EXPECT_EQ(log.lines,
              std::vector<std::string>{"warning: BVH failed to initialize. Fall back to octree."});
    EXPECT_TRUE(run.transferUVs(other, set));
    EXPECT_EQ(uvsOf(other), UVs(8)); // nothing is found
}

TEST(Transfer, ProgressAddsUpToOne)
{
    const auto source = twoQuads(0).node();
    const auto target = twoQuads(0).node();
    const osg::RefPtr<osg::Node> shell(shellOf({coreOf(target), coreOf(target)}));
    std::vector<float> told;
    bool isStopping = false;
    Transfer run(source);
    run.setProgressCallback([&](float amount) {
        told.push_back(amount);
        if (isStopping)
            throw 1;
    });
    EXPECT_FALSE(run.transferUVs(target, set)); // no source so far
    EXPECT_EQ(std::exchange(told, {}), std::vector<float>{1.F});
    ASSERT_TRUE(run.initFromSource(source, set));
    EXPECT_TRUE(run.transferUVs(target, set));
    EXPECT_EQ(std::exchange(told, {}), (std::vector<float>{1.F, 0.F}));
    EXPECT_TRUE(run.transferUVs(shell, set));
    EXPECT_EQ(std::exchange(told, {}), (std::vector<float>{0.5F, 0.5F, 0.F}));
    isStopping = true;
    EXPECT_THROW(run.transferUVs(target, set), int);
    EXPECT_EQ(told, (std::vector<float>{1.F, 1.F}));
}

/// All numbers of the UVs and indices of a node.
std::vector<unsigned> bitsOf(const osg::NodePtr& node)
{
    std::vector<unsigned> bits = trianglesOf(node);
    for (const osg::GeometryPtr& geometry : geometriesOf(node))
        if (const auto uvs = uvSlot(geometry, set))
            for (const osg::Vec2f& uv : uvs->getValues())
                bits.insert(bits.end(),
                            {std::bit_cast<unsigned>(uv.x()), std::bit_cast<unsigned>(uv.y())});
    return bits;
}

RC_GTEST_PROP(Transfer, RandomPairsGiveTheSameBitsOnEachRun,
              (std::uint32_t seed, bool fromShell, bool toShell, bool badNumbers))
{
    const OutputCapture output;
    const LogCapture log;
    const ShellTraits sourceTraits{.badNumbers = badNumbers};
    const auto source =
        fromShell ? randomShell(seed, set, sourceTraits) : randomPlain(seed, set, sourceTraits);
    Transfer run(source);
    run.setSampleMethod(allMethods[seed % 4]);
    if (!run.initFromSource(source, set))
        return;
    const ShellTraits targetTraits{.badNumbers = seed % 3 == 0};
    std::vector<unsigned> bits[2];
    for (const unsigned threads : {1U, 2U}) {
        const tbb::global_control control(tbb::global_control::max_allowed_parallelism, threads);
        const unsigned other = seed + (seed / 4) % 2; // the same surface, or another one
        const auto target = toShell ? randomShell(other, kyUVTypes::UVSet2, targetTraits)
                                    : randomPlain(other, kyUVTypes::UVSet2, targetTraits);
        run.transferUVs(target, set);
        bits[threads - 1] = bitsOf(target);
        for (const osg::GeometryPtr& geometry : geometriesOf(target)) {
            const auto uvs = geometry ? uvSlot(geometry, set) : osg::NullFC;
            for (unsigned i = 0; uvs && !badNumbers && i < uvs->getSize(); ++i)
                RC_ASSERT(!std::isnan(uvs->getValue(i).x() + uvs->getValue(i).y()));
        }
    }
    RC_ASSERT(bits[0] == bits[1]);
    // Onto itself, where splits part the surfaces from the mesh that they are read through.
    run.transferUVs(source, set);
    kyUVUtils::sewAllIslands(coreOf(source), source, set, false, true, nullptr);
    RC_ASSERT(run.initFromSource(source, set));
}

} // namespace
