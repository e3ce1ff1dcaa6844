#include "UVUtils/compactmesh/VertexLinks.h"

#include "UVUtils/compactmesh/WeldKey.h"
#include "UVUtils/model/UVSlot.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

namespace
{

using Ids = std::vector<unsigned int>;

/// Position and UV of a vertex as bits: this is for telling vertices apart, and bits have an order
/// even where there is no number.
struct LooseVertex
{
    std::array<std::uint32_t, 5> bits;
    unsigned int id;
    auto operator<=>(const LooseVertex&) const = default;
};

LooseVertex looseVertex(const osg::Geometry& geometry, kyUVTypes::UVSet set, unsigned int vertex,
                        unsigned int id)
{
    const osg::Pnt3f position = geometry.getPositions()->getValue(vertex);
    const auto slot = uvSlot(geometry, set);
    const osg::Vec2f uv = slot ? slot->getValue(vertex) : osg::Vec2f();
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    return {{bits(position[0]), bits(position[1]), bits(position[2]), bits(uv[0]), bits(uv[1])},
            id};
}

/// Those of the surfaces, by F id.
std::vector<LooseVertex> looseVertices(const std::vector<ActiveSurface>& surfaces,
                                       kyUVTypes::UVSet set, const Ids& vertFToC)
{
    std::vector<LooseVertex> loose;
    for (const ActiveSurface& surface : surfaces)
        for (unsigned int i = 0; i < surface.vertexCount; ++i)
            if (vertFToC[surface.firstId + i] == noCompactId)
                loose.push_back(looseVertex(*surface.geometry, set, i, surface.firstId + i));
    std::sort(loose.begin(), loose.end());
    return loose;
}

/// Those of the mesh, by compact id.
std::vector<LooseVertex> looseVertices(const osg::Geometry& mesh, kyUVTypes::UVSet set,
                                       const Ids& vertFToC)
{
    std::vector<bool> isLinked(mesh.getPositions()->getSize(), false);
    for (const unsigned int compactId : vertFToC)
        if (compactId != noCompactId)
            isLinked[compactId] = true;
    std::vector<LooseVertex> loose;
    for (unsigned int i = 0; i < isLinked.size(); ++i)
        if (!isLinked[i])
            loose.push_back(looseVertex(mesh, set, i, i));
    std::sort(loose.begin(), loose.end());
    return loose;
}

/// Those of a sorted list that agree with a vertex in so many of the first bits.
std::span<const LooseVertex> alike(std::span<const LooseVertex> sorted, const LooseVertex& vertex,
                                   std::ptrdiff_t bitCount)
{
    const auto isBefore = [bitCount](const LooseVertex& a, const LooseVertex& b) {
        return std::lexicographical_compare(a.bits.begin(), a.bits.begin() + bitCount,
                                            b.bits.begin(), b.bits.begin() + bitCount);
    };
    const auto [first, last] = std::equal_range(sorted.begin(), sorted.end(), vertex, isBefore);
    return {first, last};
}

} // namespace

std::optional<VertexLinks> linkThroughTriangles(std::span<const unsigned int> trianglesF,
                                                std::size_t vertexCount,
                                                std::span<const unsigned int> meshTriangles,
                                                std::size_t compactCount,
                                                std::span<const unsigned int> faceMapping)
{
    if (trianglesF.size() != meshTriangles.size() || trianglesF.size() != 3 * faceMapping.size())
        return std::nullopt;
    VertexLinks links{Ids(vertexCount, noCompactId)};
    for (std::size_t triangle = 0; triangle < faceMapping.size(); ++triangle) {
        if (faceMapping[triangle] >= faceMapping.size())
            return std::nullopt;
        const auto corners = trianglesF.subspan(3 * triangle, 3);
        const auto twin = meshTriangles.subspan(3 * std::size_t{faceMapping[triangle]}, 3);
        for (std::size_t k = 0; k < 3; ++k) {
            if (twin[k] >= compactCount)
                return std::nullopt;
            const unsigned int before = std::exchange(links.vertFToC[corners[k]], twin[k]);
            links.isTorn |= before != twin[k] && before != noCompactId;
        }
    }
    return links;
}

void linkLooseVertices(const std::vector<ActiveSurface>& surfaces, const osg::Geometry& mesh,
                       kyUVTypes::UVSet set, std::vector<unsigned int>& vertFToC)
{
    if (std::find(vertFToC.begin(), vertFToC.end(), noCompactId) == vertFToC.end())
        return;
    const std::vector<LooseVertex> allOfMesh = looseVertices(mesh, set, vertFToC);
    // What agrees more closely is linked first and leaves the others to one another: two surface
    // vertices with one link would share their UVs from here on.
    for (const std::ptrdiff_t bitCount : {5, 3, 0}) { // position and UV, position, any
        const std::vector<LooseVertex> ofSurfaces = looseVertices(surfaces, set, vertFToC);
        const std::vector<LooseVertex> ofMesh = looseVertices(mesh, set, vertFToC);
        for (const LooseVertex& vertex : ofSurfaces) {
            const auto left = alike(ofMesh, vertex, bitCount);
            const auto there = left.empty() ? alike(allOfMesh, vertex, bitCount) : left;
            if (there.empty())
                continue;
            const auto here = alike(ofSurfaces, vertex, bitCount);
            const auto rank = static_cast<std::size_t>(&vertex - here.data());
            vertFToC[vertex.id] = there[std::min(rank, there.size() - 1)].id;
        }
    }
    std::replace(vertFToC.begin(), vertFToC.end(), noCompactId, 0U);
}

bool agreeInPosition(const std::vector<ActiveSurface>& surfaces, const osg::Geometry& mesh,
                     std::span<const unsigned int> vertFToC)
{
    const auto meshPositions = osg::dcast<osg::GeoPositions3f>(mesh.getPositions());
    if (!meshPositions || vertexCountOf(surfaces) != vertFToC.size())
        return false;
    const auto places = std::as_const(*meshPositions).values();
    for (const ActiveSurface& surface : surfaces) {
        const auto positions = osg::dcast<osg::GeoPositions3f>(surface.geometry->getPositions());
        if (!positions)
            return false;
        for (unsigned int i = 0; i < surface.vertexCount; ++i) {
            const unsigned int compactId = vertFToC[surface.firstId + i];
            if (compactId >= places.size() || !isNear(positions->getData()[i], places[compactId]))
                return false;
        }
    }
    return true;
}
