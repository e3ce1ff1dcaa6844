#include "ClosedMeshes.h"

#include "OpenSG/Geometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace bench
{
namespace
{

using Point = std::array<double, 3>;

/// A closed surface around the z axis: rings of equal numbers of vertices between two poles.
class RingSurface
{
public:
    RingSurface(unsigned int rings, unsigned int sides) : rings_(rings), sides_(sides) {}

    /// ring     0 to rings + 1; the first and the last are poles
    /// angle    0 to 2 pi
    template <class Shape>
    osg::RefPtr<osg::Node> make(const Shape& shape) const
    {
        std::vector<osg::Pnt3f> positions{toPoint(shape(0U, 0.0))};
        for (unsigned int ring = 1; ring <= rings_; ++ring)
            for (unsigned int side = 0; side < sides_; ++side)
                positions.push_back(toPoint(shape(ring, 2.0 * std::numbers::pi * side / sides_)));
        positions.push_back(toPoint(shape(rings_ + 1, 0.0)));

        const auto geometry = osg::Geometry::create();
        geometry->setPositions(osg::GeoPositions3f::create());
        geometry->getPositions()->setValues(positions);
        geometry->setIndices(osg::GeoIndicesUI32::create());
        geometry->getIndices()->setValues(triangles());
        osg::RefPtr<osg::Node> node(osg::Node::create());
        node->setCore(geometry);
        return node;
    }

private:
    static osg::Pnt3f toPoint(const Point& p)
    {
        return osg::Pnt3f(static_cast<float>(p[0]), static_cast<float>(p[1]),
                          static_cast<float>(p[2]));
    }
    unsigned int at(unsigned int ring, unsigned int side) const
    {
        return 1 + (ring - 1) * sides_ + side % sides_;
    }
    std::vector<unsigned int> triangles() const
    {
        const unsigned int last = 1 + rings_ * sides_;
        std::vector<unsigned int> list;
        for (unsigned int side = 0; side < sides_; ++side)
            list.insert(list.end(), {0, at(1, side), at(1, side + 1)});
        for (unsigned int ring = 1; ring < rings_; ++ring)
            for (unsigned int side = 0; side < sides_; ++side)
                list.insert(list.end(),
                            {at(ring, side), at(ring + 1, side), at(ring + 1, side + 1),
                             at(ring, side), at(ring + 1, side + 1), at(ring, side + 1)});
        for (unsigned int side = 0; side < sides_; ++side)
            list.insert(list.end(), {at(rings_, side), last, at(rings_, side + 1)});
        return list;
    }

    unsigned int rings_;
    unsigned int sides_;
};

/// How far a limb pulls the surface out in a direction.
double limb(const Point& direction, const Point& axis, double length, double width)
{
    const double norm = std::hypot(axis[0], axis[1], axis[2]);
    double cosine = 0.0;
    for (std::size_t i = 0; i < 3; ++i)
        cosine += direction[i] * axis[i] / norm;
    return length * std::exp((cosine - 1.0) / (width * width));
}

/// Half of a gear's outline, from the middle of one side to the middle of the other: how far from
/// the axis, and how high.
struct Corner
{
    double radius;
    double height;
};
constexpr std::array<Corner, 8> gearOutline{
    {{0, -0.5}, {0.3, -0.5}, {0.3, -0.2}, {1, -0.2}, {1, 0.2}, {0.3, 0.2}, {0.3, 0.5}, {0, 0.5}}};

} // namespace

osg::RefPtr<osg::Node> closedBody(unsigned int triangleCount)
{
    const auto rings = std::max(4U, static_cast<unsigned int>(std::sqrt(triangleCount / 4.0)));
    return RingSurface(rings, 2 * rings).make([&](unsigned int ring, double angle) {
        const double polar = std::numbers::pi * (1.0 - static_cast<double>(ring) / (rings + 1));
        const Point d{std::sin(polar) * std::cos(angle), std::sin(polar) * std::sin(angle),
                      std::cos(polar)};
        double radius = 1.0 + limb(d, {1, 0, 0.6}, 1.0, 0.4) + limb(d, {-1, 0, 0.3}, 0.9, 0.15);
        for (const double x : {-0.6, 0.6})
            for (const double y : {-0.5, 0.5})
                radius += limb(d, {x, y, -1}, 1.2, 0.2);
        return Point{radius * 1.4 * d[0], radius * d[1], radius * d[2]};
    });
}

osg::RefPtr<osg::Node> closedGear(unsigned int triangleCount)
{
    constexpr unsigned int teeth = 16;
    constexpr unsigned int stretches = gearOutline.size() - 1;
    const auto perStretch =
        std::max(1U, static_cast<unsigned int>(std::sqrt(triangleCount / 4.0) / stretches));
    const unsigned int rings = perStretch * stretches - 1;
    const unsigned int sides = 4 * teeth * std::max(1U, rings / (2 * teeth));
    return RingSurface(rings, sides).make([&](unsigned int ring, double angle) {
        const unsigned int stretch = std::min(ring / perStretch, stretches - 1);
        const double part = static_cast<double>(ring - stretch * perStretch) / perStretch;
        const Corner& from = gearOutline[stretch];
        const Corner& to = gearOutline[stretch + 1];
        const double height = from.height + part * (to.height - from.height);
        double radius = from.radius + part * (to.radius - from.radius);
        // Teeth: what is beyond the hub is drawn out or in along every other quarter of a tooth.
        const double phase = std::fmod(angle * teeth / (2.0 * std::numbers::pi), 1.0);
        const double tooth = std::clamp(std::abs(4.0 * phase - 2.0) - 0.5, 0.0, 1.0) - 0.5;
        if (radius > 0.3)
            radius += 0.2 * tooth * (radius - 0.3) / 0.7;
        return Point{radius * std::cos(angle), radius * std::sin(angle), height};
    });
}

} // namespace bench
