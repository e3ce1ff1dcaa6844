#include "OpenSGUtils/EqualVertices.h"

#include "OpenSG/Prefetch.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>

namespace
{

/// So many vertices are hashed at once: by then the places of the table that the first of them need
/// have been fetched.
constexpr unsigned int blockSize = 128;
using HashBlock = std::array<std::uint64_t, blockSize>;

/// The bits that a float is compared by.
class ComparedBits
{
public:
    explicit ComparedBits(FloatEquality equality)
        : zeroBits_(equality == FloatEquality::ByBits ? negativeZero : 0)
    {}

    std::uint32_t operator()(float number) const
    {
        const auto bits = std::bit_cast<std::uint32_t>(number);
        return bits == negativeZero ? zeroBits_ : bits;
    }

private:
    static constexpr std::uint32_t negativeZero = std::uint32_t{1} << 31U;
    std::uint32_t zeroBits_; ///< what -0 is taken for
};

std::uint64_t mixed(std::uint64_t hash, std::uint32_t bits)
{
    hash = (hash ^ bits) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 32U);
}

/// The floats of one property; all kinds of vertex properties are made of floats.
class FloatColumn
{
public:
    FloatColumn(const osg::GeoProperty& property, FloatEquality equality)
        : numbers_(static_cast<const float*>(property.getData())),
          width_(property.getStride() / static_cast<unsigned int>(sizeof(float))),
          size_(property.getSize()), bitsOf_(equality)
    {}

    /// Works the numbers of the vertices from `first` on into the first `count` hashes.
    void mixInto(HashBlock& hashes, unsigned int first, unsigned int count) const
    {
        switch (width_) { // known widths make plain loops
        case 2:
            return mixInto<2>(hashes, first, count);
        case 3:
            return mixInto<3>(hashes, first, count);
        case 4:
            return mixInto<4>(hashes, first, count);
        default:
            return mixInto<1>(hashes, first, count);
        }
    }

    bool areEqual(unsigned int a, unsigned int b) const
    {
        for (unsigned int k = 0; k < width_; ++k)
            if (bitsAt(a, k) != bitsAt(b, k))
                return false;
        return true;
    }

private:
    std::uint32_t bitsAt(unsigned int vertex, unsigned int k) const
    {
        return vertex < size_ ? bitsOf_(numbers_[std::size_t{vertex} * width_ + k]) : 0;
    }

    template <unsigned int Width>
    void mixInto(HashBlock& hashes, unsigned int first, unsigned int count) const
    {
        const unsigned int stored = std::min(count, size_ - std::min(size_, first));
        const float* number = numbers_ + std::size_t{first} * width_;
        for (unsigned int i = 0; i < stored; ++i, number += width_)
            for (unsigned int k = 0; k < Width; ++k)
                hashes[i] = mixed(hashes[i], bitsOf_(number[k]));
        for (unsigned int i = stored; i < count; ++i)
            for (unsigned int k = 0; k < Width; ++k)
                hashes[i] = mixed(hashes[i], 0);
    }

    const float* numbers_;
    unsigned int width_; ///< floats an element
    unsigned int size_;
    ComparedBits bitsOf_;
};

/// Open addressing with linear probing. The place of a hash is given by its highest bits, so that
/// growing moves entries from front to back.
class VertexTable
{
public:
    explicit VertexTable(unsigned int expectedCount)
        : bits_(static_cast<unsigned int>(std::bit_width(expectedCount | 7U))),
          entries_(std::size_t{1} << bits_)
    {}

    void prefetch(std::uint32_t hash) const { osg::prefetch(&entries_[placeOf(hash)]); }

    /// The first vertex that `isSame` accepts among those with that hash, or else `vertex`, which
    /// is entered then.
    template <class IsSame>
    unsigned int findOrEnter(std::uint32_t hash, unsigned int vertex, const IsSame& isSame)
    {
        std::size_t place = placeOf(hash);
        for (; entries_[place].vertex != noVertex; place = following(place))
            if (entries_[place].hash == hash && isSame(entries_[place].vertex))
                return entries_[place].vertex;
        entries_[place] = {hash, vertex};
        if (++count_ > entries_.size() / 2)
            grow();
        return vertex;
    }

private:
    static constexpr unsigned int noVertex = std::numeric_limits<unsigned int>::max();
    struct Entry
    {
        std::uint32_t hash = 0;
        unsigned int vertex = noVertex;
    };

    std::size_t placeOf(std::uint32_t hash) const { return std::uint64_t{hash} << bits_ >> 32U; }
    std::size_t following(std::size_t place) const { return (place + 1) & (entries_.size() - 1); }

    void grow()
    {
        ++bits_;
        std::vector<Entry> old(std::size_t{1} << bits_);
        old.swap(entries_);
        for (const Entry& entry : old) {
            if (entry.vertex == noVertex)
                continue;
            std::size_t place = placeOf(entry.hash);
            while (entries_[place].vertex != noVertex)
                place = following(place);
            entries_[place] = entry;
        }
    }

    unsigned int bits_;
    std::vector<Entry> entries_;
    std::size_t count_ = 0;
};

HashBlock hashesOf(std::span<const FloatColumn> columns, unsigned int first, unsigned int count)
{
    HashBlock hashes{};
    for (const FloatColumn& column : columns)
        column.mixInto(hashes, first, count);
    return hashes;
}

bool areEqual(std::span<const FloatColumn> columns, unsigned int a, unsigned int b)
{
    return std::all_of(columns.begin(), columns.end(),
                       [&](const FloatColumn& column) { return column.areEqual(a, b); });
}

/// source  the first vertex that is equal, which may be the vertex itself
void join(JoinedVertices& joined, unsigned int vertex, unsigned int source)
{
    if (source == vertex) {
        joined.newIdOf[vertex] = static_cast<unsigned int>(joined.sources.size());
        joined.sources.push_back(vertex);
    } else {
        joined.newIdOf[vertex] = joined.newIdOf[source];
    }
}

} // namespace

JoinedVertices joinEqualVertices(std::span<const osg::GeoPropertyPtr> properties,
                                 unsigned int vertexCount, FloatEquality equality)
{
    std::vector<FloatColumn> columns;
    for (const osg::GeoPropertyPtr& property : properties)
        columns.emplace_back(*property, equality);
    JoinedVertices joined;
    joined.newIdOf.resize(vertexCount);
    // Meshes have about six corners a vertex, so that of corners about a sixth remain.
    VertexTable table(vertexCount / 4);
    for (unsigned int first = 0, count = 0; first < vertexCount; first += count) {
        count = std::min(blockSize, vertexCount - first);
        const HashBlock hashes = hashesOf(columns, first, count);
        for (unsigned int i = 0; i < count; ++i)
            table.prefetch(static_cast<std::uint32_t>(hashes[i]));
        for (unsigned int i = 0; i < count; ++i)
            join(joined, first + i,
                 table.findOrEnter(
                     static_cast<std::uint32_t>(hashes[i]), first + i,
                     [&](unsigned int other) { return areEqual(columns, first + i, other); }));
    }
    return joined;
}
