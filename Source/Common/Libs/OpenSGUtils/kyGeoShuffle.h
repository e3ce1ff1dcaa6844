#pragma once

#include "OpenSG/Geometry.h"

/// Rearranging the vertices of a geometry.
namespace kyGeoShuffle
{

/// Gives the vertex properties of a geometry (positions, normals, both colours, all texture slots,
/// of any kind) other vertices. The last argument chooses between two forms:
///
/// true   `ids` are the new vertices: new vertex i is old vertex ids[i], and there are `count` of
///        them, more or fewer than before. `targets` and `newCount` are not looked at.
/// false  there are `newCount` vertices afterwards; vertex targets[i] becomes old vertex ids[i],
///        the others stay as they are. `targets` has `count` entries; one that is not below
///        newCount is ignored, and of equal ones the last counts.
///
/// All sources are read before anything is written. A source beyond the end of a property reads as
/// zero there. Null and empty properties stay. Indices, temporary lists and constraints are not
/// touched: bringing them along is the caller's part.
///
/// A property that others hold too is replaced, any other one rewritten in place. One notice goes
/// out for each property and one for the geometry, with the fields of those properties. Does
/// nothing for a null geometry. Linear in vertices times properties; in the copying form a property
/// that nobody else holds grows in place, so that the cost follows the number of ids.
void shuffleProperties(const osg::GeometryPtr& geometry, const unsigned int* ids,
                       unsigned int count, const unsigned int* targets, unsigned int newCount,
                       bool rearrange);

} // namespace kyGeoShuffle
