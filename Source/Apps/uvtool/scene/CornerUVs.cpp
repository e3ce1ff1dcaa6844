#include "scene/CornerUVs.h"

#include "cli/ExitStatus.h"
#include "document/SlotWriter.h"
#include "mesh/EqualValues.h"
#include "solver/RoundingRepair.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace uvtool
{
namespace
{

kyUVTypes::UVSet setOf(std::size_t slot)
{
    return static_cast<kyUVTypes::UVSet>(slot);
}

/// Vertices without a value have zeros.
void appendCorners(const osg::GeometryPtr& surface, std::span<const osg::Vector<float, 2>> ofVertex,
                   std::vector<Vec2f>& uvs)
{
    for (const unsigned int vertex : surface->getIndices()->getValues())
        uvs.push_back(vertex < ofVertex.size() ? Vec2f{ofVertex[vertex][0], ofVertex[vertex][1]}
                                               : Vec2f{});
}

/// The new values of one surface, equal ones once, so that a polygon is split only where its
/// triangles really differ.
SlotValues changedValues(std::span<const Vec2f> before, std::span<const Vec2f> after)
{
    FirstUseNumbers<Vec2f, ValueHash> numbers(0);
    SlotValues changed;
    changed.ofTriangleCorner.reserve(after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (after[i] == before[i]) {
            changed.ofTriangleCorner.push_back(absentIndex);
            continue;
        }
        const std::uint32_t number = numbers.of(after[i]);
        if (number == changed.values.size())
            changed.values.push_back(after[i]);
        changed.ofTriangleCorner.push_back(number);
    }
    return changed;
}

void throwUnlessFinite(const std::vector<Vec2f>& values, const std::string& name)
{
    for (const Vec2f& uv : values)
        if (!std::isfinite(uv[0]) || !std::isfinite(uv[1]))
            throw CommandError(Unsound, "the result failed its check, nothing was written: \"" +
                                            name + "\" has a UV that isn't finite");
}

} // namespace

std::vector<Vec2f> compactCornerUVs(const SceneGeometry& scene, std::size_t slot)
{
    kyUVUtils::UVArray ofVertex;
    kyUVUtils::getUVValues(scene.core(), scene.node, setOf(slot), ofVertex);
    std::vector<Vec2f> uvs;
    uvs.reserve(scene.triangles.size());
    std::size_t first = 0;
    scene.forEachSurface([&](const osg::GeometryPtr& surface) {
        appendCorners(surface, std::span(ofVertex).subspan(std::min(first, ofVertex.size())), uvs);
        first += surface->getPositions()->getSize();
    });
    return uvs;
}

std::vector<Vec2f> surfaceCornerUVs(const SceneGeometry& scene, std::size_t slot)
{
    std::vector<Vec2f> uvs;
    uvs.reserve(scene.triangles.size());
    scene.forEachSurface([&](const osg::GeometryPtr& surface) {
        appendCorners(surface, kyUVUtils::getUVValuesLocal(surface, setOf(slot)), uvs);
    });
    return uvs;
}

std::vector<std::uint32_t> compactCorners(const SceneGeometry& scene, std::size_t slot)
{
    std::vector<std::uint32_t> corners;
    const CompactShellMesh* const mesh =
        CompactShellMesh::getCMesh(scene.core(), scene.node, setOf(slot));
    if (mesh == nullptr)
        return corners;
    corners.reserve(scene.triangles.size());
    unsigned int first = 0;
    scene.forEachSurface([&](const osg::GeometryPtr& surface) {
        for (const unsigned int vertex : surface->getIndices()->getValues())
            corners.push_back(mesh->mapVertFToC(first + vertex));
        first += surface->getPositions()->getSize();
    });
    return corners;
}

std::vector<Vec2f> documentCornerUVs(const DocumentGeometry& geometry, std::size_t slot)
{
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    const CornerAttribute<Vec2f>& attribute = geometry.uvs[slot];
    std::vector<Vec2f> uvs;
    uvs.reserve(geometry.triangles.size());
    for (const std::uint32_t corner : geometry.triangles)
        uvs.push_back(attribute.has(corner) ? attribute.at(corner) : Vec2f{none, none});
    return uvs;
}

std::size_t writeCornerUVs(DocumentGeometry& geometry, std::size_t slot,
                           std::span<const Vec2f> before, std::span<const Vec2f> after,
                           bool vRunsDownward)
{
    SlotValues changed = changedValues(before, after);
    if (changed.values.empty())
        return 0;
    throwUnlessFinite(changed.values, geometry.name);
    if (vRunsDownward)
        roundForTurnedV(changed.values);
    return writeSlot(geometry, slot, changed);
}

std::size_t writeCornerUVs(Document& document, const SceneGeometry& scene, std::size_t slot,
                           std::span<const Vec2f> before, std::span<const Vec2f> after,
                           bool vRunsDownward)
{
    std::size_t splitPolygons = 0;
    std::size_t first = 0;
    for (const SceneGeometry::Surface& surface : scene.surfaces) {
        if (!surface.fault.empty())
            continue;
        DocumentGeometry& geometry = document.geometries[surface.number];
        const std::size_t count = geometry.triangles.size();
        splitPolygons += writeCornerUVs(geometry, slot, before.subspan(first, count),
                                        after.subspan(first, count), vRunsDownward);
        first += count;
    }
    return splitPolygons;
}

} // namespace uvtool
