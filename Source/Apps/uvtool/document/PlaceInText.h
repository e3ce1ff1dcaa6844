#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace uvtool
{

/// "line 3, column 17", for messages; of the byte in front of a byte that is counted from 1, as
/// parsers of JSON count.
std::string placeOfByte(std::string_view text, std::size_t byte);

} // namespace uvtool
