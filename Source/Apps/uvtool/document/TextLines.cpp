#include "document/TextLines.h"

#include <algorithm>

namespace uvtool
{

std::string_view takeTextLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line.substr(0, line.find('#'));
}

std::string_view takeTextWord(std::string_view& line)
{
    constexpr std::string_view blanks = " \t\r\v\f";
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

std::string quoted(std::string_view word)
{
    std::string text(word.substr(0, 24));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return "\"" + text + (word.size() > 24 ? "..." : "") + "\"";
}

} // namespace uvtool
