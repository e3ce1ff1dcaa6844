#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/model/kyUVTypes.h"

// How a projection gets at the arrays of one resolved node: positions to read, UVs to write. The
// UVs written, kyUVTextureProjection::applyUVChanges puts them into the slot.

/// The positions that a projection reads: NullFC for a null geometry, and where they are absent or
/// not three floats each.
osg::GeoPositions3fPtr positionsToProject(const osg::GeometryPtr& geometry);

/// The property that takes the UVs: what is in the slot, with its values, if these are two floats
/// each, else a new empty property, which is in no slot yet.
osg::RefPtr<osg::GeoTexCoords2f> texCoordsToFill(const osg::Geometry& geometry,
                                                 kyUVTypes::UVSet uvSet);
