#include "OpenSG/MathTestTools.h"
#include "UVUtils/Meshes.h"
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

namespace
{

using DoubleUV = osg::Vector<double, 2>;
const Vec2f Zero(0, 0);
const Vec2f One(1, 1);

/// A session; its deformers are finished with it.
class Session
{
public:
    Session(unsigned int resU, unsigned int resV, const Vec2f& min = Zero, const Vec2f& max = One)
    {
        EXPECT_TRUE(kyUVUtils::startLatticeSession(resU, resV, min, max, id));
    }
    ~Session()
    {
        for (void*& deformer : deformers_)
            EXPECT_TRUE(kyUVUtils::finishLatticeDeformer(deformer));
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void* deformer(const osg::NodePtr& node, const Ids& ids)
    {
        return deformers_.emplace_back(kyUVUtils::getLatticeDeformer(
            id, coreOf(node), node, slot, ids.data(), static_cast<unsigned int>(ids.size())));
    }

    unsigned int id = 0;

private:
    std::vector<void*> deformers_;
};

/// Control points that are spread evenly over a rectangle.
UVs evenPoints(unsigned int resU, unsigned int resV, const Vec2f& min = Zero,
               const Vec2f& max = One)
{
    UVs points;
    for (unsigned int j = 0; j < resV; ++j)
        for (unsigned int i = 0; i < resU; ++i)
            points.emplace_back(min.x() + (max.x() - min.x()) * static_cast<float>(i) /
                                              static_cast<float>(resU - 1),
                                min.y() + (max.y() - min.y()) * static_cast<float>(j) /
                                              static_cast<float>(resV - 1));
    return points;
}

/// A point of a Bézier curve, by de Casteljau's construction.
DoubleUV pointOfCurve(std::vector<DoubleUV> points, double t)
{
    for (std::size_t left = points.size(); --left > 0;)
        for (std::size_t i = 0; i < left; ++i)
            points[i] = points[i] * (1 - t) + points[i + 1] * t;
    return points[0];
}

DoubleUV pointOfSurface(const UVs& points, unsigned int resU, double s, double r)
{
    std::vector<DoubleUV> column;
    for (auto row = points.begin(); row != points.end(); row += resU)
        column.push_back(pointOfCurve(std::vector<DoubleUV>(row, row + resU), s));
    return pointOfCurve(column, r);
}

/// Points that no triangle uses are bent as well.
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
    for (std::size_t i = 0; i < end; ++i)
        ids[i] = static_cast<unsigned int>(end - 1 - i); // in no order
    return ids;
}

RC_GTEST_PROP(Lattice, BendsAsDeCasteljauDoesOnAnyNumberOfThreads, ())
{
    const WithoutCompactMesh plainly;
    const auto resU = *rc::gen::inRange(2U, 21U);
    const auto resV = *rc::gen::inRange(2U, 21U);
    const Vec2f min(mathtest::number(2), mathtest::number(2));
    const Vec2f extent(.5F + std::abs(mathtest::number(2)), .5F + std::abs(mathtest::number(2)));
    const float amount = mathtest::number(2);
    UVs points = evenPoints(resU, resV, min, min + extent);
    const bool isEven = *rc::gen::inRange(0, 4) == 0;
    for (Vec2f& point : points)
        if (!isEven)
            point += Vec2f(mathtest::number(1), mathtest::number(1));
    UVs start; // some a little outside
    std::mt19937 random(*rc::gen::arbitrary<std::uint32_t>());
    const auto parameter = [&] { return -.1F + 1.2e-3F * static_cast<float>(random() % 1000); };
    for (unsigned int i = 0; i < 200; ++i)
        start.emplace_back(min.x() + extent.x() * parameter(), min.y() + extent.y() * parameter());

    const auto node = cloudOf(start);
    Session session(resU, resV, min, min + extent);
    void* const deformer = session.deformer(node, idsUpTo(start.size()));
    UVs bent[2];
    for (const unsigned int threads : {1U, 2U}) {
        const tbb::global_control control(tbb::global_control::max_allowed_parallelism, threads);
        RC_ASSERT(kyUVUtils::applyLatticeDeform(deformer, slot, amount, points));
        bent[threads - 1] = kyUVUtils::getUVValuesLocal(coreOf(node), slot);
    }
    RC_ASSERT(bent[0] == bent[1]);
    const double t = std::min(1., std::max(0., double{amount}));
    for (std::size_t i = 0; i < start.size(); ++i) {
        const DoubleUV p(start[i]);
        const DoubleUV max(min + extent);
        const DoubleUV low(min);
        const DoubleUV expected =
            pointOfSurface(points, resU, (p.x() - low.x()) / (max.x() - low.x()),
                           (p.y() - low.y()) / (max.y() - low.y()));
        RC_ASSERT((DoubleUV(bent[0][i]) - (expected * t + p * (1 - t))).length() < 1e-5);
        RC_ASSERT(!isEven || (bent[0][i] - start[i]).length() < 1e-4F);
    }
}

TEST(Lattice, MovesTheMiddleByAQuarterAndStartsFromTheSameUVsEachTime)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    for (const unsigned int child : {0U, 1U})
        surfaceOf(shell, child)->setTexSlot(slot, tiny::texCoords(UVs(4, Vec2f(.5F, .5F))));
    Session session(2, 2);
    void* const deformer = session.deformer(shell, {2, 7, 2, 0});
    UVs points = evenPoints(2, 2);
    points.back() += Vec2f(1, 2);
    const Vec2f still(.5F, .5F);
    const Vec2f quarter(.75F, 1);
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const struct
    {
        float amount;
        Vec2f uv;
    } cases[] = {{1, quarter},
                 {1, quarter},
                 {0, still},
                 {7, quarter},
                 {-1, still},
                 {infinite, quarter},
                 {-infinite, still},
                 {.5F, Vec2f(.625F, .75F)},
                 {std::numeric_limits<float>::quiet_NaN(), still}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.amount);
        EXPECT_TRUE(kyUVUtils::applyLatticeDeform(deformer, slot, c.amount, points));
        // The vertices 2 and 7 are one; 1, 3 and those of the second surface stay.
        EXPECT_EQ(surfaceOf(shell, 0)->getTexSlot(slot)->getValues(),
                  (UVs{c.uv, still, c.uv, still}));
        EXPECT_EQ(surfaceOf(shell, 1)->getTexSlot(slot)->getValues(),
                  (UVs{still, still, still, c.uv}));
        EXPECT_FALSE(CompactShellMesh::isBuildDue(coreOf(shell), slot));
    }
    const UVs before = surfaceOf(shell, 0)->getTexSlot(slot)->getValues();
    points.pop_back();
    EXPECT_TRUE(kyUVUtils::applyLatticeDeform(deformer, slot, 1, points)) << "too few points";
    EXPECT_EQ(surfaceOf(shell, 0)->getTexSlot(slot)->getValues(), before);
}

