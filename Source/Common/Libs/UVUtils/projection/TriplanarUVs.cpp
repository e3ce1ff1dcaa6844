#include "UVUtils/projection/TriplanarUVs.h"

namespace triplanar
{

namespace
{

osg::Pnt3f positionAt(std::span<const osg::Pnt3f> positions, unsigned int id)
{
    return id < positions.size() ? positions[id] : osg::Pnt3f();
}

/// Calls `visit` with each triangle's number and the direction in which it is looked at from
/// outside.
template <class Visit>
void forEachDirection(std::span<const osg::Pnt3f> positions, std::span<const unsigned int> corners,
                      const osg::Matrix& toBox, const Visit& visit)
{
    const auto inBox = [&positions, matrix = toBox](unsigned int id) {
        return matrix.transformPoint(positionAt(positions, id));
    };
    for (std::size_t t = 0; t < countTriangles(corners); ++t) {
        const osg::Vec3f normal = computeNormal(inBox(corners[3 * t]), inBox(corners[3 * t + 1]),
                                                inBox(corners[3 * t + 2]));
        visit(t, -normal);
    }
}

/// Where a position falls on the image.
osg::Vec2f uvOf(const osg::Matrix& m, const osg::Pnt3f& p)
{
    const float x = m(0, 0) * p.x() + m(0, 1) * p.y() + m(0, 2) * p.z() + m(0, 3);
    const float y = m(1, 0) * p.x() + m(1, 1) * p.y() + m(1, 2) * p.z() + m(1, 3);
    return osg::Vec2f((x + 1.0F) * 0.5F, (y + 1.0F) * 0.5F);
}

} // namespace

BoxView BoxView::from(const osg::Matrix& matrix) const
{
    BoxView view{toBox * matrix, toImages};
    for (osg::Matrix& toImage : view.toImages)
        toImage *= matrix;
    return view;
}

osg::Vec3f computeNormal(const osg::Pnt3f& p0, const osg::Pnt3f& p1, const osg::Pnt3f& p2)
{
    return (p1 - p0).cross(p2 - p0).normalized();
}

std::vector<unsigned char> dominantAxes(std::span<const osg::Pnt3f> positions,
                                        std::span<const unsigned int> corners,
                                        const osg::Matrix& toBox)
{
    std::vector<unsigned char> assigned(countTriangles(corners));
    forEachDirection(positions, corners, toBox,
                     [&](std::size_t t, const osg::Vec3f& m) { assigned[t] = maskOf(getAxis(m)); });
    return assigned;
}

TriangleAxes candidateAxes(std::span<const osg::Pnt3f> positions,
                           std::span<const unsigned int> corners, const osg::Matrix& toBox)
{
    TriangleAxes axes;
    axes.candidates.resize(countTriangles(corners));
    axes.assigned.resize(countTriangles(corners));
    forEachDirection(positions, corners, toBox, [&](std::size_t t, const osg::Vec3f& m) {
        const unsigned char mask = getAxisCandidatesMask(m);
        const bool isAmbiguous = hasSeveralAxes(mask);
        axes.candidates[t] = mask;
        axes.assigned[t] = isAmbiguous ? 0 : mask;
        axes.isAnyAmbiguous |= isAmbiguous;
    });
    return axes;
}

void writeTriplanarUVs(std::span<const osg::Pnt3f> positions, std::span<const unsigned int> corners,
                       std::span<const unsigned char> assigned,
                       const std::array<osg::Matrix, axisCount>& toImages,
                       std::span<osg::Vec2f> uvs)
{
    for (std::size_t t = 0; t < countTriangles(corners); ++t) {
        if (assigned[t] == 0)
            continue;
        const osg::Matrix& toImage = toImages[static_cast<std::size_t>(lowestAxis(assigned[t]))];
        for (const unsigned int id : corners.subspan(3 * t, 3))
            if (id < uvs.size())
                uvs[id] = uvOf(toImage, positionAt(positions, id));
    }
}

} // namespace triplanar
