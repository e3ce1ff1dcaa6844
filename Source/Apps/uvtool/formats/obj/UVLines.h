#pragma once

#include "document/Document.h"
#include "formats/obj/ObjText.h"
#include "mesh/EqualValues.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace uvtool
{

/// The `vt` lines of an OBJ that is written again: those that were read, without the ones that
/// geometries used and none does any more, and new ones of a geometry before its first face.
///
/// New values that geometries have in common, one UV at one position, are one line. Copies for
/// corners that a command parted are a line each, which is the one of their source.
///
/// The text is gone through three times. The first pass says `keep` of what it meets, the second
/// one `number...`, the third one `write...`. Numbers count from 0 over the file.
class UVLines
{
public:
    UVLines(const Document& document, const ObjPayload& payload);

    /// New values of a geometry: those behind the ones that were read.
    std::uint32_t newCount(std::size_t geometry) const;

    void keep(std::uint32_t vt);

    void numberLine(std::uint32_t vt, const ObjStatement& line);
    void numberNew(std::size_t geometry);

    /// False for a line that goes.
    bool writeLine(std::uint32_t vt);
    void writeNew(std::size_t geometry, const std::string& lineEnd, std::string& out);

    /// Number in the new file of the UV of a corner; absentIndex for a corner without.
    std::uint32_t numberOf(std::size_t geometry, std::uint32_t corner) const;
    /// Number in the new file of a line that was read; absentIndex for one that isn't there.
    std::uint32_t numberOf(std::uint32_t vt) const;

    /// The word for a number. One that takes the place of a word that counted back does so too.
    std::string wordFor(std::uint32_t number, std::string_view before) const;

private:
    using Place = std::array<double, 5>;

    const CornerAttribute<Vec2f>& uvsOf(std::size_t g) const
    {
        return document_.geometries[g].uvs[0];
    }
    const std::vector<std::uint32_t>& sourcesOfCopies(std::size_t g) const
    {
        return document_.geometries[g].sourceOfNewUV[0];
    }
    const ObjPayload::Numbers& numbersRead(std::size_t g) const
    {
        return payload_.geometries[document_.geometries[g].source];
    }
    std::size_t readCount(std::size_t g) const { return numbersRead(g).vtOfValue.size(); }

    void numberByPlaces(std::size_t geometry);
    std::vector<std::uint32_t> placesOfNewValues(std::size_t geometry);
    void appendNew(std::size_t geometry, std::size_t i, std::string& out) const;

    const Document& document_;
    const ObjPayload& payload_;
    std::vector<char> isKept_;                ///< [vt of the file]
    std::vector<std::string_view> lines_;     ///< [vt of the file] without comment and line end
    std::vector<std::uint32_t> numberOfRead_; ///< [vt of the file] in the new one
    std::vector<std::vector<std::uint32_t>> numberOfNew_; ///< [geometry][new value]
    FirstUseNumbers<Place, ValueHash> places_{0};
    std::vector<std::uint32_t> numberOfPlace_;
    std::uint32_t next_ = 0;
    std::uint32_t written_ = 0;
};

} // namespace uvtool
