#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include "OpenSGAnim/kyAnimManager.h"
#include "OpenSGUtils/kyNodePermission.h"
#include "UVUtils/Captures.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/editing/IslandReference.h"
#include "UVUtils/projection/PlacedNode.h"
#include "UVUtils/projection/SupportGeometries.h"
#include "UVUtils/projection/TriplanarReference.h"
#include "UVUtils/projection/TriplanarUVs.h"
#include "UVUtils/repair/kyTopologyRepair.h"
#include "Utils/kyStackedProgress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <set>
#include <tuple>

namespace
{

using Settings = kyUVTriplanarProjectionSettings;
using osg::Pnt3f;
using osg::Vec3f;
using Masks = PropagationReference::Masks;
constexpr auto set = kyUVTypes::UVSet2;

/// An image over the square from -1 to 1, shifted differently on each side.
Settings shiftedImages(Settings::Mode mode)
{
    Settings settings;
    settings.setWidth(2);
    settings.setHeight(2);
    settings.setOffsetU(Vec3f(0.25F, 0.5F, 0.75F));
    settings.setOffsetV(Vec3f(1.25F, 1.5F, 1.75F));
    settings.setMode(mode);
    return settings;
}

/// In plain words: along the image, shifted, turned back, in parts of its size.
Vec2f uvOnImage(int axis, const Vec3f& p, const Settings& s)
{
    const float alongU[] = {-p.y(), p.x(), -p.x(), p.y(), -p.x(), p.x()};
    const auto k = static_cast<unsigned>(axis % 3);
    const double sign = axis < 3 ? 1 : -1;
    const double x = alongU[axis] + sign * static_cast<double>(s.getOffsetU()[k]);
    const double y = p[k == 2 ? 1 : 2] + s.getOffsetV()[k];
    const double turn = sign * static_cast<double>(s.getRotation2D()[k]) * std::numbers::pi / 180;
    const double u = (std::cos(turn) * x - std::sin(turn) * y) * s.getRepeatU()[k] / s.getWidth();
    const double v = (std::sin(turn) * x + std::cos(turn) * y) * s.getRepeatV()[k] / s.getHeight();
    return Vec2f(static_cast<float>(u + 0.5), static_cast<float>(v + 0.5));
}

/// A box from -1 to 1, of n by n cells a side, that is blown up to a sphere with small waves on it
/// if so wished. Triangles share no vertex; sides stand in the order of the axes that serve them.
osg::GeometryPtr boxOfCells(unsigned n, bool isWavySphere = false)
{
    std::vector<Pnt3f> corners;
    for (unsigned i = 0; i < 36 * n * n; ++i) {
        const unsigned side = i / (6 * n * n);
        const unsigned k = std::array{0U, 1U, 2U, 0U, 2U, 3U}[i % 6];
        const auto along = [n](unsigned cells) {
            return 2 * static_cast<float>(cells) / static_cast<float>(n) - 1;
        };
        Vec3f d;
        d[side % 3] = side < 3 ? -1 : 1; // opposite sides turn the other way round
        d[(side + (side < 3 ? 2 : 1)) % 3] = along(i / 6 % n + (k == 1 || k == 2 ? 1 : 0));
        d[(side + (side < 3 ? 1 : 2)) % 3] = along(i / 6 / n % n + (k > 1 ? 1 : 0));
        if (isWavySphere) {
            d.normalize();
            d *= 1 + 0.004F * std::sin(31 * d.x()) * std::sin(29 * d.y()) * std::sin(27 * d.z());
        }
        corners.emplace_back(d);
    }
    Ids ids(corners.size());
    std::iota(ids.begin(), ids.end(), 0U);
    return geometryOf(corners, ids);
}

std::size_t countIslands(const osg::GeometryPtr& geometry)
{
    const Ids labels = islandsBySpreading(geometry->getIndices()->getValues(),
                                          geometry->getPositions()->getSize());
    return std::set<unsigned>(labels.begin(), labels.end()).size();
}

TEST(TriplanarAxes, OfDirections)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::tuple<Vec3f, int, int> cases[] = {
        {Vec3f(1, 0, 0), 0, 1},
        {Vec3f(0, 0, -1), 5, 32},
        {Vec3f(-0.707F, -0.707F, 0), 4, 24},
        {Vec3f(-0.6F, -0.6F, -0.53F), 4, 56},
        {Vec3f(0.577F, 0.577F, 0.577F), 2, 7},
        {Vec3f(-0.8F, 0, 0.8F), 2, 12},
        {Vec3f(0.5F, 0, 0.86F), 2, 4},
        {Vec3f(0, 0, 0), 5, 0},
        {Vec3f(nan, nan, nan), 5, 0},
    };
    for (const auto& [m, axis, candidates] : cases) {
        EXPECT_EQ(triplanar::getAxis(m), axis);
        EXPECT_EQ(triplanar::getAxisCandidatesMask(m), candidates);
    }
    EXPECT_EQ(triplanar::getAxisToZ(6), triplanar::getAxisToZ(2));
}

