#include "UVUtils/projection/TexCoordsToFill.h"

#include "UVUtils/model/UVSlot.h"

osg::GeoPositions3fPtr positionsToProject(const osg::GeometryPtr& geometry)
{
    return geometry ? osg::dcast<osg::GeoPositions3f>(geometry->getPositions())
                    : osg::GeoPositions3fPtr();
}

osg::RefPtr<osg::GeoTexCoords2f> texCoordsToFill(const osg::Geometry& geometry,
                                                 kyUVTypes::UVSet uvSet)
{
    const osg::GeoTexCoords2fPtr present = uvSlot(geometry, uvSet);
    return osg::RefPtr<osg::GeoTexCoords2f>(present ? present : osg::GeoTexCoords2f::create());
}
