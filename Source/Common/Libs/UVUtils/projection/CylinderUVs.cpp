#include "UVUtils/projection/CylinderUVs.h"

#include "UVUtils/projection/CylinderWrap.h"

#include <array>
#include <cmath>

namespace
{

constexpr float OnAxis = 1e-6F;

float angleAround(const osg::Pnt3f& p)
{
    const float radius = std::sqrt(p.x() * p.x() + p.z() * p.z());
    const float f = radius < OnAxis ? 1.0F : 1.0F / radius;
    return std::atan2(p.x() * f, p.z() * f);
}

/// From the angle and the height on the cylinder.
osg::Vec2f onImage(const CylinderImage& image, float angle, float height)
{
    const float s = (angle + image.angle / 2) / image.angle;
    const osg::Matrix& m = image.turn;
    return osg::Vec2f(m(0, 0) * s + m(0, 1) * height + m(0, 3),
                      m(1, 0) * s + m(1, 1) * height + m(1, 3));
}

} // namespace

void wrapAroundCylinder(std::span<const osg::Pnt3f> positions, std::span<const unsigned> corners,
                        const CylinderImage& image, std::span<osg::Vec2f> uvs)
{
    for (std::size_t first = 0; first + 3 <= corners.size(); first += 3) {
        std::array<float, 3> angles{};
        std::array<float, 3> heights{};
        for (unsigned k = 0; k < 3; ++k) {
            const unsigned id = corners[first + k];
            const osg::Pnt3f place = id < positions.size() ? positions[id] : osg::Pnt3f();
            const osg::Pnt3f p = image.toCylinder.transformPoint(place);
            angles[k] = angleAround(p);
            heights[k] = p.y() + 0.5F;
        }
        closeOverSeam(angles);
        for (unsigned k = 0; k < 3; ++k)
            if (corners[first + k] < uvs.size())
                uvs[corners[first + k]] = onImage(image, angles[k], heights[k]);
    }
}