TEST(Lattice, RefusesWhatIsNoGridAndASecondSessionWhileADeformerLives)
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const struct
    {
        unsigned int resU;
        unsigned int resV;
        Vec2f min;
        Vec2f max;
    } refused[] = {{1, 2, Zero, One},
                   {2, 1, Zero, One},
                   {LatticeGrid::MaxRes + 1, 2, Zero, One},
                   {2, 4'000'000'000, Zero, One},
                   {2, 2, Vec2f(1, 0), One},
                   {2, 2, One, Zero},
                   {2, 2, Zero, Vec2f(1, std::numeric_limits<float>::quiet_NaN())},
                   {2, 2, Vec2f(-infinite, 0), One}};
    unsigned int id = 77;
    for (const auto& c : refused)
        EXPECT_FALSE(kyUVUtils::startLatticeSession(c.resU, c.resV, c.min, c.max, id));
    EXPECT_EQ(id, 77U);

    const auto node = cloudOf(UVs(4));
    unsigned int earlier = 0;
    ASSERT_TRUE(kyUVUtils::startLatticeSession(3, 3, Zero, One, earlier));
    Session session(LatticeGrid::MaxRes, 2);
    EXPECT_EQ(session.id, earlier + 1);
    const Ids ids{0, 9};
    const auto get = [&](unsigned int sessionId, const osg::GeometryPtr& geometry,
                         const unsigned int* list, unsigned int count, kyUVTypes::UVSet set) {
        return kyUVUtils::getLatticeDeformer(sessionId, geometry, node, set, list, count);
    };
    const osg::RefPtr<osg::Geometry> broken(brokenQuad());
    EXPECT_EQ(get(earlier, coreOf(node), ids.data(), 2, slot), nullptr);
    EXPECT_EQ(get(session.id, broken, ids.data(), 2, slot), nullptr);
    EXPECT_EQ(get(session.id, coreOf(node), nullptr, 2, slot), nullptr);
    EXPECT_EQ(get(session.id, coreOf(node), ids.data(), 0, slot), nullptr);
    EXPECT_EQ(get(session.id, coreOf(node), &ids[1], 1, slot), nullptr) << "no such vertex";
    {
        const WithoutCompactMesh plainly;
        EXPECT_EQ(get(session.id, coreOf(node), ids.data(), 2, kyUVTypes::UVSet5), nullptr);
    }
    session.deformer(node, ids);
    EXPECT_FALSE(kyUVUtils::startLatticeSession(2, 2, Zero, One, id));
    void* none = nullptr;
    EXPECT_FALSE(kyUVUtils::finishLatticeDeformer(none));
    EXPECT_FALSE(kyUVUtils::applyLatticeDeform(none, slot, 1, evenPoints(2, 2)));
}

