#include "document/CornerParting.h"

#include "document/TornPolygons.h"

#include <algorithm>

namespace uvtool
{

std::size_t partCorners(DocumentGeometry& geometry,
                        std::span<const std::uint32_t> positionOfTriangleCorner)
{
    const std::size_t tornCount = splitTornPolygons(geometry, positionOfTriangleCorner);
    CornerAttribute<Vec3d>& positions = geometry.positions;
    const std::size_t readCount = geometry.readPositionCount();
    for (std::size_t i = 0; i < geometry.triangles.size(); ++i) {
        std::uint32_t& ofCorner = positions.ofCorner[geometry.triangles[i]];
        const std::uint32_t position = positionOfTriangleCorner[i];
        if (position == ofCorner)
            continue;
        const std::size_t copy = position - readCount;
        if (copy >= geometry.sourceOfNewPosition.size())
            geometry.sourceOfNewPosition.resize(copy + 1);
        geometry.sourceOfNewPosition[copy] = ofCorner;
        ofCorner = position;
    }
    geometry.keepsPositionsApart = true;
    positions.values.resize(readCount);
    for (const std::uint32_t source : geometry.sourceOfNewPosition)
        positions.values.push_back(positions.values[source]);
    return tornCount;
}

} // namespace uvtool
