#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include <algorithm>

QSizeF kyUVTriplanarProjection::calculateProjectionSize(const osg::Pnt3f& min,
                                                        const osg::Pnt3f& max,
                                                        unsigned int imageWidth,
                                                        unsigned int imageHeight)
{
    const float height = std::max(max.y() - min.y(), max.z() - min.z());
    if (imageWidth == 0 || imageHeight == 0)
        return {height, height};
    return {height * static_cast<float>(imageWidth) / static_cast<float>(imageHeight), height};
}

kyUVTriplanarProjectionSettings
kyUVTriplanarProjection::getDefaultSettings(const std::vector<osg::NodePtr>& nodes,
                                            unsigned int imageWidth, unsigned int imageHeight)
{
    osg::Vec3f center;
    osg::Pnt3f min;
    osg::Pnt3f max;
    calculateBoundingBox(nodes, center, min, max);
    const QSizeF size = calculateProjectionSize(min, max, imageWidth, imageHeight);
    kyUVTriplanarProjectionSettings settings; // rotations, offsets and repeats as at the start
    settings.setCenter(center);
    settings.setWidth(static_cast<float>(size.width()));
    settings.setHeight(static_cast<float>(size.height()));
    return settings;
}
