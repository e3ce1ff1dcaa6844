#pragma once

#include "document/SlotWriter.h"

/// Gives every triangle corner of a geometry a value of its own.
inline uvtool::SlotValues ownValueForEachCorner(const uvtool::DocumentGeometry& geometry)
{
    uvtool::SlotValues uvs;
    for (std::uint32_t i = 0; i < geometry.triangles.size(); ++i) {
        uvs.values.push_back({static_cast<float>(i), 0.5F});
        uvs.ofTriangleCorner.push_back(i);
    }
    return uvs;
}

/// Gives polygon corners that share a position the same value.
inline uvtool::SlotValues valueForEachPosition(const uvtool::DocumentGeometry& geometry)
{
    uvtool::SlotValues uvs;
    for (std::size_t p = 0; p < geometry.positions.values.size(); ++p)
        uvs.values.push_back({0.125F, static_cast<float>(p)});
    for (const std::uint32_t corner : geometry.triangles)
        uvs.ofTriangleCorner.push_back(geometry.positions.ofCorner[corner]);
    return uvs;
}
