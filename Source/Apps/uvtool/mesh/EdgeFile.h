#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// A pair of vertices, by their ids of the command line, the lower one first.
using VertexPair = std::array<std::uint32_t, 2>;

/// Reads a file of edges: two vertex ids a line, blanks or tabs between them. Blank lines and what
/// stands behind a `#` are passed over.
///
/// Returns the pairs ascending, each once. A FileError of kind Read names the line that isn't like
/// that, or holds an id that isn't below vertexCount.
std::vector<VertexPair> readEdgeFile(const std::filesystem::path& path, std::size_t vertexCount);

/// The edges as such a file holds them.
std::string textOfEdges(std::span<const VertexPair> pairs);

/// Writes such a file, whole or not at all. A FileError of kind Write where it can't be.
void writeEdgeFile(const std::filesystem::path& path, std::span<const VertexPair> pairs);

} // namespace uvtool
