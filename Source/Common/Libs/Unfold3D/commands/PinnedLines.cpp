#include "Unfold3D/commands/PinnedLines.h"

#include "Unfold3D/base/DisjointSets.h"

namespace unfold3d
{

namespace
{

void collectLines(const Session& session, const IslandSurface& surface, EdgePin pin,
                  std::vector<StraightLine>& lines)
{
    DisjointSets chains(surface.mesh.vertexCount());
    std::vector<char> isPinned(surface.vertices.size(), 0);
    for (std::size_t t = 0; t < surface.triangles.size(); ++t) {
        const auto imported = static_cast<std::size_t>(surface.triangles[t]);
        const Triangle& corner = surface.mesh.triangles[t];
        for (const int edge : session.edges->ofTriangle[imported]) {
            if (session.pins[static_cast<std::size_t>(edge)] != pin)
                continue;
            int ends[2] = {-1, -1};
            for (const int v : corner) {
                const int global = surface.vertices[static_cast<std::size_t>(v)];
                const auto& named = session.edges->vertices[static_cast<std::size_t>(edge)];
                for (std::size_t k = 0; k < 2; ++k)
                    if (named[k] == global)
                        ends[k] = v;
            }
            chains.join(ends[0], ends[1]);
            isPinned[static_cast<std::size_t>(ends[0])] = 1;
            isPinned[static_cast<std::size_t>(ends[1])] = 1;
        }
    }
    std::vector<int> lineOfRoot(surface.vertices.size(), -1);
    for (int v = 0; v < surface.mesh.vertexCount(); ++v) {
        if (!isPinned[static_cast<std::size_t>(v)])
            continue;
        int& line = lineOfRoot[static_cast<std::size_t>(chains.find(v))];
        if (line < 0) {
            line = static_cast<int>(lines.size());
            lines.push_back({pin == EdgePin::Horizontal, {}});
        }
        lines[static_cast<std::size_t>(line)].vertices.push_back(v);
    }
}

} // namespace

std::vector<StraightLine> pinnedLines(const Session& session, const IslandSurface& surface)
{
    std::vector<StraightLine> lines;
    if (session.pins.empty())
        return lines;
    collectLines(session, surface, EdgePin::Horizontal, lines);
    collectLines(session, surface, EdgePin::Vertical, lines);
    return lines;
}

} // namespace unfold3d
