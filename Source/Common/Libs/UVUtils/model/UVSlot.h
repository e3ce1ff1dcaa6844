#pragma once

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/Geometry.h"
#include "UVUtils/model/kyUVTypes.h"

/// A texture slot that holds UVs, which are two floats: NullFC for an empty slot and for one that
/// holds another kind.
inline osg::GeoTexCoords2fPtr uvSlot(const osg::Geometry& geometry, kyUVTypes::UVSet set)
{
    return osg::dcast<osg::GeoTexCoords2f>(geometry.getTexSlot(static_cast<unsigned int>(set)));
}
inline osg::GeoTexCoords2fPtr uvSlot(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    return uvSlot(*geometry, set);
}

/// The field of a slot; empty for a number that is no slot.
inline osg::FieldMask uvSlotMask(kyUVTypes::UVSet set)
{
    return osg::Geometry::texSlotFieldMask(static_cast<unsigned int>(set));
}

/// The notices that end every write to a slot: the property, then the geometry.
inline void notifySlotChanged(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    osg::notifyChanged(geometry->getTexSlot(static_cast<unsigned int>(set)), geometry,
                       uvSlotMask(set));
}

/// 0 without positions.
inline unsigned int vertexCountOf(const osg::GeometryPtr& geometry)
{
    const osg::GeoPositionsPtr positions = geometry->getPositions();
    return positions ? positions->getSize() : 0;
}
