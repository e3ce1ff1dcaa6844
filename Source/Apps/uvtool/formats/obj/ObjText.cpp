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

std::string_view ObjStatement::withoutComment() const
{
    const std::size_t last = rest.find_last_not_of(" \t");
    const char* const end = rest.data() + (last == std::string_view::npos ? 0 : last + 1);
    return {keyword.data(), static_cast<std::size_t>(end - keyword.data())};
}

bool ObjStatements::next(ObjStatement& statement)
{
    while (at_ < text_.size()) {
        while (at_ < text_.size() && isSpace(text_[at_]))
            ++at_;
        const std::size_t end = endOfStatement(at_);
        const std::string_view line = text_.substr(at_, end - at_);
        at_ = end;
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
    while (at < text_.size() && !isLineEnd(text_[at])) {
        inComment = inComment || (text_[at] == '#' && (at == from || isSpace(text_[at - 1])));
        if (inComment || !joinsLines(text_, at)) {
            ++at;
            continue;
        }
        const bool carriageReturn = text_[at + 1] == '\r';
        at += 2;
        if (carriageReturn && at < text_.size() && text_[at] == '\n')
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
