#pragma once

#include "document/Document.h"
#include "formats/obj/ObjText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace uvtool
{

/// Number counted from 0 of a word that may count back from the values before it; absentIndex for
/// what is none.
std::uint32_t absoluteNumber(std::string_view word, std::uint32_t before);

/// The `v` lines of an OBJ that is written again, with copies for corners that a command parted:
/// those of a geometry stand before its first face and are the lines of their sources, weights and
/// colours included.
///
/// The text is gone through twice. The first pass says `number...` of what it meets, the second one
/// `write...`.
class VertexLines
{
public:
    VertexLines(const Document& document, const ObjPayload& payload)
        : document_(document), payload_(payload), firstCopy_(document.geometries.size(), 0)
    {}

    std::size_t copyCount(std::size_t geometry) const
    {
        return document_.geometries[geometry].sourceOfNewPosition.size();
    }

    void numberLine(const ObjStatement& line);
    void numberCopies(std::size_t geometry);

    void writeLine() { ++read_, ++written_; }
    void writeCopies(std::size_t geometry, const std::string& lineEnd, std::string& out);

    /// The word for the vertex of a corner, in a file without copies the one that stands there.
    std::string wordOf(std::size_t geometry, std::uint32_t corner, std::string_view before) const;
    /// The same for a word of a statement that no geometry has.
    std::string wordOf(std::string_view before) const;

private:
    const DocumentGeometry& geometryAt(std::size_t g) const { return document_.geometries[g]; }
    std::string wordFor(std::uint32_t number, std::string_view before) const;

    const Document& document_;
    const ObjPayload& payload_;
    std::vector<std::string_view> lines_;     ///< [v of the file] without comment and line end
    std::vector<std::uint32_t> numberOfRead_; ///< [v of the file] in the new one, from 0
    std::vector<std::uint32_t> firstCopy_;    ///< [geometry] number of its first copy
    std::uint32_t next_ = 0;
    std::uint32_t read_ = 0;
    std::uint32_t written_ = 0;
};

} // namespace uvtool
