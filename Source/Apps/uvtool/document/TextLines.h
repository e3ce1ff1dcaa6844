#pragma once

#include <string>
#include <string_view>

namespace uvtool
{

// Text files of lines of words with blanks or tabs between them, as a user writes them.

/// Cuts the next line off `text`, without its comment, which a `#` begins.
std::string_view takeTextLine(std::string_view& text);

/// Cuts the next word off `line`; empty when there is none.
std::string_view takeTextWord(std::string_view& line);

/// A word as a message may show it: the start of it, and printable.
std::string quoted(std::string_view word);

} // namespace uvtool
