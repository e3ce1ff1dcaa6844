#include "formats/obj/ObjText.h"

namespace uvtool
{
namespace
{

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || isLineEnd(c) || c == '\v' || c == '\f';
}

/// Where the comment of a line starts: at a `#` that begins a word. Names may hold one inside.
std::size_t commentStart(std::string_view line)
{
    std::size_t at = line.find('#');
    while (at != std::string_view::npos && at > 0 && !isSpace(line[at - 1]))
        at = line.find('#', at + 1);
    return at;
}

/// True at a backslash that joins its line with the next.
bool joinsLines(std::string_view text, std::size_t at)
{
    return text[at] == '\\' && at + 1 < text.size() && isLineEnd(text[at + 1]);
}

} // namespace

bool ObjStatements::next(ObjStatement& statement)
{
    while (_at < _text.size()) {
        while (_at < _text.size() && isSpace(_text[_at]))
            ++_at;
        const std::size_t end = endOfStatement(_at);
        const std::string_view line = _text.substr(_at, end - _at);
        _at = end;
        std::string_view rest = line.substr(0, commentStart(line));
        const std::string_view keyword = takeWord(rest);
        if (!keyword.empty()) {
            statement = {keyword, rest, line};
            return true;
        }
    }
    return false;
}

std::size_t ObjStatements::endOfStatement(std::size_t from) const
{
    std::size_t at = from;
    bool inComment = false; // a backslash that ends a comment (a path, say) joins nothing
    while (at < _text.size() && !isLineEnd(_text[at])) {
        inComment = inComment || (_text[at] == '#' && (at == from || isSpace(_text[at - 1])));
        if (inComment || !joinsLines(_text, at)) {
            ++at;
            continue;
        }
        const bool carriageReturn = _text[at + 1] == '\r';
        at += 2;
        if (carriageReturn && at < _text.size() && _text[at] == '\n')
            ++at;
    }
    return at;
}

std::string_view takeWord(std::string_view& rest)
{
    std::size_t begin = 0;
    while (begin < rest.size() && (isSpace(rest[begin]) || joinsLines(rest, begin)))
        ++begin;
    std::size_t end = begin;
    while (end < rest.size() && !isSpace(rest[end]) && !joinsLines(rest, end))
        ++end;
    const std::string_view word = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return word;
}

ObjCornerText splitCorner(std::string_view word)
{
    ObjCornerText corner;
    const std::size_t first = word.find('/');
    corner.v = word.substr(0, first);
    if (first == std::string_view::npos)
        return corner;
    const std::string_view behind = word.substr(first + 1);
    const std::size_t second = behind.find('/');
    corner.vt = behind.substr(0, second);
    if (second != std::string_view::npos)
        corner.vn = behind.substr(second + 1);
    return corner;
}

} // namespace uvtool
