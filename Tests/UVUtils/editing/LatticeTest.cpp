#include "OpenSG/MathTestTools.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/LatticeDeformer.h"
#include "UVUtils/editing/LatticeGrid.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/editing/kyUVLatticeToolState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <tbb/global_control.h>

#include <cmath>
#include <limits>
#include <numeric>

namespace
{

using DoubleUV = osg::Vector<double, 2>;
const Vec2f Zero(0, 0);
const Vec2f One(1, 1);
const UVs SquarePoints{Vec2f(0, 0), Vec2f(1, 0), Vec2f(0, 1), Vec2f(1, 1)}; // 2 by 2
constexpr float Infinite = std::numeric_limits<float>::infinity();
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

/// A session with one deformer.
struct Session
{
    Session(unsigned int resU, unsigned int resV, const Vec2f& min, const Vec2f& max,
            const osg::NodePtr& node, const Ids& ids)
    {
        EXPECT_TRUE(kyUVUtils::startLatticeSession(resU, resV, min, max, id));
        deformer = kyUVUtils::getLatticeDeformer(id, coreOf(node), node, slot, ids.data(),
                                                 static_cast<unsigned int>(ids.size()));
    }
    ~Session() { EXPECT_TRUE(kyUVUtils::finishLatticeDeformer(deformer)); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    unsigned int id = 0;
    void* deformer = nullptr;
};

/// A point of a Bézier curve, by de Casteljau's construction.
DoubleUV pointOfCurve(std::vector<DoubleUV> points, double t)
{
    for (std::size_t left = points.size(); --left > 0;)
        for (std::size_t i = 0; i < left; ++i)
            points[i] = points[i] * (1 - t) + points[i + 1] * t;
    return points[0];
}

DoubleUV pointOfSurface(const UVs& points, unsigned int resU, const DoubleUV& at)
{
    std::vector<DoubleUV> column;
    for (auto row = points.begin(); row != points.end(); row += resU)
        column.push_back(pointOfCurve(std::vector<DoubleUV>(row, row + resU), at.x()));
    return pointOfCurve(column, at.y());
}

osg::RefPtr<osg::Node> cloudOf(const UVs& uvs)
{
    const osg::GeometryPtr geometry = quad();
    geometry->getPositions()->resize(static_cast<unsigned int>(uvs.size()));
    geometry->setTexSlot(slot, tiny::texCoords(uvs));
    return osg::RefPtr<osg::Node>(nodeOf(geometry));
}

Ids idsUpTo(std::size_t end)
{
    Ids ids(end);
    std::iota(ids.rbegin(), ids.rend(), 0U);
    return ids;
}

RC_GTEST_PROP(Lattice, BendsAsDeCasteljauDoesOnAnyNumberOfThreads, ())
{
    const WithoutCompactMesh plainly;
    const auto resU = *rc::gen::inRange(2U, 21U);
    const auto resV = *rc::gen::inRange(2U, 21U);
    const Vec2f min(mathtest::number(2), mathtest::number(2));
    const Vec2f max = min + Vec2f(.5F, .5F + std::abs(mathtest::number(2)));
    const DoubleUV extent = DoubleUV(max) - DoubleUV(min);
    const float amount = mathtest::number(2);
    const bool isEven = *rc::gen::inRange(0, 4) == 0; // leaves all where they are
    UVs points;
    for (unsigned int k = 0; k < resU * resV; ++k) {
        const unsigned int row = k / resU;
        points.emplace_back(min.x() + extent.x() * (k % resU) / (resU - 1),
                            min.y() + extent.y() * row / (resV - 1));
        if (!isEven)
            points.back() += Vec2f(mathtest::number(1), mathtest::number(1));
    }
    std::mt19937 random(*rc::gen::arbitrary<std::uint32_t>());
    std::uniform_real_distribution<double> parameter(-.1, 1.1);
    UVs start;
    for (unsigned int i = 0; i < 200; ++i) {
        const double s = parameter(random);
        start.emplace_back(min.x() + extent.x() * s, min.y() + extent.y() * parameter(random));
    }
    const auto node = cloudOf(start);
    const Session session(resU, resV, min, max, node, idsUpTo(start.size()));
    UVs bent[2];
    for (const unsigned int threads : {1U, 2U}) {
        const tbb::global_control control(tbb::global_control::max_allowed_parallelism, threads);
        RC_ASSERT(kyUVUtils::applyLatticeDeform(session.deformer, slot, amount, points));
        bent[threads - 1] = kyUVUtils::getUVValuesLocal(coreOf(node), slot);
    }
    RC_ASSERT(bent[0] == bent[1]);
    const double t = std::min(1., std::max(0., double{amount}));
    for (std::size_t i = 0; i < start.size(); ++i) {
        const DoubleUV p(start[i]);
        const DoubleUV d = p - DoubleUV(min);
        const DoubleUV q =
            isEven ? p
                   : pointOfSurface(points, resU, DoubleUV(d.x() / extent.x(), d.y() / extent.y()));
        RC_ASSERT((DoubleUV(bent[0][i]) - (q * t + p * (1 - t))).length() < (isEven ? 1e-4 : 1e-5));
    }
}

TEST(Lattice, MovesTheMiddleByAQuarterAndStartsFromTheSameUVsEachTime)
{
    const Vec2f still(.5F, .5F);
    const Vec2f quarter(.75F, 1);
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    for (const unsigned int child : {0U, 1U})
        surfaceOf(shell, child)->setTexSlot(slot, tiny::texCoords(UVs(4, still)));
    const Session session(2, 2, Zero, One, shell, {2, 7, 2, 0}); // 2 and 7 are one
    UVs points = SquarePoints;
    points.back() += Vec2f(1, 2);
    const auto uvsAfter = [&](float amount) {
        EXPECT_TRUE(kyUVUtils::applyLatticeDeform(session.deformer, slot, amount, points));
        EXPECT_FALSE(CompactShellMesh::isBuildDue(coreOf(shell), slot));
        UVs uvs;
        kyUVUtils::getNoCompactUVValues(shell, slot, uvs);
        return uvs;
    };
    const std::pair<float, float> wayOfAmount[] = {
        {1, 1},          {1, 1},     {0, 0},        {7, 1},         {-1, 0},
        {NotANumber, 0}, {.5F, .5F}, {Infinite, 1}, {-Infinite, 0}, {1, 1}};
    for (const auto& [amount, way] : wayOfAmount) {
        const Vec2f uv = still + (quarter - still) * way;
        EXPECT_EQ(uvsAfter(amount), (UVs{uv, still, uv, still, still, still, still, uv})) << amount;
    }
    points.pop_back(); // too few
    EXPECT_EQ(uvsAfter(0)[0], quarter);
}

TEST(Lattice, RefusesWhatIsNoGridAndASecondSessionWhileADeformerLives)
{
    const auto node = cloudOf(UVs(4));
    unsigned int earlier = 0;
    ASSERT_TRUE(kyUVUtils::startLatticeSession(3, 3, Zero, One, earlier));
    unsigned int id = 77;
    const auto isRefused = [&id](unsigned int resU, unsigned int resV, const Vec2f& min,
                                 const Vec2f& max) {
        return !kyUVUtils::startLatticeSession(resU, resV, min, max, id) && id == 77;
    };
    EXPECT_TRUE(isRefused(1, 2, Zero, One) && isRefused(2, 1, Zero, One));
    EXPECT_TRUE(isRefused(LatticeGrid::MaxRes + 1, 2, Zero, One));
    EXPECT_TRUE(isRefused(2, 4'000'000'000, Zero, One));
    EXPECT_TRUE(isRefused(2, 2, Vec2f(1, 0), One) && isRefused(2, 2, One, Zero));
    EXPECT_TRUE(isRefused(2, 2, Zero, Vec2f(1, NotANumber)));
    EXPECT_TRUE(isRefused(2, 2, Vec2f(-Infinite, 0), One));

    const Session session(LatticeGrid::MaxRes, 2, Zero, One, node, {0, 9});
    EXPECT_EQ(session.id, earlier + 1);
    EXPECT_TRUE(isRefused(2, 2, Zero, One)) << "a deformer lives";
    const osg::RefPtr<osg::Geometry> broken(brokenQuad());
    const Ids ids{0, 9};
    const auto get = [&](unsigned int sessionId, const osg::GeometryPtr& geometry,
                         const unsigned int* first, unsigned int count) {
        return kyUVUtils::getLatticeDeformer(sessionId, geometry, node, slot, first, count);
    };
    EXPECT_EQ(get(earlier, coreOf(node), ids.data(), 2), nullptr);
    EXPECT_EQ(get(session.id, broken, ids.data(), 2), nullptr);
    EXPECT_EQ(get(session.id, coreOf(node), nullptr, 2), nullptr);
    EXPECT_EQ(get(session.id, coreOf(node), ids.data(), 0), nullptr);
    EXPECT_EQ(get(session.id, coreOf(node), &ids[1], 1), nullptr) << "no such vertex";
    void* none = nullptr;
    EXPECT_FALSE(kyUVUtils::finishLatticeDeformer(none));
    EXPECT_FALSE(kyUVUtils::applyLatticeDeform(none, slot, 1, SquarePoints));

    LatticeGrid grid;
    grid.setUp(2, 20, Zero, One);
    EXPECT_EQ(grid.binomials[19][9], 92378U);
    grid.setUp(2, 2, Zero, One);
    EXPECT_EQ(grid.binomials.size(), 20U);
}

TEST(Lattice, MetaDataBringsTheStartBackWhereItsVerticesAre)
{
    const auto node = cloudOf(UVs(5, Vec2f(.25F, .25F)));
    const Session session(2, 2, Zero, One, node, idsUpTo(5));
    void* const deformer = session.deformer;
    EXPECT_EQ(kyUVUtils::getMetaDataofLatticeDeformer(nullptr), nullptr);
    void* const meta = kyUVUtils::getMetaDataofLatticeDeformer(deformer);
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, nullptr));
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(nullptr, meta));
    LatticeStart& start = *static_cast<LatticeStart*>(meta);
    start.uvs.assign(4, Vec2f(.5F, 0));
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, meta)) << "lists of two lengths";
    start.uvs.emplace_back(.5F, 0.F);
    start.ids.back() = 5;
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, meta)) << "beyond the UVs";
    start.ids.back() = 4;
    EXPECT_TRUE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, meta));
    {
        kyUVLatticeToolState state; // which frees the meta data; the deformer has a copy
        state.metaDataOfNode = {{0, nullptr}, {node->getId(), meta}};
    }
    const osg::GeoTexCoordsPtr uvs = static_cast<LatticeDeformer*>(deformer)->uvs;
    kyUVUtils::applyLatticeDeform(deformer, slot, 1, SquarePoints);
    EXPECT_EQ(uvs->getValues(), UVs(5, Vec2f(.5F, 0)));
    uvs->resize(3); // as after a change of the mesh
    EXPECT_TRUE(kyUVUtils::applyLatticeDeform(deformer, slot, 0, SquarePoints));
    EXPECT_EQ(uvs->getSize(), 3U);
}

} // namespace
