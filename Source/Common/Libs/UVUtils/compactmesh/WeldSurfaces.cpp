#include "UVUtils/compactmesh/WeldSurfaces.h"

#include "UVUtils/compactmesh/VertexGroups.h"
#include "UVUtils/compactmesh/WeldTable.h"
#include "UVUtils/model/BorderEdges.h"
#include "UVUtils/model/EdgeNumbers.h"

#include <algorithm>

namespace
{

/// The border edges of all surfaces, in F ids. No surface shares an F id with another, so that
/// the borders of the whole triangle list are those of each surface, one surface after the other.
struct Borders
{
    explicit Borders(const ShellArrays& shell)
        : edges(borderEdges(std::span<const unsigned int>(shell.triangles))),
          highersOf(shell.positions.size(),
                    [this](const auto& add) {
                        for (std::size_t i = 0; i < edges.size(); i += 2)
                            add(edges[i], edges[i + 1]);
                    }),
          isOnBorder(shell.positions.size())
    {
        for (const unsigned int vertex : edges)
            isOnBorder[vertex] = 1;
    }

    bool contains(Edge edge) const
    {
        return std::ranges::binary_search(highersOf[edge.first], edge.second);
    }

    FlatEdgeList edges;
    Buckets<unsigned int> highersOf; ///< [vertex] ascending: the other ends where it is the lower
    std::vector<char> isOnBorder;    ///< [vertex]
};

/// Vertices that lie where some surface has its border. Only sides of triangles that touch one can
/// bear on a weld.
std::vector<char> findVerticesAtBorders(const Borders& borders, const WeldTable& table)
{
    std::vector<char> isAtBorder(borders.isOnBorder.size());
    std::vector<char> meetsBorder = table.unsettledClasses(); // may have an id of any near one
    for (const unsigned int vertex : borders.edges)
        meetsBorder[table.classOf(vertex)] = 1;
    for (unsigned int vertex = 0; vertex < isAtBorder.size(); ++vertex)
        isAtBorder[vertex] = meetsBorder[table.classOf(vertex)];
    return isAtBorder;
}

/// The edges of the surfaces in weld ids.
struct WeldEdges
{
    std::vector<MergeRecord> borders; ///< one for each border edge of each surface
    std::vector<Edge> inner;          ///< one for each side of a triangle that is no border
};

MergeRecord makeRecord(unsigned int a, unsigned int b, WeldTable& table)
{
    const unsigned int idOfA = table.weldId(a);
    const unsigned int idOfB = table.weldId(b);
    return idOfA <= idOfB ? MergeRecord{{idOfA, idOfB}, a, b} : MergeRecord{{idOfA, idOfB}, b, a};
}

/// A triangle that touches the border of its surface in one corner has no side that could close
/// another surface's border.
bool hasSidesToCount(const unsigned int* corners, const Borders& borders)
{
    return borders.isOnBorder[corners[0]] + borders.isOnBorder[corners[1]] +
               borders.isOnBorder[corners[2]] !=
           1;
}

void appendInnerSides(const unsigned int* corners, const Borders& borders, WeldTable& table,
                      std::vector<Edge>& inner)
{
    for (unsigned int k = 0; k < 3; ++k) {
        const unsigned int from = corners[k];
        const unsigned int to = corners[(k + 1) % 3];
        if (borders.contains({from, to}))
            continue;
        const unsigned int idOfFrom = table.weldId(from);
        inner.emplace_back(idOfFrom, table.weldId(to));
    }
}

/// For a triangle whose sides are not counted, but would have been asked for like all others.
void askForCorners(const unsigned int* corners, WeldTable& table)
{
    if (table.dependsOnQuestions())
        for (unsigned int k = 0; k < 3; ++k)
            table.weldId(corners[k]);
}

/// Surface by surface, borders before the inside: this is the order in which keys enter the weld
/// table, and so decides which of several near keys stands for all.
WeldEdges collectWeldEdges(const ShellArrays& shell, const Borders& borders, WeldTable& table)
{
    const std::vector<char> isAtBorder = findVerticesAtBorders(borders, table);
    WeldEdges result;
    std::size_t nextBorder = 0;
    for (const ShellArrays::Range& surface : shell.surfaces) {
        while (nextBorder < borders.edges.size() && borders.edges[nextBorder] < surface.endVertex) {
            result.borders.push_back(
                makeRecord(borders.edges[nextBorder], borders.edges[nextBorder + 1], table));
            nextBorder += 2;
        }
        for (unsigned int t = surface.firstTriangle; t < surface.endTriangle; ++t) {
            const unsigned int* corners = shell.triangles.data() + 3 * std::size_t{t};
            if (!isAtBorder[corners[0]] && !isAtBorder[corners[1]] && !isAtBorder[corners[2]])
                askForCorners(corners, table);
            else if (hasSidesToCount(corners, borders))
                appendInnerSides(corners, borders, table, result.inner);
        }
    }
    return result;
}

/// How often each edge of weld ids occurs as a border and as an inner side.
struct EdgeUse
{
    std::vector<unsigned int> keyOfRecord; ///< [border record] number of its edge
    std::vector<Edge> edges;               ///< [number]
    std::vector<unsigned int> border;      ///< [number]
    std::vector<unsigned int> inner;       ///< [number]
};

EdgeUse countUse(const WeldEdges& weldEdges)
{
    std::vector<Edge> edges;
    edges.reserve(weldEdges.borders.size() + weldEdges.inner.size());
    for (const MergeRecord& record : weldEdges.borders)
        edges.push_back(record.key);
    edges.insert(edges.end(), weldEdges.inner.begin(), weldEdges.inner.end());
    EdgeNumbers numbers = numberEdges(edges);

    EdgeUse use;
    use.edges.resize(numbers.count);
    use.border.resize(numbers.count);
    use.inner.resize(numbers.count);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const unsigned int number = numbers.numberOf[i];
        use.edges[number] = edges[i];
        ++(i < weldEdges.borders.size() ? use.border : use.inner)[number];
    }
    numbers.numberOf.resize(weldEdges.borders.size());
    use.keyOfRecord = std::move(numbers.numberOf);
    return use;
}

