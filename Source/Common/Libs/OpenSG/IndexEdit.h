#pragma once

#include "OpenSG/Geometry.h"

namespace osg
{

/// The index property of a geometry, to be rewritten in place. Where others hold it too the
/// geometry gets one of its own, and where its 16 bits are too narrow for that many vertices it
/// gets one of 32 bits with the same ids. Null without one.
///
/// Sends no notice: the caller tells of the property that it got, then of the geometry.
GeoIndicesPtr indicesToEdit(const GeometryPtr& geometry, std::size_t vertexCount);

} // namespace osg
