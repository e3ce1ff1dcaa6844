#include "OpenSG/ChangeNotice.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/WritableProperty.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <span>

namespace osg
{

namespace
{

constexpr unsigned NoVertex = std::numeric_limits<unsigned>::max();

/// The numbers of all corners, stride of them for each.
struct CornerNumbers
{
    std::vector<unsigned> numbers;
    unsigned stride;

    [[nodiscard]] std::size_t cornerCount() const { return numbers.size() / stride; }
    [[nodiscard]] std::span<const unsigned> operator[](std::size_t corner) const
    {
        return std::span(numbers).subspan(corner * stride, stride);
    }
};

/// One vertex for each distinct corner, numbered by first use.
struct DistinctCorners
{
    std::vector<unsigned> vertexOfCorner;
    std::vector<std::size_t> firstCornerOfVertex;
};

std::size_t hashOf(std::span<const unsigned> numbers)
{
    std::uint64_t hash = 0;
    for (const unsigned number : numbers) {
        // The finaliser of MurmurHash3 by Appleby, which spreads every bit of its input.
        hash += number + 0x9e3779b97f4a7c15U;
        hash = (hash ^ (hash >> 33)) * 0xff51afd7ed558ccdU;
        hash = (hash ^ (hash >> 33)) * 0xc4ceb9fe1a85ec53U;
        hash ^= hash >> 33;
    }
    return static_cast<std::size_t>(hash);
}

DistinctCorners findDistinctCorners(const CornerNumbers& corners)
{
    const std::size_t count = corners.cornerCount();
    DistinctCorners result;
    result.vertexOfCorner.reserve(count);
    // Open addressing, at most half full.
    std::vector<unsigned> vertexInSlot(std::bit_ceil(2 * count + 1), NoVertex);
    const std::size_t slotMask = vertexInSlot.size() - 1;
    for (std::size_t corner = 0; corner < count; ++corner) {
        const auto numbers = corners[corner];
        const auto isSame = [&](unsigned vertex) {
            return std::ranges::equal(numbers, corners[result.firstCornerOfVertex[vertex]]);
        };
        std::size_t slot = hashOf(numbers) & slotMask;
        while (vertexInSlot[slot] != NoVertex && !isSame(vertexInSlot[slot]))
            slot = (slot + 1) & slotMask;
        if (vertexInSlot[slot] == NoVertex) {
            vertexInSlot[slot] = static_cast<unsigned>(result.firstCornerOfVertex.size());
            result.firstCornerOfVertex.push_back(corner);
        }
        result.vertexOfCorner.push_back(vertexInSlot[slot]);
    }
    return result;
}

/// Gives a property one element for each vertex, by number `offset` of the vertex's first corner.
RefPtr<GeoProperty> spreadOverVertices(const GeoPropertyPtr& property, unsigned offset,
                                       const CornerNumbers& corners,
                                       const DistinctCorners& distinct)
{
    std::vector<unsigned> sourceIds;
    sourceIds.reserve(distinct.firstCornerOfVertex.size());
    for (const std::size_t corner : distinct.firstCornerOfVertex)
        sourceIds.push_back(corners[corner][offset]);
    RefPtr<GeoProperty> result = writable(property);
    result->gather(sourceIds);
    return result;
}

} // namespace

void Geometry::makeSingleIndexed()
{
    if (getCornerStride() == 1 || getIndices() == NullFC)
        return;
    const CornerNumbers corners{getIndices()->getValues(), getCornerStride()};
    const DistinctCorners distinct = findDistinctCorners(corners);

    std::uint16_t joinedMask = 0;
    for (const std::uint16_t entry : getIndexMapping())
        joinedMask = static_cast<std::uint16_t>(joinedMask | entry);

    FieldMask written = IndicesFieldMask | IndexMappingFieldMask;
    std::vector<RefPtr<GeoProperty>> properties; // held, since a notice may replace them
    for (unsigned n = 0; n < VertexPropertyCount; ++n) {
        const auto mapBit = static_cast<std::uint16_t>(1U << n);
        const GeoPropertyPtr property = getVertexProperty(n);
        if (property == NullFC || !(joinedMask & mapBit))
            continue;
        properties.push_back(
            spreadOverVertices(property, getCornerOffset(mapBit), corners, distinct));
        setVertexProperty(n, properties.back());
        written |= vertexPropertyFieldMask(n);
    }
    const RefPtr<GeoIndices> indices(
        indicesToEdit(GeometryPtr(this), distinct.firstCornerOfVertex.size()));
    indices->setValues(distinct.vertexOfCorner);
    setIndexMapping({joinedMask});

    for (const auto& property : properties)
        notifyChanged(property.get(), FieldMask::all());
    notifyChanged(indices.get(), GeometryPtr(this), written);
}

} // namespace osg
