#include "OpenSGUtils/EqualVertices.h"

#include "OpenSGUtils/NumberTable.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

namespace
{

/// So many vertices are hashed at once: by then the places of the table that the first of them need
/// have been fetched.
constexpr unsigned int blockSize = 128;

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

/// The numbers of a property, all kinds of which are made of floats, and their place in a record.
struct FloatColumn
{
    const float* numbers;
    unsigned int width; ///< floats an element
    unsigned int size;  ///< elements
    unsigned int place; ///< of the first float among those of a record
};

/// Vertices as they are compared: records of equal length, two floats a word.
class Records
{
public:
    Records(std::span<const osg::GeoPropertyPtr> properties, FloatEquality equality,
            std::size_t expectedCount)
        : bitsOf_(equality)
    {
        unsigned int floats = 0;
        for (const osg::GeoPropertyPtr& property : properties) {
            const auto width = property->getStride() / unsigned{sizeof(float)};
            columns_.push_back({static_cast<const float*>(std::as_const(*property).getData()),
                                width, property->getSize(), floats});
            floats += width;
        }
        wordCount_ = (floats + 1) / 2;
        block_.resize(std::size_t{blockSize} * wordCount_);
        kept_.reserve(expectedCount * wordCount_);
    }

    /// Packs the records of some vertices, blockSize at most, in the place of those before.
    void pack(unsigned int first, unsigned int count)
    {
        std::fill(block_.begin(), block_.end(), 0);
        for (const FloatColumn& column : columns_)
            packColumn(column, first, std::min(count, column.size - std::min(column.size, first)));
    }

    /// Of packed record i.
    std::uint32_t hash(unsigned int i) const
    {
        std::uint64_t hash = 0;
        for (const std::uint64_t word : record(block_, i)) {
            hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
            hash ^= hash >> 32U;
        }
        return static_cast<std::uint32_t>(hash);
    }

    /// Keeps packed record i behind those that were kept before.
    void keep(unsigned int i)
    {
        const auto words = record(block_, i);
        kept_.insert(kept_.end(), words.begin(), words.end());
    }

    bool isKept(unsigned int i, std::size_t keptRecord) const
    {
        const auto a = record(block_, i);
        const auto b = record(kept_, keptRecord);
        for (std::size_t k = 0; k < wordCount_; ++k)
            if (a[k] != b[k])
                return false;
        return true;
    }

private:
    std::span<const std::uint64_t> record(const std::vector<std::uint64_t>& words,
                                          std::size_t i) const
    {
        return {words.data() + i * wordCount_, wordCount_};
    }

    void packColumn(const FloatColumn& column, unsigned int first, unsigned int count)
    {
        const float* numbers = column.numbers + std::size_t{first} * column.width;
        for (unsigned int k = 0; k < column.width; ++k) {
            const unsigned int place = column.place + k;
            const unsigned int shift = place % 2 * 32;
            std::uint64_t* word = block_.data() + place / 2;
            for (unsigned int i = 0; i < count; ++i, word += wordCount_)
                *word |= std::uint64_t{bitsOf_(numbers[std::size_t{i} * column.width + k])}
                         << shift;
        }
    }

    ComparedBits bitsOf_;
    std::vector<FloatColumn> columns_;
    std::size_t wordCount_ = 0; ///< of a record
    std::vector<std::uint64_t> block_;
    std::vector<std::uint64_t> kept_;
};

} // namespace

JoinedVertices joinEqualVertices(std::span<const osg::GeoPropertyPtr> properties,
                                 unsigned int vertexCount, FloatEquality equality)
{
    // Meshes have about six corners a vertex, so that of corners about a sixth remain.
    const unsigned int expectedCount = vertexCount / 6;
    NumberTable table(expectedCount);
    Records records(properties, equality, expectedCount);
    JoinedVertices joined;
    joined.newIdOf.reserve(vertexCount);
    joined.sources.reserve(expectedCount);
    std::array<std::uint32_t, blockSize> hashes{};
    for (unsigned int first = 0, count = 0; first < vertexCount; first += count) {
        count = std::min(blockSize, vertexCount - first);
        records.pack(first, count);
        for (unsigned int i = 0; i < count; ++i) {
            hashes[i] = records.hash(i);
            table.prefetch(hashes[i]);
        }
        for (unsigned int i = 0; i < count; ++i) {
            const auto next = static_cast<unsigned int>(joined.sources.size());
            const unsigned int newId = table.findOrEnter(
                hashes[i], next, [&](unsigned int number) { return records.isKept(i, number); });
            joined.newIdOf.push_back(newId);
            if (newId != next)
                continue;
            joined.sources.push_back(first + i);
            records.keep(i);
        }
    }
    return joined;
}
