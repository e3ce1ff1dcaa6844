#include "UVUtils/projection/PlaneUVs.h"

#include <cassert>

void projectOntoPlane(std::span<const osg::Pnt3f> positions, const osg::Matrix& toPlane,
                      std::span<osg::Vec2f> uvs)
{
    assert(uvs.size() == positions.size());
    const osg::Matrix m = toPlane; // a copy that no write below can change
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const osg::Pnt3f p = positions[i];
        const float x = m(0, 0) * p.x() + m(0, 1) * p.y() + m(0, 2) * p.z() + m(0, 3);
        const float y = m(1, 0) * p.x() + m(1, 1) * p.y() + m(1, 2) * p.z() + m(1, 3);
        uvs[i] = osg::Vec2f((x + 1.0F) * 0.5F, (y + 1.0F) * 0.5F);
    }
}
