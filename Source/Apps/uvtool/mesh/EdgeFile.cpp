#include "mesh/EdgeFile.h"

#include "document/FileError.h"
#include "document/OutputFile.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

namespace uvtool
{
namespace
{

constexpr std::string_view blanks = " \t\r\v\f";

/// Cuts the next line off `text`, without its comment.
std::string_view takeLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line.substr(0, line.find('#'));
}

/// Cuts the next word off `line`; empty when there is none.
std::string_view takeWord(std::string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

/// The words of a line, as a message may show them: the start of it, and printable.
std::string quoted(std::string_view word)
{
    std::string text(word.substr(0, 24));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return "\"" + text + (word.size() > 24 ? "..." : "") + "\"";
}

class EdgeFileReader
{
public:
    EdgeFileReader(const std::filesystem::path& path, std::size_t vertexCount)
        : path_(path), vertexCount_(vertexCount)
    {}

    std::vector<VertexPair> read()
    {
        const std::string bytes = readWholeFile(path_);
        for (std::string_view text = bytes; !text.empty();) {
            ++line_;
            readLine(takeLine(text));
        }
        std::sort(pairs_.begin(), pairs_.end());
        pairs_.erase(std::unique(pairs_.begin(), pairs_.end()), pairs_.end());
        return std::move(pairs_);
    }

private:
    void readLine(std::string_view line)
    {
        const std::string_view first = takeWord(line);
        if (first.empty())
            return;
        const std::string_view second = takeWord(line);
        if (second.empty())
            fail("one vertex only; an edge takes two");
        const std::string_view third = takeWord(line);
        if (!third.empty())
            fail(quoted(third) + " behind two vertices; give each edge a line of its own");
        const std::uint32_t a = vertex(first);
        const std::uint32_t b = vertex(second);
        pairs_.push_back({std::min(a, b), std::max(a, b)});
    }

    std::uint32_t vertex(std::string_view word) const
    {
        std::uint32_t id = 0;
        const auto result = std::from_chars(word.data(), word.data() + word.size(), id);
        const bool isWhole = result.ptr == word.data() + word.size();
        const bool isTooLarge = result.ec == std::errc::result_out_of_range;
        if (!isWhole || (result.ec != std::errc{} && !isTooLarge))
            fail(quoted(word) + " is no vertex id");
        if (isTooLarge || id >= vertexCount_)
            fail("there is no vertex " + std::string(word.substr(0, 24)) + "; ids go from 0 to " +
                 std::to_string(vertexCount_ - 1));
        return id;
    }

    [[noreturn]] void fail(const std::string& what) const
    {
        throw FileError(FileError::Read, path_, "line " + std::to_string(line_) + ": " + what);
    }

    std::filesystem::path path_;
    std::size_t vertexCount_;
    std::size_t line_ = 0;
    std::vector<VertexPair> pairs_;
};

} // namespace

std::vector<VertexPair> readEdgeFile(const std::filesystem::path& path, std::size_t vertexCount)
{
    return EdgeFileReader(path, vertexCount).read();
}

} // namespace uvtool
