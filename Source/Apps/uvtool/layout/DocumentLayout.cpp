#include "layout/DocumentLayout.h"

#include "document/Transform.h"

namespace uvtool
{

void DocumentLayout::add(const DocumentGeometry& geometry, std::uint32_t number, std::size_t slot,
                         const Survey& survey, const std::vector<char>& isLeftOut)
{
    const auto firstUV = static_cast<std::uint32_t>(uvs.size());
    uvs.resize(uvs.size() + survey.mesh.vertexCount());
    for (std::size_t t = 0; t < survey.mesh.triangleCount(); ++t) {
        const std::uint32_t source = survey.mesh.sourceTriangle[t];
        bool isMapped = true;
        for (std::size_t k = 0; k < 3; ++k) {
            const std::uint32_t uv = firstUV + survey.mesh.triangles[3 * t + k];
            const std::uint32_t corner = geometry.triangles[3 * std::size_t{source} + k];
            corners.push_back(uv);
            if (geometry.uvs[slot].has(corner))
                uvs[uv] = geometry.uvs[slot].at(corner);
            else
                isMapped = false;
        }
        const bool counts =
            isMapped && !survey.isClosed(t) && (isLeftOut.empty() || isLeftOut[source] == 0);
        islandOfTriangle.push_back(counts ? islandCount + survey.islands.ofTriangle[t] : -1);
        sourceOfTriangle.push_back({number, source});
    }
    islandCount += static_cast<std::int32_t>(survey.islands.count());
}

void DocumentLayout::add(const DocumentLayout& other)
{
    const auto firstUV = static_cast<std::uint32_t>(uvs.size());
    uvs.insert(uvs.end(), other.uvs.begin(), other.uvs.end());
    for (const std::uint32_t corner : other.corners)
        corners.push_back(firstUV + corner);
    for (const std::int32_t island : other.islandOfTriangle)
        islandOfTriangle.push_back(island < 0 ? island : islandCount + island);
    sourceOfTriangle.insert(sourceOfTriangle.end(), other.sourceOfTriangle.begin(),
                            other.sourceOfTriangle.end());
    islandCount += other.islandCount;
}

std::vector<Vec3d> scenePositions(const Document& document, const DocumentLayout& layout)
{
    std::vector<Vec3d> positions;
    positions.reserve(layout.corners.size());
    for (const TriangleSource& source : layout.sourceOfTriangle) {
        const DocumentGeometry& geometry = document.geometries[source.geometry];
        for (std::size_t k = 0; k < 3; ++k)
            positions.push_back(toScene(
                geometry.toWorld,
                geometry.positions.at(geometry.triangles[3 * std::size_t{source.triangle} + k])));
    }
    return positions;
}

} // namespace uvtool
