#include "Unfold3D/packing/MakePieces.h"

#include "Unfold3D/packing/ConvexHull.h"
#include "Unfold3D/packing/IslandSizes.h"
#include "Unfold3D/packing/Turned.h"
#include "Unfold3D/packing/Turns.h"

#include <algorithm>
#include <cmath>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

/// Turns of all pieces together that a layout tries; many pieces get fewer each.
constexpr std::size_t maxTurnsTogether = 60'000;
constexpr std::size_t minTurnsOfPiece = 4;

/// The vertices of an island that have a place of their own.
std::vector<int> placedVertices(const UVLayout& layout, int island)
{
    std::vector<int> placed;
    for (const int v : layout.islands.vertices[island])
        if (layout.islands.anchor[static_cast<std::size_t>(v)] == v)
            placed.push_back(v);
    return placed;
}

Box2 boxOf(const UVLayout& layout, std::span<const int> vertices)
{
    Box2 box;
    for (const int v : vertices)
        box.add(layout.uvs[static_cast<std::size_t>(v)]);
    return box;
}

void evenlyThin(std::vector<Vec2>& turns, std::size_t count)
{
    if (turns.size() <= count)
        return;
    for (std::size_t i = 0; i < count; ++i)
        turns[i] = turns[i * turns.size() / count];
    turns.resize(count);
}

bool isHeldLevel(const UVLayout& layout, int island)
{
    return !layout.isHeldLevel.empty() && layout.isHeldLevel[static_cast<std::size_t>(island)];
}

void keepLevelTurns(std::vector<Vec2>& turns)
{
    std::erase_if(turns, [](Vec2 turn) { return turn.y != 0.0; });
    if (turns.empty())
        turns.push_back({1.0, 0.0});
}

std::vector<Vec2> hullOf(const std::vector<OutlineEdge>& outline)
{
    std::vector<Vec2> points;
    points.reserve(2 * outline.size());
    for (const OutlineEdge& edge : outline) {
        points.push_back(edge.from);
        points.push_back(edge.to);
    }
    return convexHull(std::move(points));
}

/// `localPoints` [vertex] is filled for the vertices of the island.
void shapePiece(const UVLayout& layout, const PackOptions& options, std::vector<Vec2>& localPoints,
                Piece& piece)
{
    const std::vector<int> vertices = placedVertices(layout, piece.island);
    piece.pivot = boxOf(layout, vertices).centre();
    for (const int v : vertices)
        localPoints[static_cast<std::size_t>(v)] =
            piece.size * (layout.uvs[static_cast<std::size_t>(v)] - piece.pivot);
    std::vector<OutlineEdge> outline = islandOutline(
        localPoints, layout.mesh.triangles, layout.islands.triangles[piece.island], vertices);
    const std::vector<Vec2> hull = hullOf(outline);
    piece.hullPerimeter = perimeter(hull);
    if (isHeldLevel(layout, piece.island))
        keepLevelTurns(piece.turns);
    else
        piece.preTurn = preRotationOf(options.preRotation, hull);
    for (OutlineEdge& edge : outline) {
        edge.from = turned(edge.from, piece.preTurn);
        edge.to = turned(edge.to, piece.preTurn);
    }
    piece.outline = OutlineTree(std::move(outline));
    for (const Vec2 turn : piece.turns) {
        Box2 box;
        for (const OutlineEdge& edge : piece.outline.edges()) {
            box.add(turned(edge.from, turn));
            box.add(turned(edge.to, turn));
        }
        piece.boxes.push_back(box);
    }
}

} // namespace

std::vector<OutlineEdge> standingOutline(const UVLayout& layout, int island)
{
    return islandOutline(layout.uvs, layout.mesh.triangles, layout.islands.triangles[island],
                         placedVertices(layout, island));
}

Pieces makePieces(const UVLayout& layout, std::span<const int> islands, const PackOptions& options,
                  const RunControl& control)
{
    const IslandSizes sizes =
        sizeIslands(layout.mesh, layout.islands, layout.uvs, islands, options.islandScaling);
    std::vector<Vec2> turns = turnsToTry(options.turnStep, options.turnMin, options.turnMax);
    evenlyThin(turns, std::max(minTurnsOfPiece,
                               maxTurnsTogether / std::max<std::size_t>(1, islands.size())));

    Pieces result;
    result.naturalScale = sizes.naturalScale;
    result.pieces.resize(islands.size());
    std::vector<Vec2> localPoints(layout.uvs.size());
    tbb::parallel_for(std::size_t{0}, islands.size(), [&](std::size_t i) {
        control.checkpoint();
        Piece& piece = result.pieces[i];
        piece.island = islands[i];
        piece.size = sizes.factor[i];
        piece.area = sizes.area[i];
        piece.turns = turns;
        shapePiece(layout, options, localPoints, piece);
    });
    return result;
}

} // namespace unfold3d
