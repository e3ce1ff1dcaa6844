#include "document/SlotWriter.h"

#include "document/TornPolygons.h"

namespace uvtool
{

std::size_t writeSlot(DocumentGeometry& geometry, std::size_t slot, const SlotValues& uvs)
{
    const std::size_t tornCount = splitTornPolygons(geometry, uvs.ofTriangleCorner);

    CornerAttribute<Vec2f>& attribute = geometry.uvs[slot];
    if (!attribute.exists())
        attribute.ofCorner.assign(geometry.cornerCount(), absentIndex);
    const auto firstNew = static_cast<std::uint32_t>(attribute.values.size());
    for (std::size_t i = 0; i < geometry.triangles.size(); ++i) {
        if (uvs.ofTriangleCorner[i] != absentIndex)
            attribute.ofCorner[geometry.triangles[i]] = firstNew + uvs.ofTriangleCorner[i];
    }
    attribute.values.insert(attribute.values.end(), uvs.values.begin(), uvs.values.end());
    geometry.changedSlots.set(slot);
    return tornCount;
}

} // namespace uvtool