RC_GTEST_PROP(TriplanarProjection, PutsTheSidesOfAnyBoxOnTheirImages, ())
{
    Settings settings;
    settings.setMode(static_cast<Settings::Mode>(*rc::gen::inRange(0, 2)));
    settings.setWidth(1 + std::abs(mathtest::number(3)));
    settings.setHeight(1 + std::abs(mathtest::number(3)));
    settings.setCenter(mathtest::vector(3));
    settings.setRotation3D(mathtest::vector(180));
    settings.setRotation2D(mathtest::vector(180));
    settings.setOffsetU(mathtest::vector(1));
    settings.setOffsetV(mathtest::vector(1));
    settings.setRepeatU(mathtest::vector(2));
    settings.setRepeatV(mathtest::vector(2));
    const bool mirrored = *rc::gen::arbitrary<bool>();
    const osg::Matrix box =
        osg::Matrix::translation(settings.getCenter()) *
        osg::Matrix::rotation(osg::Quaternion::fromEulerDegrees(settings.getRotation3D()));
    const PlacedNode placed(boxOfCells(1),
                            box * osg::Matrix::scaling(Vec3f(mirrored ? -1.F : 1.F, 1, 1)));
    const SupportGeometries support;
    tiny::NoticeJournal journal;
    journal.watch(support.triPlanar.getYPlane()->getCore());
    kyUVTriplanarProjection::apply({placed.node}, set, settings);
    RC_ASSERT(journal.notices.at(0).mask == osg::TransformBase::MatrixFieldMask);
    const osg::GeometryPtr geometry = coreOf(placed.node);
    RC_ASSERT(geometry->getPositions()->getSize() == 24U);
    RC_ASSERT(countIslands(geometry) == 6U);
    for (unsigned i = 0; i < 36; ++i) {
        const unsigned vertex = geometry->getIndices()->getValue(i);
        Vec3f inBox = geometry->getPositions()->getValue(vertex).subZero();
        int axis = static_cast<int>(i / 6);
        if (mirrored) { // seen from inside; the mirror has exchanged the sides along x
            inBox[0] = -inBox[0];
            axis = axis % 3 == 0 ? axis : (axis + 3) % 6;
        }
        RC_ASSERT(
            mathtest::isNear(placed.uvs(set)[vertex], uvOnImage(axis, inBox, settings), 2e-4F));
    }
    const osg::Matrix plane = box.inverted() * support.triPlanar.getYPlane()->getToWorld();
    const Pnt3f corner = plane.transformPoint(Pnt3f(1, -1, 0));
    RC_ASSERT(std::abs(settings.getRepeatU()[1] * settings.getRepeatV()[1]) < 1e-3F ||
              mathtest::isNear(uvOnImage(1, corner.subZero(), settings), Vec2f(1, 0), 1e-2F));
}

/// Two triangles a cell, in random order and turned, some twice, some without area.
struct Hills
{
    std::vector<Pnt3f> positions; ///< two at each place
    Ids indices;

    Hills(Random random, unsigned height)
    {
        const unsigned side = random.between(2, 10);
        const bool faceDown = random.oneIn(2);
        for (unsigned place = 0; place < (side + 1) * (side + 1); ++place) {
            const float z = static_cast<float>(random.below(height)) / 4;
            for (const float same : {z, z == 0 ? -z : z})
                positions.emplace_back(place % (side + 1), place / (side + 1), same);
        }
        for (unsigned i = 0; i < 2 * side * side; ++i) {
            const unsigned cell = random.below(side * side);
            const unsigned a = cell / side * (side + 1) + cell % side;
            const unsigned b = a + side + 1;
            std::array t = random.oneIn(2) ? std::array{a, a + 1, b + 1} : std::array{a, b + 1, b};
            if (random.oneIn(20))
                t[1] = t[0];
            if (faceDown)
                std::swap(t[0], t[1]);
            std::rotate(t.begin(), t.begin() + random.below(3), t.end());
            for (const unsigned place : t)
                indices.push_back(2 * place + random.below(2));
        }
    }
};

