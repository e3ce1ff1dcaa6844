#include "layout/MarkedSides.h"

#include "mesh/EdgeGroups.h"

namespace uvtool
{

std::vector<std::array<Vec2f, 2>> linesIn(const DocumentLayout& layout, const MarkedSides& marked)
{
    std::vector<std::array<Vec2f, 2>> lines;
    marked.forEachIn(layout.sourceOfTriangle, [&](std::uint32_t side) {
        lines.push_back(
            {layout.uvs[layout.corners[side]], layout.uvs[layout.corners[endCorner(side)]]});
    });
    return lines;
}

} // namespace uvtool
