#pragma once

#include "document/Document.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace uvtool
{

/// One statement of an OBJ file: its keyword and what follows, up to a comment or the line's end.
/// A statement may run over several lines, joined by a backslash at the end of a line.
struct ObjStatement
{
    std::string_view keyword;
    std::string_view rest;
    std::string_view line; ///< all of it with its comment, without the line's end

    /// From the keyword to the last word.
    std::string_view withoutComment() const;
};

/// Walks over the statements of a text, blank lines and comments left out.
class ObjStatements
{
public:
    explicit ObjStatements(std::string_view text) : text_(text) {}

    /// False at the end of the text.
    bool next(ObjStatement& statement);

private:
    std::size_t endOfStatement(std::size_t from) const;

    std::string_view text_;
    std::size_t at_ = 0;
};

/// Cuts the next word off `rest`; empty when there is none. Joined line ends count as space.
std::string_view takeWord(std::string_view& rest);

/// A corner of a face as it is written: `v`, `v/vt`, `v//vn` or `v/vt/vn`. A part that isn't there
/// is empty.
struct ObjCornerText
{
    std::string_view v;
    std::string_view vt;
    std::string_view vn;
};

ObjCornerText splitCorner(std::string_view word);

/// What the reader keeps for the writer: the text itself, and which of its numbers the geometries
/// use.
struct ObjPayload : FormatPayload
{
    /// Numbers in the file, counted from 0, of the values of a geometry.
    struct Numbers
    {
        std::vector<std::uint32_t> vOfPosition;
        std::vector<std::uint32_t> vtOfValue; ///< of the slot's values as they were read
        std::vector<std::uint32_t> vnOfNormal;
    };

    std::string text;
    std::vector<Numbers> geometries; ///< by DocumentGeometry::source
    std::uint32_t vtCount = 0;
};

} // namespace uvtool
