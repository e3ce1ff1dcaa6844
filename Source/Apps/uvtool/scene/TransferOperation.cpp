#include "scene/TransferOperation.h"

#include "cli/ExitStatus.h"
#include "scene/VertexNormals.h"

#include <cmath>

namespace uvtool
{
namespace
{

/// The library's ways over the surface end where 1e-3 is left, which shall be less than any
/// triangle worth having: of a box of some thousands, and not of one near 1.
constexpr int doublings = 12;

/// From where rays start, in units of a box near 1.
constexpr float offsetOfRays = 0.0001F;

void addPoints(const Document& document, std::span<const std::size_t> numbers,
               std::vector<Vec3d>& points)
{
    for (const std::size_t number : numbers) {
        const std::vector<Vec3d> own = scenePositions(document.geometries[number]);
        points.insert(points.end(), own.begin(), own.end());
    }
}

/// Keeps the triangles that have a UV at every corner.
void keepMappedTriangles(std::size_t slot, DocumentGeometry& geometry)
{
    std::vector<std::uint32_t> triangles;
    std::vector<std::uint32_t> polygons;
    for (std::size_t t = 0; t < geometry.triangleCount(); ++t) {
        if (!geometry.isMapped(t, slot))
            continue;
        polygons.push_back(geometry.polygonOfTriangle[t]);
        for (std::size_t k = 0; k < 3; ++k)
            triangles.push_back(geometry.triangles[3 * t + k]);
    }
    geometry.triangles = std::move(triangles);
    geometry.polygonOfTriangle = std::move(polygons);
}

} // namespace

SolverFrame transferFrame(const Document& source, std::span<const std::size_t> sourceNumbers,
                          const Document& target, std::span<const std::size_t> targetNumbers)
{
    std::vector<Vec3d> points;
    addPoints(source, sourceNumbers, points);
    addPoints(target, targetNumbers, points);
    return SolverFrame(points).doubled(doublings);
}

SceneGeometry makeTransferSource(const Document& document, std::span<const std::size_t> numbers,
                                 std::size_t slot, const SolverFrame& frame)
{
    Document mapped;
    std::vector<std::size_t> mappedNumbers;
    for (const std::size_t number : numbers) {
        DocumentGeometry geometry = document.geometries[number];
        keepMappedTriangles(slot, geometry);
        if (geometry.triangleCount() == 0)
            continue;
        mappedNumbers.push_back(mapped.geometries.size());
        mapped.geometries.push_back(std::move(geometry));
    }
    return makeScene(
        mapped, mappedNumbers, slot, mappedNumbers.size() > 1,
        [&mapped](std::size_t number) { return distinctCorners(mapped.geometries[number]); },
        frame);
}

SceneGeometry makeTransferTarget(const Document& document, std::span<const std::size_t> numbers,
                                 std::size_t slot, bool isShell, const SolverFrame& frame)
{
    SceneGeometry target = makeScene(
        document, numbers, slot, isShell,
        [&document](std::size_t number) { return cornersByPosition(document.geometries[number]); },
        frame);
    addVertexNormals(document, target);
    return target;
}

TransferOperation::TransferOperation(const SceneGeometry& source, std::size_t slot,
                                     kyTransferGeoProperties::SampleMethod method)
    : source_(source.node), slot_(static_cast<kyUVTypes::UVSet>(slot)), transfer_(source.node)
{
    transfer_.setSampleMethod(method);
    transfer_.setOffsetAlongNormal(std::ldexp(offsetOfRays, doublings));
    if (!transfer_.initFromSource(source.node, slot_))
        throw CommandError(Failed, "the library can make nothing of the source");
}

bool TransferOperation::writeTo(const SceneGeometry& target,
                                const std::function<void(float)>& progress)
{
    transfer_.setProgressCallback(progress);
    return transfer_.transferUVs(target.node, slot_);
}

} // namespace uvtool
