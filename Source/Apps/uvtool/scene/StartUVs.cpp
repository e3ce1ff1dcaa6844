#include "scene/StartUVs.h"

#include "document/SlotWriter.h"
#include "mesh/SolverFrame.h"
#include "solver/RoundingRepair.h"

namespace uvtool
{
namespace
{

/// How far a step along z goes in UV. No edge or face of a mesh that stands straight lies along the
/// line of sight.
constexpr float slantU = 0.37F;
constexpr float slantV = 0.61F;

SlotValues slantedView(const DocumentGeometry& geometry, const SolverFrame& frame)
{
    SlotValues uvs;
    for (const Vec3d& position : scenePositions(geometry)) {
        const Vec3f p = frame.toFrame(position);
        uvs.values.push_back({p[0] + slantU * p[2], p[1] + slantV * p[2]});
    }
    for (const std::uint32_t corner : geometry.triangles)
        uvs.ofTriangleCorner.push_back(geometry.positions.ofCorner[corner]);
    return uvs;
}

} // namespace

std::vector<std::size_t> giveStartUVs(Document& document, std::span<const std::size_t> numbers,
                                      std::size_t slot, bool vRunsDownward)
{
    std::vector<std::size_t> bare;
    std::vector<Vec3d> points;
    for (const std::size_t number : numbers) {
        const DocumentGeometry& geometry = document.geometries[number];
        const std::vector<Vec3d> positions = scenePositions(geometry);
        points.insert(points.end(), positions.begin(), positions.end());
        if (!geometry.uvs[slot].exists())
            bare.push_back(number);
    }
    const SolverFrame frame(points);
    for (const std::size_t number : bare) {
        SlotValues uvs = slantedView(document.geometries[number], frame);
        if (vRunsDownward)
            roundForTurnedV(uvs.values);
        writeSlot(document.geometries[number], slot, uvs);
    }
    return bare;
}

void takeStartUVsBack(DocumentGeometry& geometry, std::size_t slot)
{
    geometry.uvs[slot] = {};
    geometry.changedSlots.reset(slot);
}

} // namespace uvtool
