#pragma once

#include "OpenSG/Geometry.h"

/// A place on the surface of a geometry: a triangle and where in it. What a search that finds
/// nothing leaves has no geometry.
///
/// It is good for as long as the geometry lives and its triangles stay as they are; it follows
/// vertices that move.
struct kyPointOnGeometry
{
    osg::GeometryPtr geometry;
    float weights[3] = {0.F, 0.F, 0.F};   ///< barycentric: at least 0, together 1
    unsigned int vertices[3] = {0, 0, 0}; ///< ids of the triangle's corners, in their order
    int triangle = -1;                    ///< counted as osg::TriangleIterator does; -1 for none

    /// The weighted sum of the positions of the three vertices. The origin without a geometry or
    /// positions; an id beyond the positions counts as the origin.
    [[nodiscard]] osg::Pnt3f getPosition() const;
    /// The same sum over the values of a texture slot. (0, 0) without a geometry or slot, and for
    /// a number that is no slot.
    [[nodiscard]] osg::Vec2f getUV(unsigned int slot) const;
};
