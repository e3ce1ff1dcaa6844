#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/kyTopologyBridge.h"

// Before a record is replayed: are the triangles still those that it starts from?

/// Does a geometry, or do the active surfaces of a shell, have the indices of the state that a
/// record leads to? A class of property that differs counts as other indices. Checksums of 64 bits
/// are compared, so a chance of one in 2^64 remains that others pass. Those of a shell's surfaces
/// are joined by exclusive or: two surfaces with equal indices cancel out, now and in the record.
///
/// Where kyUVUtils::useCMesh(geometry) holds, the record's children are compared; a child without
/// recorded indices may have any. Otherwise its top level is. A null geometry agrees with any
/// record. Linear in the indices.
bool hasIndicesOf(const kyTopologyData& record, const osg::GeometryPtr& geometry,
                  const osg::NodePtr& node);
