#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/kyUVTypes.h"

#include <vector>

struct TopologyOpOutData;

/// [group] Vertices that become one: at least two, ascending. The first one survives; groups ascend
/// by it, and no vertex is in two.
using MergeGroups = Buckets<unsigned int>;

/// Gives each survivor the mean of the UVs of its group in a slot of any kind, with a notice of the
/// property. Without that slot nothing happens.
void averageUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set, const MergeGroups& groups);

/// Takes the vertices that don't survive out of all vertex properties, and brings indices,
/// temporary lists and constraints along. The vertices that are left keep their order.
///
/// out  records the way there and back; may be null
///
/// Linear: one pass over each property and over the indices.
void removeMergedVertices(const osg::GeometryPtr& geometry, const MergeGroups& groups,
                          TopologyOpOutData* out);
