#include "formats/gltf/BufferCompaction.h"

#include <algorithm>
#include <utility>

namespace uvtool
{
namespace
{

constexpr std::size_t alignment = 4;

/// Sorted, without empty ones and without overlaps.
std::vector<ByteRange> merged(std::vector<ByteRange> ranges)
{
    std::sort(ranges.begin(), ranges.end(),
              [](const ByteRange& a, const ByteRange& b) { return a.begin < b.begin; });
    std::vector<ByteRange> result;
    for (const ByteRange& range : ranges) {
        if (range.begin == range.end)
            continue;
        if (!result.empty() && range.begin <= result.back().end)
            result.back().end = std::max(result.back().end, range.end);
        else
            result.push_back(range);
    }
    return result;
}

/// The parts of `ranges` that lie outside `without`; both merged.
std::vector<ByteRange> difference(const std::vector<ByteRange>& ranges,
                                  const std::vector<ByteRange>& without)
{
    std::vector<ByteRange> result;
    auto next = without.begin();
    for (ByteRange range : ranges) {
        while (next != without.end() && next->end <= range.begin)
            ++next;
        for (auto cut = next; cut != without.end() && cut->begin < range.end; ++cut) {
            if (cut->begin > range.begin)
                result.push_back({range.begin, cut->begin});
            range.begin = std::min(cut->end, range.end);
        }
        if (range.begin < range.end)
            result.push_back(range);
    }
    return result;
}

} // namespace

BufferCompaction::BufferCompaction(std::size_t size, std::vector<ByteRange> freed,
                                   std::vector<ByteRange> kept)
{
    const std::vector<ByteRange> removed =
        difference(merged(std::move(freed)), merged(std::move(kept)));
    std::size_t to = 0;
    for (const ByteRange& range : difference({{0, size}}, removed)) {
        to += (range.begin - to) % alignment;
        pieces_.push_back({range, to});
        to += range.end - range.begin;
    }
}

std::size_t BufferCompaction::newOffset(std::size_t offset) const
{
    auto behind = std::upper_bound(pieces_.begin(), pieces_.end(), offset,
                                   [](std::size_t o, const Piece& p) { return o < p.from.begin; });
    if (behind == pieces_.begin())
        return 0; // an empty range in front of everything
    const Piece& piece = *--behind;
    return offset - piece.from.begin + piece.to;
}

std::string BufferCompaction::apply(const std::string& bytes) const
{
    std::string result;
    for (const Piece& piece : pieces_) {
        result.resize(piece.to, '\0');
        result.append(bytes, piece.from.begin, piece.from.end - piece.from.begin);
    }
    return result;
}

} // namespace uvtool
