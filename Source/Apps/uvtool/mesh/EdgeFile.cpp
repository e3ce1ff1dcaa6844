#include "mesh/EdgeFile.h"

#include "document/OutputFile.h"
#include "mesh/IdFile.h"

#include <algorithm>
#include <string>

namespace uvtool
{

std::vector<VertexPair> readEdgeFile(const std::filesystem::path& path, std::size_t vertexCount)
{
    std::vector<VertexPair> pairs;
    readIdFile(path, vertexCount, [&pairs](std::span<const std::uint32_t> ids) -> std::string {
        if (ids.size() == 1)
            return "one vertex only; an edge takes two";
        if (ids.size() > 2)
            return "\"" + std::to_string(ids[2]) +
                   "\" behind two vertices; give each edge a line of its own";
        pairs.push_back({std::min(ids[0], ids[1]), std::max(ids[0], ids[1])});
        return {};
    });
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    return pairs;
}

std::string textOfEdges(std::span<const VertexPair> pairs)
{
    std::string text;
    for (const VertexPair& pair : pairs)
        text += std::to_string(pair[0]) + ' ' + std::to_string(pair[1]) + '\n';
    return text;
}

void writeEdgeFile(const std::filesystem::path& path, std::span<const VertexPair> pairs)
{
    OutputFile file(path);
    file.write(textOfEdges(pairs));
    file.commit();
}

} // namespace uvtool