/// Weld ids at which a weld would close a border onto an inside: the ends of borders that run
/// along an inner side, and of inner sides that more than the two triangles of a sheet share.
std::vector<char> findBlockedIds(const EdgeUse& use, unsigned int idCount)
{
    constexpr unsigned int sidesOfOneSheet = 2;
    std::vector<char> isBlocked(idCount);
    for (std::size_t number = 0; number < use.edges.size(); ++number)
        if ((use.border[number] > 0 && use.inner[number] > 0) ||
            use.inner[number] > sidesOfOneSheet)
        {
            isBlocked[use.edges[number].first] = 1;
            isBlocked[use.edges[number].second] = 1;
        }
    return isBlocked;
}

/// Makes borders at blocked ids look like ones that too many surfaces share.
void blockBorders(EdgeUse& use, const std::vector<char>& isBlocked)
{
    constexpr unsigned int blockedUse = 99;
    for (std::size_t number = 0; number < use.edges.size(); ++number)
        if (isBlocked[use.edges[number].first] || isBlocked[use.edges[number].second])
            use.border[number] = blockedUse;
}

WeldedVertices makeVertices(const Borders& borders, const VertexGroups& groups,
                            const WeldTable& table)
{
    const auto& isOnBorder = borders.isOnBorder;
    WeldedVertices result;
    result.source.reserve(isOnBorder.size());
    for (unsigned int vertex = 0; vertex < isOnBorder.size(); ++vertex)
        if (!isOnBorder[vertex])
            result.source.push_back(vertex);
    const auto innerCount = static_cast<unsigned int>(result.source.size());
    for (std::size_t group = 0; group < groups.members.size(); ++group)
        if (!groups.members[group].empty())
            result.source.push_back(table.firstVertexOf(groups.keyId[group]));

    result.members = Buckets<unsigned int>(result.source.size(), [&](const auto& add) {
        for (unsigned int vertex = 0; vertex < innerCount; ++vertex)
            add(vertex, result.source[vertex]);
        unsigned int vertex = innerCount;
        for (std::size_t group = 0; group < groups.members.size(); ++group) {
            for (const unsigned int member : groups.members[group])
                add(vertex, member);
            vertex += groups.members[group].empty() ? 0 : 1;
        }
    });
    return result;
}

} // namespace

WeldedVertices weldSurfaces(const ShellArrays& shell, std::span<const unsigned int> order)
{
    const Borders borders(shell);
    WeldTable table(shell, order);
    const WeldEdges edges = collectWeldEdges(shell, borders, table);
    EdgeUse use = countUse(edges);
    blockBorders(use, findBlockedIds(use, table.size()));
    const VertexGroups groups = mergeVertexGroups(edges.borders, use.keyOfRecord, use.border);
    return makeVertices(borders, groups, table);
}
