#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// Takes the ids of a line, one at least. Returns why the line can't be used; empty where it can.
using IdLineReader = std::function<std::string(std::span<const std::uint32_t>)>;

/// Reads a file of vertex ids, with blanks or tabs between them, line by line. Blank lines and what
/// stands behind a `#` are passed over. A FileError of kind Read names the line that `read` can't
/// use, that holds an id that isn't below vertexCount, or anything else than ids.
void readIdFile(const std::filesystem::path& path, std::size_t vertexCount,
                const IdLineReader& read);

/// The vertices that such a file names: ascending, each once.
std::vector<unsigned int> readVertexFile(const std::filesystem::path& path,
                                         std::size_t vertexCount);

} // namespace uvtool
