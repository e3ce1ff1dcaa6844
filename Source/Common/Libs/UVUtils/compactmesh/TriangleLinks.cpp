#include "UVUtils/compactmesh/TriangleLinks.h"

#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/UVSlot.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace
{

using Ids = std::vector<unsigned int>;

constexpr unsigned int unlinked = 0xFFFFFFFF;

/// The triangles of the mesh, and how those of the surfaces are found among them.
struct MeshFaces
{
    std::span<const unsigned int> corners;     ///< compact ids
    std::span<const unsigned int> faceMapping; ///< triangle of the surfaces -> triangle of the mesh
    unsigned int vertexCount;
};

/// Links the vertices of one surface whose first triangle has the number firstFace; false when
/// something is out of range.
bool linkSurface(std::span<const unsigned int> corners, std::size_t firstFace,
                 const MeshFaces& mesh, std::span<unsigned int> linkOfVertex)
{
    for (std::size_t corner = 0; corner < corners.size(); corner += 3) {
        const std::size_t twin = 3 * std::size_t{mesh.faceMapping[firstFace + corner / 3]};
        if (twin + 3 > mesh.corners.size())
            return false;
        for (std::size_t k = 0; k < 3; ++k) {
            const unsigned int vertex = corners[corner + k];
            const unsigned int compactId = mesh.corners[twin + k];
            if (vertex >= linkOfVertex.size() || compactId >= mesh.vertexCount)
                return false;
            linkOfVertex[vertex] = compactId;
        }
    }
    return true;
}

/// Position and UV of a vertex that no triangle uses, as bits: this is for telling vertices apart,
/// and bits have an order even where there is no number.
struct LooseVertex
{
    std::array<std::uint32_t, 5> bits{};
    unsigned int id = 0;
    auto operator<=>(const LooseVertex&) const = default;
};

LooseVertex looseVertex(const osg::Geometry& geometry, unsigned int vertex,
                        const osg::GeoTexCoords2fPtr& slot, unsigned int id)
{
    const osg::Pnt3f position = geometry.getPositions()->getValue(vertex);
    const osg::Vec2f uv = slot ? slot->getValue(vertex) : osg::Vec2f();
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    return {{bits(position[0]), bits(position[1]), bits(position[2]), bits(uv[0]), bits(uv[1])},
            id};
}

std::vector<LooseVertex> looseVerticesOf(const std::vector<ActiveSurface>& surfaces,
                                         const Ids& linkOfF, kyUVTypes::UVSet set)
{
    std::vector<LooseVertex> loose;
    for (const ActiveSurface& surface : surfaces)
        for (unsigned int i = 0; i < surface.vertexCount; ++i)
            if (linkOfF[surface.firstId + i] == unlinked)
                loose.push_back(looseVertex(*surface.geometry, i, uvSlot(surface.geometry, set),
                                            surface.firstId + i));
    std::sort(loose.begin(), loose.end());
    return loose;
}

std::vector<LooseVertex> looseVerticesOf(const osg::Geometry& mesh, const Ids& linkOfF,
                                         unsigned int vertexCount, kyUVTypes::UVSet set)
{
    std::vector<bool> isLinked(vertexCount, false);
    for (const unsigned int compactId : linkOfF)
        if (compactId != unlinked)
            isLinked[compactId] = true;
    const auto slot =
        osg::dcast<osg::GeoTexCoords2f>(mesh.getTexSlot(static_cast<unsigned int>(set)));
    std::vector<LooseVertex> loose;
    for (unsigned int i = 0; i < vertexCount; ++i)
        if (!isLinked[i])
            loose.push_back(looseVertex(mesh, i, slot, i));
    std::sort(loose.begin(), loose.end());
    return loose;
}

/// One to one in the order of their values. Where the mesh has fewer of them, the last ones share a
/// vertex: any is right, since nothing can be seen of a vertex without triangles.
void linkLooseVertices(const std::vector<ActiveSurface>& surfaces, const osg::Geometry& mesh,
                       unsigned int vertexCount, kyUVTypes::UVSet set, Ids& linkOfF)
{
    const std::vector<LooseVertex> ofSurfaces = looseVerticesOf(surfaces, linkOfF, set);
    if (ofSurfaces.empty())
        return;
    const std::vector<LooseVertex> ofMesh = looseVerticesOf(mesh, linkOfF, vertexCount, set);
    for (std::size_t i = 0; i < ofSurfaces.size(); ++i)
        linkOfF[ofSurfaces[i].id] = ofMesh.empty() ? 0 : ofMesh[std::min(i, ofMesh.size() - 1)].id;
}

} // namespace

std::optional<std::vector<unsigned int>>
linkThroughTriangles(const std::vector<ActiveSurface>& surfaces, const osg::Geometry& mesh,
                     std::span<const unsigned int> faceMapping, kyUVTypes::UVSet set)
{
    const IndexView meshIndices(mesh.getIndices());
    const unsigned int vertexCount = mesh.getPositions()->getSize();
    const MeshFaces meshFaces{meshIndices.ids(), faceMapping, vertexCount};

    Ids linkOfF(surfaces.empty() ? 0 : surfaces.back().firstId + surfaces.back().vertexCount,
                unlinked);
    std::size_t faceCount = 0;
    for (const ActiveSurface& surface : surfaces) {
        const IndexView indices(surface.geometry->getIndices());
        const auto corners = indices.triangles();
        const std::span links = std::span(linkOfF).subspan(surface.firstId, surface.vertexCount);
        if (faceCount + corners.size() / 3 > faceMapping.size() ||
            !linkSurface(corners, faceCount, meshFaces, links))
            return std::nullopt;
        faceCount += corners.size() / 3;
    }
    if (faceCount != faceMapping.size())
        return std::nullopt;
    linkLooseVertices(surfaces, mesh, vertexCount, set, linkOfF);
    return linkOfF;
}
