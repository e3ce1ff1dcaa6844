#include "document/CornerParting.h"

#include "document/TornPolygons.h"

#include <vector>

namespace uvtool
{
namespace
{

/// Numbers of an attribute for the corners of triangles, as the copies of values that are new.
template <class T>
void takeCopies(CornerAttribute<T>& attribute, std::vector<std::uint32_t>& sourceOfNew,
                std::span<const std::uint32_t> triangles,
                std::span<const std::uint32_t> numberOfTriangleCorner)
{
    const std::size_t readCount = attribute.values.size() - sourceOfNew.size();
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        std::uint32_t& ofCorner = attribute.ofCorner[triangles[i]];
        const std::uint32_t number = numberOfTriangleCorner[i];
        if (number == ofCorner)
            continue;
        const std::size_t copy = number - readCount;
        if (copy >= sourceOfNew.size())
            sourceOfNew.resize(copy + 1);
        sourceOfNew[copy] = ofCorner;
        ofCorner = number;
    }
    attribute.values.resize(readCount);
    for (const std::uint32_t source : sourceOfNew)
        attribute.values.push_back(attribute.values[source]);
}

} // namespace

std::size_t partCorners(DocumentGeometry& geometry,
                        std::span<const std::uint32_t> positionOfTriangleCorner)
{
    const std::size_t tornCount = splitTornPolygons(geometry, positionOfTriangleCorner);
    takeCopies(geometry.positions, geometry.sourceOfNewPosition, geometry.triangles,
               positionOfTriangleCorner);
    geometry.keepsPositionsApart = true;
    return tornCount;
}

std::size_t partUVs(DocumentGeometry& geometry, std::size_t slot,
                    std::span<const std::uint32_t> uvOfTriangleCorner)
{
    if (!geometry.uvs[slot].exists())
        return 0;
    const std::size_t tornCount = splitTornPolygons(geometry, uvOfTriangleCorner);
    std::vector<std::uint32_t>& sources = geometry.sourceOfNewUV[slot];
    takeCopies(geometry.uvs[slot], sources, geometry.triangles, uvOfTriangleCorner);
    if (!sources.empty())
        geometry.changedSlots.set(slot);
    return tornCount;
}

} // namespace uvtool