RC_GTEST_PROP(TriplanarProjection, TakesTheWaysThatMapsTake, ())
{
    const Hills hills(Random(*rc::gen::arbitrary<std::uint32_t>()), *rc::gen::element(3U, 8U, 20U));
    const bool propagate = *rc::gen::inRange(0, 8) != 0;
    Ids places;
    std::vector<Pnt3f> corners;
    for (const unsigned id : hills.indices) {
        places.push_back(id / 2);
        corners.push_back(hills.positions[id]);
    }
    Masks candidates;
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        const Vec3f m = -triplanar::computeNormal(corners[i], corners[i + 1], corners[i + 2]);
        candidates.push_back(propagate ? triplanar::getAxisCandidatesMask(m)
                                       : triplanar::maskOf(triplanar::getAxis(m)));
    }
    const Masks axes = PropagationReference(places, candidates).axes;

    const osg::RefPtr<osg::Node> node(nodeOf(geometryOf(hills.positions, hills.indices)));
    const osg::GeometryPtr geometry = coreOf(node);
    geometry->setTexSlot(set, tiny::texCoords(UVs(hills.positions.size(), Vec2f(9, 9))));
    const Settings settings = shiftedImages(static_cast<Settings::Mode>(propagate));
    kyUVTriplanarProjection::apply({node}, set, settings);
    RC_ASSERT(kyTopologyRepair(geometry, set).findSingularEdges().empty());
    RC_ASSERT(geometry->getIndices()->getSize() == corners.size());
    for (unsigned i = 0; i < corners.size(); ++i) {
        const unsigned vertex = geometry->getIndices()->getValue(i);
        RC_ASSERT(geometry->getPositions()->getValue(vertex) == corners[i]);
        const unsigned char axis = axes[i / 3];
        const Vec2f uv =
            axis == 0 ? Vec2f()
                      : uvOnImage(triplanar::lowestAxis(axis), corners[i].subZero(), settings);
        // The repair moves UVs apart where it cuts.
        RC_ASSERT(mathtest::isNear(geometry->getTexSlot(set)->getValue(vertex), uv, 1e-3F));
    }
}

TEST(TriplanarProjection, PropagatesToFewerConnectedCharts)
{
    const auto chartsIn = [](Settings::Mode mode) {
        const osg::RefPtr<osg::Node> node(nodeOf(boxOfCells(16, true)));
        kyUVTriplanarProjection::apply({node}, set, shiftedImages(mode));
        return countIslands(coreOf(node));
    };
    EXPECT_EQ(chartsIn(Settings::PropagatedAxis), 6U);
    EXPECT_GT(chartsIn(Settings::DominantAxis), 20U);
}

TEST(TriplanarProjection, SkipsAnimatedAndLockedNodesAndStopsWhenAsked)
{
    const osg::RefPtr<osg::Node> animated(nodeOf(quad()));
    const osg::RefPtr<osg::Node> locked(nodeOf(quad()));
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    const osg::RefPtr<osg::Node> last(nodeOf(quad()));
    kyAnimManager::the()->setVertexAnimation(animated, true);
    kyNodePermission::deny(locked, kyScenegraphTypes::EditTextureCoordinates);
    surfaceOf(shell, 0)->setTexSlot(set, osg::GeoTexCoords3f::create());
    const LogCapture log;
    kyStackedProgress::setObserver([](const kyStackedProgress& progress) {
        if (progress.name() == "triplanar" && progress.fraction() == 0.5)
            kyStackedProgress::requestCancel();
    });
    kyUVTriplanarProjection::apply({animated, locked, shell, last}, set);
    kyUVTriplanarProjection::apply({}, set);
    kyStackedProgress::setObserver(nullptr);

    EXPECT_THAT(log.lines,
                testing::ElementsAre("error: Triplanar Projection: Skipping node <noname> because "
                                     "of existing vertex animation.",
                                     "info: Map Texture: Nothing selected."));
    EXPECT_EQ(kyUVTriplanarProjection::readSettings(shell, set).getWidth(), 100);
    for (const unsigned child : {0U, 1U})
        EXPECT_EQ(surfaceOf(shell, child)->getTexSlot(set)->getValue(0).y(), 0.5F);
    for (const osg::NodePtr& node :
         {osg::NodePtr(animated), osg::NodePtr(locked), osg::NodePtr(last)})
    {
        EXPECT_FALSE(kyUVTriplanarProjection::hasSettings(node, set));
        EXPECT_FALSE(coreOf(node)->getTexSlot(set));
    }
}

TEST(TriplanarProjection, FitsTheImageToHeightAndDepth)
{
    EXPECT_EQ(
        kyUVTriplanarProjection::calculateProjectionSize(Pnt3f(0, 0, 0), Pnt3f(10, 4, 8), 2, 1),
        QSizeF(16, 8));
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const Settings settings = kyUVTriplanarProjection::getDefaultSettings({node}, 0, 7);
    EXPECT_EQ(settings.getCenter(), Vec3f(0.5F, 0.5F, 0));
    EXPECT_EQ(QSizeF(settings.getWidth(), settings.getHeight()), QSizeF(1, 1));
}

} // namespace
