#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/compactmesh/WeldKey.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVTypes.h"

#include <span>
#include <vector>

/// The surfaces of a shell as one set of packed arrays over F ids.
struct ShellArrays
{
    /// Where the triangles and vertices of one surface lie.
    struct Range
    {
        unsigned int firstTriangle = 0;
        unsigned int endTriangle = 0;
        unsigned int endVertex = 0;
    };

    std::vector<osg::Pnt3f> positions;   ///< [vertex]
    std::vector<osg::Vec2f> uvs;         ///< [vertex] zero where the slot has none
    std::vector<unsigned int> triangles; ///< [3 * triangle] in surface order
    std::vector<Range> surfaces;

    WeldKey keyOf(unsigned int vertex) const { return {positions[vertex], uvs[vertex]}; }
};

/// Reads the slot as zero where it holds no UVs of two floats. Surfaces are only read.
ShellArrays gatherShell(std::span<const ActiveSurface> surfaces, kyUVTypes::UVSet set);

/// The triangles alone: [3 * triangle] F ids in surface order.
std::vector<unsigned int> gatherTriangles(std::span<const ActiveSurface> surfaces);
