#include "check/Lines.h"

#include "layout/UVBox.h"
#include "mesh/DisjointSets.h"
#include "mesh/EdgeGroups.h"

#include <algorithm>
#include <span>
#include <utility>

namespace uvtool
{
namespace
{

double longerSide(const UVLayout& layout)
{
    UVBox box;
    for (std::size_t t = 0; t < layout.triangleCount(); ++t)
        for (std::size_t k = 0; k < 3 && layout.islandOfTriangle[t] >= 0; ++k)
            box.add(layout.point(t, k));
    if (box.isEmpty())
        return 0.0;
    return std::max(double{box.hi[0]} - box.lo[0], double{box.hi[1]} - box.lo[1]);
}

/// A UV on a line, by the lowest UV of that line.
struct Member
{
    std::uint32_t line;
    std::uint32_t uv;
    std::int32_t island;

    friend auto operator<=>(const Member&, const Member&) = default;
};

std::vector<Member> membersOf(const UVLayout& layout, std::span<const std::uint32_t> sides)
{
    DisjointSets sets(layout.uvs.size());
    std::vector<Member> members;
    for (const std::uint32_t side : sides) {
        if (layout.islandOfTriangle[side / 3] < 0)
            continue;
        const std::uint32_t ends[] = {layout.corners[side], layout.corners[endCorner(side)]};
        sets.join(ends[0], ends[1]);
        for (const std::uint32_t uv : ends)
            members.push_back({0, uv, layout.islandOfTriangle[side / 3]});
    }
    for (Member& member : members)
        member.line = sets.find(member.uv);
    std::sort(members.begin(), members.end());
    members.erase(std::unique(members.begin(), members.end()), members.end());
    return members;
}

double spread(const UVLayout& layout, const HeldLine& line, std::size_t axis)
{
    const auto [low, high] = std::minmax_element(
        line.uvs.begin(), line.uvs.end(), [&](std::uint32_t a, std::uint32_t b) {
            return layout.uvs[a][axis] < layout.uvs[b][axis];
        });
    return double{layout.uvs[*high][axis]} - layout.uvs[*low][axis];
}

/// axis  across the lines
void addLines(const UVLayout& layout, std::span<const std::uint32_t> sides, std::size_t axis,
              double size, std::vector<HeldLine>& lines)
{
    const std::vector<Member> members = membersOf(layout, sides);
    for (auto first = members.begin(); first != members.end();) {
        HeldLine line;
        line.island = first->island;
        const std::uint32_t number = first->line;
        for (; first != members.end() && first->line == number; ++first)
            line.uvs.push_back(first->uv);
        const double apart = spread(layout, line, axis);
        line.deviation = apart > 0.0 ? apart / size : 0.0;
        lines.push_back(std::move(line));
    }
}

std::vector<std::uint32_t> sidesAmong(std::span<const std::uint32_t> triangles,
                                      std::span<const std::uint32_t> sides)
{
    std::vector<std::uint32_t> own;
    std::size_t t = 0;
    for (const std::uint32_t side : sides) {
        while (t < triangles.size() && triangles[t] < side / 3)
            ++t;
        if (t < triangles.size() && triangles[t] == side / 3)
            own.push_back(static_cast<std::uint32_t>(3 * t) + side % 3);
    }
    return own;
}

} // namespace

HeldSides sidesAmong(std::span<const std::uint32_t> triangles, const HeldSides& held)
{
    return {sidesAmong(triangles, std::span(held.horizontal)),
            sidesAmong(triangles, std::span(held.vertical))};
}

std::vector<HeldLine> findLines(const UVLayout& layout, const HeldSides& held)
{
    std::vector<HeldLine> lines;
    const double size = longerSide(layout);
    addLines(layout, held.horizontal, 1, size, lines);
    addLines(layout, held.vertical, 0, size, lines);
    return lines;
}

} // namespace uvtool
