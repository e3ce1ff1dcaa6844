#include "mesh/IdFile.h"

#include "document/FileError.h"
#include "document/OutputFile.h"

#include <algorithm>
#include <charconv>
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

class IdFileReader
{
public:
    IdFileReader(const std::filesystem::path& path, std::size_t vertexCount)
        : path_(path), vertexCount_(vertexCount)
    {}

    void read(const IdLineReader& readLine)
    {
        const std::string bytes = readWholeFile(path_);
        std::vector<std::uint32_t> ids;
        for (std::string_view text = bytes; !text.empty();) {
            ++line_;
            ids.clear();
            std::string_view line = takeLine(text);
            for (auto word = takeWord(line); !word.empty(); word = takeWord(line))
                ids.push_back(vertex(word));
            if (ids.empty())
                continue;
            if (const std::string fault = readLine(ids); !fault.empty())
                fail(fault);
        }
    }

private:
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
};

} // namespace

void readIdFile(const std::filesystem::path& path, std::size_t vertexCount,
                const IdLineReader& read)
{
    IdFileReader(path, vertexCount).read(read);
}

std::vector<unsigned int> readVertexFile(const std::filesystem::path& path, std::size_t vertexCount)
{
    std::vector<unsigned int> vertices;
    readIdFile(path, vertexCount, [&vertices](std::span<const std::uint32_t> ids) {
        vertices.insert(vertices.end(), ids.begin(), ids.end());
        return std::string();
    });
    std::sort(vertices.begin(), vertices.end());
    vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
    return vertices;
}

} // namespace uvtool
