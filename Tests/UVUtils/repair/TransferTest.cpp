#include "OpenSGExt/NodeUtils.h"
#include "UVUtils/Captures.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/repair/kyTransferGeoProperties.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <tbb/global_control.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

namespace
{

using Transfer = kyTransferGeoProperties;
constexpr auto set = kyUVTypes::UVSet0;

struct Mesh
{
    std::vector<osg::Pnt3f> positions;
    std::vector<osg::Vec3f> normals;
    UVs uvs; ///< empty for a target
    Ids triangles;

    osg::RefPtr<osg::Node> node() const
    {
        const osg::GeometryPtr geometry = geometryOf(positions, triangles);
        geometry->setNormals(osg::GeoNormals3f::create());
        for (const osg::Vec3f& normal : normals)
            geometry->getNormals()->addValue(normal);
        if (!uvs.empty())
            geometry->setTexSlot(0, tiny::texCoords(uvs));
        return osg::RefPtr<osg::Node>(nodeOf(geometry));
    }
};

struct Grid
{
    unsigned columns;
    unsigned rows;
    float jitter = 0; ///< of vertices, but for those at the seams, in cells
    float shift = 0;  ///< of where columns and rows begin, in cells
    float height = 0; ///< above the surface
};

/// A torus, open along two circles, with both sides in exactly the same place. UVs go from 0 to 0.9
/// once around it and once around its tube.
Mesh torus(const Grid& grid)
{
    const auto columns = static_cast<float>(grid.columns);
    const auto rows = static_cast<float>(grid.rows);
    constexpr float turn = 2 * std::numbers::pi_v<float>;
    Mesh mesh;
    Random random(7);
    for (unsigned j = 0; j <= grid.rows; ++j)
        for (unsigned i = 0; i <= grid.columns; ++i) {
            const bool isInner = i % grid.columns != 0 && j % grid.rows != 0;
            const auto off = [&] {
                const float jitter = static_cast<float>(random.below(200)) / 100.F - 1;
                return grid.shift + (isInner ? grid.jitter * jitter : 0.F);
            };
            const float x = off();
            const float y = off();
            const float around = turn * (static_cast<float>(i % grid.columns) + x) / columns;
            const float up = turn * (static_cast<float>(j % grid.rows) + y) / rows;
            const osg::Vec3f out(std::cos(around), std::sin(around), 0);
            const osg::Vec3f normal = out * std::cos(up) + osg::Vec3f(0, 0, std::sin(up));
            mesh.positions.emplace_back(out + normal * (0.4F + grid.height));
            mesh.normals.push_back(normal);
            mesh.uvs.emplace_back(0.9F * (static_cast<float>(i) + x) / columns,
                                  0.9F * (static_cast<float>(j) + y) / rows);
        }
    for (unsigned j = 0; j < grid.rows; ++j)
        for (unsigned i = 0; i < grid.columns; ++i) {
            const unsigned a = j * (grid.columns + 1) + i;
            const unsigned d = a + grid.columns + 1;
            mesh.triangles.insert(mesh.triangles.end(), {a, a + 1, d + 1, a, d + 1, d});
        }
    return mesh;
}

/// One vertex for all in one place, or one for each corner, and no UVs.
Mesh targetOf(const Mesh& mesh, bool isWelded = true)
{
    Mesh target;
    std::map<std::array<float, 3>, unsigned> idOf;
    for (const unsigned vertex : mesh.triangles) {
        const osg::Pnt3f& p = mesh.positions[vertex];
        if (!isWelded)
            idOf.clear();
        const auto [entry, isNew] =
            idOf.try_emplace({p.x(), p.y(), p.z()}, target.positions.size());
        if (isNew) {
            target.positions.push_back(p);
            target.normals.push_back(mesh.normals[vertex]);
        }
        target.triangles.push_back(entry->second);
    }
    return target;
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
    const Mesh mesh = torus({12, 8, 0.2F});
    const auto source = mesh.node();
    for (const auto method : allMethods) {
        SCOPED_TRACE(method);
        const auto target = Mesh{mesh.positions, mesh.normals, {}, mesh.triangles}.node();
        ASSERT_TRUE(transfer(source, target, method));
        const UVs uvs = uvsOf(target);
        ASSERT_EQ(uvs.size(), mesh.uvs.size());
        for (std::size_t i = 0; i < uvs.size(); ++i)
            ASSERT_LE((uvs[i] - mesh.uvs[i]).length(), 1e-5F) << "vertex " << i;
    }
}

/// A triangle that lies across a seam has all its corners on the side of its middle, where those
/// beyond stay at the seam.
TEST(Transfer, SeamsStaySeamsOnOtherTessellations)
{
    struct Case
    {
        Grid grid;
        float tolerance; ///< of UVs
        Transfer::SampleMethod method = Transfer::ClosestBVH;
    };
    const auto source = torus({40, 24}).node();
    for (const Case& c : {Case{{90, 50}, 4e-3F},
                          {{13, 9}, 4e-3F},
                          {{40, 24, 0.3F}, 4e-3F, Transfer::ClosestOctree},
                          {{19, 7, 0.3F, 0, 0.1F}, 4e-3F, Transfer::AlongNormal},
                          {{40, 24, 0.3F, 0, -0.1F}, 4e-3F, Transfer::AlongNormal},
                          {{40, 24, 0, 0.4F}, 0.03F},
                          {{71, 40, 0.3F, 0.5F}, 0.02F},
                          {{17, 9, 0.2F, 0.3F}, 0.1F}})
    {
        SCOPED_TRACE(testing::Message() << c.grid.columns << " columns, height " << c.grid.height);
        const Mesh parted = torus(c.grid);
        const auto target = targetOf(parted).node();
        ASSERT_TRUE(transfer(source, target, c.method));
        const UVs uvs = uvsOf(target);
        EXPECT_TRUE(c.grid.shift > 0 || uvs.size() == parted.uvs.size());
        EXPECT_EQ(uvs.size(), coreOf(target)->getPositions()->getSize());
        const Ids triangles = trianglesOf(target);
        float turns[2] = {0, 0}; // of the triangle
        for (std::size_t i = 0; i < triangles.size(); ++i)
            for (const unsigned k : {0U, 1U}) {
                const float error = uvs[triangles[i]][k] - parted.uvs[parted.triangles[i]][k];
                if (i % 3 == 0)
                    turns[k] = std::round(error / 0.9F);
                ASSERT_NEAR(error, 0.9F * turns[k], c.tolerance) << "corner " << i;
            }
    }
}

/// Two quads side by side, (u, v) = (x, y), with their own vertices where they meet.
Mesh twoQuads(float uOfSecond = 0)
{
    Mesh mesh;
    for (const float x : {0.F, 1.F})
        for (const auto& [dx, y] : {std::pair{0.F, 0.F}, {1.F, 0.F}, {1.F, 1.F}, {0.F, 1.F}}) {
            mesh.positions.emplace_back(x + dx, y, 0.F);
            mesh.normals.emplace_back(0, 0, 1);
            mesh.uvs.emplace_back(x + dx + (x > 0 ? uOfSecond : 0.F), y);
        }
    mesh.triangles = {0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7};
    return mesh;
}

/// The target has ids of 16 bits, a vertex of no triangle behind the six, and UVs of (7, 7).
TEST(Transfer, CloseSamplesOfAVertexAreOne)
{
    const WithoutCompactMesh without;
    struct Case
    {
        float gap;
        std::size_t vertices;
        float lower; ///< u of the vertex (1, 0), with a corner on the left and two on the right
    };
    for (const Case& c : {Case{0.0005F, 7, 1 + 0.0005F * 2 / 3},
                          {0.00102F, 9, 1},
                          {0.002F, 9, 1},
                          {-0.002F, 9, 0.998F}})
    {
        Mesh welded = targetOf(twoQuads());
        welded.positions.emplace_back();
        welded.uvs.assign(7, osg::Vec2f(7, 7));
        const auto target = welded.node();
        const auto narrow = osg::GeoIndicesUI16::create();
        narrow->setValues(welded.triangles);
        coreOf(target)->setIndices(narrow);
        ASSERT_TRUE(transfer(twoQuads(c.gap).node(), target));
        const UVs uvs = uvsOf(target);
        ASSERT_EQ(uvs.size(), c.vertices) << c.gap;
        EXPECT_NEAR(uvs[1].x(), c.lower, 1e-5F) << c.gap;
        EXPECT_EQ(uvs[6], osg::Vec2f(7, 7));
        if (c.vertices == 9) {
            EXPECT_EQ(coreOf(target)->getPositions()->getValue(7), osg::Pnt3f(1, 0, 0));
            EXPECT_NEAR(uvs[7].x(), std::max(1.F, 1 + c.gap), 1e-5F) << c.gap;
        }
    }
}

/// Onto itself, as the first surface has the UVs of all three, and is found first.
TEST(Transfer, AShellIsSewnWhereItsUVsMeet)
{
    const auto source = twoQuads(0.5F).node();
    const osg::RefPtr<osg::Node> shell(
        shellOf({coreOf(source), coreOf(targetOf(twoQuads(), false).node()),
                 coreOf(targetOf(twoQuads()).node())}));
    EXPECT_TRUE(transfer(shell, shell));
    for (const unsigned i : {0U, 1U, 2U}) // of 8, of 12 and of 6
        EXPECT_EQ(surfaceOf(shell, i)->getPositions()->getSize(), 8);
}

/// With the words of each outcome, and the progress that it tells of.
TEST(Transfer, RefusalsSayWhy)
{
    LogCapture log;
    OutputCapture output;
    const auto said = [&] {
        std::string text = output.take();
        for (const std::string& line : std::exchange(log.lines, {}))
            text += line + '\n';
        return text;
    };
    using Amounts = std::vector<float>;
    Amounts told;
    Transfer run(osg::NullFC);
    run.setProgressCallback([&](float amount) { told.push_back(amount); });
    const auto source = twoQuads().node();
    const auto other = twoQuads().node();
    const osg::RefPtr<osg::Node> bare(nodeOf(quad()));
    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    const osg::RefPtr<osg::Node> empty(osg::Node::create());
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    const osg::RefPtr<osg::Node> odd(shellOf({quad()}));
    surfaceOf(odd, 0)->setNormals(osg::GeoNormals3f::create());
    odd->addChild(osg::Node::create());
    NodeUtils::setName(odd, "odd");
    EXPECT_FALSE(run.transferUVs(other, set)); // no source so far
    const std::string init = "errorNR: Transfer Geo Properties Init: Source ";
    const std::string uvs = "error: Transfer Geo Properties (UVs): ";
    for (const auto& [node, words] : {std::pair{osg::NodePtr(osg::NullFC), init + "NullFC\n"},
                                      {broken.get(), init + "not valid\n"},
                                      {empty.get(), init + "not valid\n"},
                                      {bare.get(), uvs + "Source geometry has no UVs.\n"},
                                      {shell.get(), uvs + "Source geometry has no UVs.\n"}})
    {
        EXPECT_FALSE(run.initFromSource(node, set));
        EXPECT_EQ(said(), words);
        EXPECT_FALSE(run.transferUVs(other, set));
    }
    EXPECT_EQ(std::exchange(told, {}), Amounts(6, 1));
    ASSERT_TRUE(run.initFromSource(source, set));
    for (const auto& [node, words, amounts] :
         {std::tuple{osg::NodePtr(osg::NullFC), std::string("target NullFC\n"), Amounts{1}},
          {broken.get(), "<noname>: target not valid\n", {1, 0}},
          {empty.get(), "", {1}},
          {bare.get(), uvs + "Target geometry has no vertex normals.\n", {1, 0}},
          {odd.get(),
           "ERROR transfer UVs for slot 0 to surface 0 of Shell odd\n"
           "<noname>: target not valid\n"
           "ERROR transfer UVs for slot 0 to surface 1 of Shell odd\n" +
               uvs + "Target geometry has no vertex normals.\n",
           {0.5F, 0.5F, 0}}})
    {
        EXPECT_FALSE(run.transferUVs(node, set));
        EXPECT_EQ(said(), words);
        EXPECT_EQ(std::exchange(told, {}), amounts);
    }
    const WithoutCompactMesh without;
    ASSERT_TRUE(run.initFromSource(source, set));
    EXPECT_FALSE(run.transferUVs(source, set)); // onto the geometry that is read
    EXPECT_TRUE(run.transferUVs(other, set));
    EXPECT_EQ(told, (Amounts{1, 0, 1, 0}));
    EXPECT_EQ(said(), "");
    const auto points = twoQuads().node();
    coreOf(points)->setIndices(osg::GeoIndicesUI32::create());
    ASSERT_TRUE(run.initFromSource(points, set));
    EXPECT_EQ(said(), "warning: BVH failed to initialize. Fall back to octree.\n");
    EXPECT_TRUE(run.transferUVs(other, set));
    EXPECT_EQ(uvsOf(other), UVs(8)); // nothing is found
    told.clear();
    run.setProgressCallback([&](float amount) { throw told.emplace_back(amount); });
    EXPECT_THROW(run.transferUVs(other, set), float);
    EXPECT_EQ(told, (Amounts{1, 1}));
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

osg::RefPtr<osg::Node> randomNode(std::uint32_t seed, kyUVTypes::UVSet slot, bool isShell,
                                  bool badNumbers)
{
    const ShellTraits traits{.badNumbers = badNumbers};
    return isShell ? randomShell(seed, slot, traits) : randomPlain(seed, slot, traits);
}

RC_GTEST_PROP(Transfer, RandomPairsGiveTheSameBitsOnEachRun,
              (std::uint32_t seed, bool fromShell, bool toShell, bool badNumbers))
{
    const OutputCapture output;
    const LogCapture log;
    const auto source = randomNode(seed, set, fromShell, badNumbers);
    Transfer run(source);
    run.setSampleMethod(allMethods[seed % 4]);
    if (!run.initFromSource(source, set))
        return;
    std::vector<unsigned> bits[2];
    for (const unsigned threads : {1U, 2U}) {
        const tbb::global_control control(tbb::global_control::max_allowed_parallelism, threads);
        // The same surface, or another one.
        const auto target =
            randomNode(seed + (seed / 4) % 2, kyUVTypes::UVSet2, toShell, seed % 3 == 0);
        for (const osg::GeometryPtr& geometry : geometriesOf(target))
            if (seed % 5 == 0) {
                geometry->setNormals(osg::GeoNormals3f::create());
                geometry->getNormals()->addValue(osg::Vec3f(0, 0, 1));
            }
        run.transferUVs(target, set);
        bits[threads - 1] = bitsOf(target);
    }
    RC_ASSERT(bits[0] == bits[1]);
    RC_ASSERT(badNumbers || std::ranges::none_of(bits[0], [](unsigned number) {
                  return std::isnan(std::bit_cast<float>(number));
              }));
    // Onto itself, where splits part the surfaces from the mesh that they are read through.
    run.transferUVs(source, set);
    kyUVUtils::sewAllIslands(coreOf(source), source, set, false, true, nullptr);
    RC_ASSERT(run.initFromSource(source, set));
}

} // namespace
