#include "formats/obj/UVLines.h"

#include "document/NumberText.h"

#include <numeric>

namespace uvtool
{

UVLines::UVLines(const Document& document, const ObjPayload& payload)
    : document_(document), payload_(payload), isKept_(payload.vtCount, 1),
      numberOfRead_(payload.vtCount, absentIndex), numberOfNew_(document.geometries.size())
{
    for (const ObjPayload::Numbers& numbers : payload.geometries) {
        for (const std::uint32_t vt : numbers.vtOfValue)
            isKept_[vt] = 0;
    }
    for (std::size_t g = 0; g < document.geometries.size(); ++g) {
        for (const std::uint32_t value : uvsOf(g).ofCorner) {
            if (value < readCount(g))
                isKept_[numbersRead(g).vtOfValue[value]] = 1;
        }
    }
}

std::uint32_t UVLines::newCount(std::size_t geometry) const
{
    return static_cast<std::uint32_t>(uvsOf(geometry).values.size() - readCount(geometry));
}

void UVLines::keep(std::uint32_t vt)
{
    if (vt < isKept_.size())
        isKept_[vt] = 1;
}

void UVLines::numberLine(std::uint32_t vt, const ObjStatement& line)
{
    lines_.push_back(line.withoutComment());
    if (isKept_[vt] != 0)
        numberOfRead_[vt] = next_++;
}

void UVLines::numberNew(std::size_t geometry)
{
    if (sourcesOfCopies(geometry).empty()) {
        numberByPlaces(geometry);
        return;
    }
    std::vector<std::uint32_t>& numbers = numberOfNew_[geometry];
    numbers.resize(newCount(geometry));
    std::iota(numbers.begin(), numbers.end(), next_);
    next_ += newCount(geometry);
}

void UVLines::numberByPlaces(std::size_t geometry)
{
    std::vector<std::uint32_t>& numbers = numberOfNew_[geometry];
    for (const std::uint32_t place : placesOfNewValues(geometry)) {
        if (place == absentIndex) {
            numbers.push_back(next_++);
            continue;
        }
        if (numberOfPlace_[place] == absentIndex)
            numberOfPlace_[place] = next_++;
        numbers.push_back(numberOfPlace_[place]);
    }
}

/// [new value] a number of what it stands for, and where; absentIndex where it isn't used.
std::vector<std::uint32_t> UVLines::placesOfNewValues(std::size_t geometry)
{
    const DocumentGeometry& corners = document_.geometries[geometry];
    const CornerAttribute<Vec2f>& uvs = uvsOf(geometry);
    std::vector<std::uint32_t> places(newCount(geometry), absentIndex);
    for (std::size_t c = 0; c < corners.cornerCount(); ++c) {
        if (!uvs.has(c) || uvs.ofCorner[c] < readCount(geometry))
            continue;
        std::uint32_t& place = places[uvs.ofCorner[c] - readCount(geometry)];
        const Vec3d& at = corners.positions.at(c);
        if (place == absentIndex)
            place = places_.of({at[0], at[1], at[2], uvs.at(c)[0], uvs.at(c)[1]});
    }
    numberOfPlace_.resize(places_.size(), absentIndex);
    return places;
}

bool UVLines::writeLine(std::uint32_t vt)
{
    written_ += isKept_[vt] != 0 ? 1U : 0U;
    return isKept_[vt] != 0;
}

void UVLines::writeNew(std::size_t geometry, const std::string& lineEnd, std::string& out)
{
    const std::vector<std::uint32_t>& numbers = numberOfNew_[geometry];
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (numbers[i] != written_)
            continue; // written before
        appendNew(geometry, i, out);
        out += lineEnd;
        ++written_;
    }
}

/// A thin triangle must not turn over for readers that don't round to floats.
void UVLines::appendNew(std::size_t geometry, std::size_t i, std::string& out) const
{
    if (!sourcesOfCopies(geometry).empty()) {
        out += lines_[numbersRead(geometry).vtOfValue[sourcesOfCopies(geometry)[i]]];
        return;
    }
    const Vec2f& value = uvsOf(geometry).values[readCount(geometry) + i];
    out += "vt ";
    appendExactNumber(out, value[0]);
    out += ' ';
    appendExactNumber(out, value[1]);
}

std::uint32_t UVLines::numberOf(std::size_t geometry, std::uint32_t corner) const
{
    const CornerAttribute<Vec2f>& uvs = uvsOf(geometry);
    if (!uvs.has(corner))
        return absentIndex;
    const std::uint32_t value = uvs.ofCorner[corner];
    if (value < readCount(geometry))
        return numberOf(numbersRead(geometry).vtOfValue[value]);
    return numberOfNew_[geometry][value - readCount(geometry)];
}

std::uint32_t UVLines::numberOf(std::uint32_t vt) const
{
    return vt < numberOfRead_.size() ? numberOfRead_[vt] : absentIndex;
}

std::string UVLines::wordFor(std::uint32_t number, std::string_view before) const
{
    if (before.starts_with('-'))
        return std::to_string(std::int64_t{number} - std::int64_t{written_});
    return std::to_string(std::int64_t{number} + 1);
}

} // namespace uvtool
