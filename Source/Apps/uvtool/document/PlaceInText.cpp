#include "document/PlaceInText.h"

#include <algorithm>

namespace uvtool
{

std::string placeOfByte(std::string_view text, std::size_t byte)
{
    const std::string_view before = text.substr(0, std::min(byte, text.size()));
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 when there is none
    std::string place = "line ";
    place += std::to_string(line);
    place += ", column ";
    place += std::to_string(before.size() - lineStart);
    return place;
}

} // namespace uvtool
