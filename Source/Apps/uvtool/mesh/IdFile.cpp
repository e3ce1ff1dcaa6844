#include "mesh/IdFile.h"

#include "document/FileError.h"
#include "document/OutputFile.h"
#include "document/TextLines.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace uvtool
{
namespace
{

class IdFileReader
{
public:
    IdFileReader(const std::filesystem::path& path, std::size_t vertexCount)
        : path_(path), vertexCount_(vertexCount)
    {}

    void read(const IdLineReader& readLine)
    {
        const std::string bytes = readListFile(path_);
        std::vector<std::uint32_t> ids;
        for (std::string_view text = bytes; !text.empty();) {
            ++line_;
            ids.clear();
            std::string_view line = takeTextLine(text);
            for (auto word = takeTextWord(line); !word.empty(); word = takeTextWord(line))
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
