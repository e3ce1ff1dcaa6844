#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// Bytes from `begin` up to but without `end`.
struct ByteRange
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Takes ranges out of a buffer.
///
/// What lies in a kept range stays, also where it is freed at the same time, and so do bytes that
/// lie in neither. What stays moves forward by multiples of four bytes, so that it keeps its
/// alignment.
class BufferCompaction
{
public:
    BufferCompaction(std::size_t size, std::vector<ByteRange> freed, std::vector<ByteRange> kept);

    /// Where a byte of a kept range lies now.
    std::size_t newOffset(std::size_t offset) const;

    std::string apply(const std::string& bytes) const;

private:
    /// A range that stays, and where it goes.
    struct Piece
    {
        ByteRange from;
        std::size_t to;
    };
    std::vector<Piece> pieces_;
};

} // namespace uvtool