TEST(Lattice, HasBinomialsInRowsThatStay)
{
    LatticeGrid grid;
    grid.setUp(2, 20, Zero, One);
    EXPECT_EQ(grid.binomials.size(), 20U);
    EXPECT_EQ(grid.binomials[19][9], 92378U);
    EXPECT_EQ(grid.binomials[4], (std::vector<unsigned int>{1, 4, 6, 4, 1}));
    grid.setUp(2, 2, Zero, One);
    EXPECT_EQ(grid.binomials.size(), 20U);
}

TEST(Lattice, MetaDataBringsTheStartBackWhereItsVerticesAre)
{
    const auto node = cloudOf(UVs(5, Vec2f(.25F, .25F)));
    Session session(2, 2);
    void* const deformer = session.deformer(node, idsUpTo(5));
    void* meta = kyUVUtils::getMetaDataofLatticeDeformer(deformer);
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, nullptr));
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(nullptr, meta));
    EXPECT_EQ(kyUVUtils::getMetaDataofLatticeDeformer(nullptr), nullptr);

    const osg::GeoTexCoordsPtr uvs = static_cast<LatticeDeformer*>(deformer)->uvs;
    LatticeStart& start = *static_cast<LatticeStart*>(meta);
    const LatticeStart whole = start;
    start.uvs.pop_back();
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, meta)) << "lists of two lengths";
    start = whole;
    start.ids.back() = 5;
    EXPECT_FALSE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, meta)) << "beyond the UVs";
    start = whole;
    start.uvs.assign(5, Vec2f(.5F, 0));
    EXPECT_TRUE(kyUVUtils::setMetaDataofLatticeDeformer(deformer, meta));
    EXPECT_EQ(uvs->getValues(), UVs(5, Vec2f(.25F, .25F))) << "nothing is written yet";
    {
        kyUVLatticeToolState state;
        state.metaDataOfNode[node->getId()] = meta; // freed with it, not before
        state.metaDataOfNode[0] = nullptr;
        kyUVUtils::applyLatticeDeform(deformer, slot, 1, evenPoints(2, 2));
        EXPECT_EQ(uvs->getValues(), UVs(5, Vec2f(.5F, 0)));
    }
    // Fewer UVs than there were, as after a change of the mesh.
    uvs->resize(3);
    EXPECT_TRUE(kyUVUtils::applyLatticeDeform(deformer, slot, 0, evenPoints(2, 2)));
    EXPECT_EQ(uvs->getSize(), 3U);
    meta = nullptr;
    kyUVUtils::destroyLatticeMetaData(meta);
}

} // namespace
