#include "UVUtils/projection/PlaneUVs.h"

#include <cassert>

void projectOntoPlane(std::span<const osg::Pnt3f> positions, const osg::Matrix& toPlane,
                      std::span<osg::Vec2f> uvs)
{
    assert(uvs.size() == positions.size());
    // A copy of the matrix that no write changes, and components written one by one: so compilers
    // take several vertices at once.
    const osg::Matrix m = toPlane;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const osg::Pnt3f& p = positions[i];
        const float x = m(0, 0) * p.x() + m(0, 1) * p.y() + m(0, 2) * p.z() + m(0, 3);
        const float y = m(1, 0) * p.x() + m(1, 1) * p.y() + m(1, 2) * p.z() + m(1, 3);
        uvs[i][0] = (x + 1.0F) * 0.5F;
        uvs[i][1] = (y + 1.0F) * 0.5F;
    }
}
