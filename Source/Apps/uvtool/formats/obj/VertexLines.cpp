#include "formats/obj/VertexLines.h"

#include <charconv>

namespace uvtool
{

std::uint32_t absoluteNumber(std::string_view word, std::uint32_t before)
{
    std::int64_t value = 0;
    std::from_chars(word.data(), word.data() + word.size(), value);
    value = value < 0 ? value + before : value - 1;
    return value < 0 || value >= absentIndex ? absentIndex : static_cast<std::uint32_t>(value);
}

void VertexLines::numberLine(const ObjStatement& line)
{
    lines_.push_back(line.withoutComment());
    numberOfRead_.push_back(next_++);
}

void VertexLines::numberCopies(std::size_t geometry)
{
    firstCopy_[geometry] = next_;
    next_ += static_cast<std::uint32_t>(copyCount(geometry));
}

void VertexLines::writeCopies(std::size_t geometry, const std::string& lineEnd, std::string& out)
{
    const ObjPayload::Numbers& numbers = payload_.geometries[geometryAt(geometry).source];
    for (const std::uint32_t source : geometryAt(geometry).sourceOfNewPosition) {
        out += lines_[numbers.vOfPosition[source]];
        out += lineEnd;
        ++written_;
    }
}

std::string VertexLines::wordOf(std::size_t geometry, std::uint32_t corner,
                                std::string_view before) const
{
    const ObjPayload::Numbers& numbers = payload_.geometries[geometryAt(geometry).source];
    const std::uint32_t position = geometryAt(geometry).positions.ofCorner[corner];
    const std::size_t readCount = numbers.vOfPosition.size();
    if (position < readCount)
        return wordFor(numberOfRead_[numbers.vOfPosition[position]], before);
    return wordFor(firstCopy_[geometry] + position - static_cast<std::uint32_t>(readCount), before);
}

std::string VertexLines::wordOf(std::string_view before) const
{
    const std::uint32_t number = absoluteNumber(before, read_);
    return number < numberOfRead_.size() ? wordFor(numberOfRead_[number], before)
                                         : std::string(before);
}

/// Numbers that counted back go on doing so.
std::string VertexLines::wordFor(std::uint32_t number, std::string_view before) const
{
    if (next_ == numberOfRead_.size() && !before.empty())
        return std::string(before);
    if (before.starts_with('-'))
        return std::to_string(std::int64_t{number} - std::int64_t{written_});
    return std::to_string(std::int64_t{number} + 1);
}

} // namespace uvtool
