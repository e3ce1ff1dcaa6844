#pragma once

#include "document/Document.h"

#include "OpenSG/Geometry.h"
#include "OpenSG/RefPtr.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace uvtool
{

/// Triangles as the library takes them.
struct TriangleArrays
{
    std::span<const Vec3f> positions;         ///< [vertex]
    std::span<const std::uint32_t> triangles; ///< [3 * n] vertices
    std::span<const Vec2f> uvs;               ///< [vertex], or empty
};

/// A plain geometry of these arrays, the UVs in the given slot. It lives as long as it is held.
osg::RefPtr<osg::Geometry> makeGeometry(const TriangleArrays& arrays, std::size_t slot);

} // namespace uvtool
