#include "Unfold3D/packing/Pack.h"

#include "Unfold3D/packing/LargestLayout.h"
#include "Unfold3D/packing/PosedPieces.h"
#include "Unfold3D/packing/ScaleBound.h"
#include "Unfold3D/packing/Sheet.h"
#include "Unfold3D/packing/Turned.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace unfold3d
{

namespace
{

/// Share of the command at which the pieces are made.
constexpr double piecesMade = 0.05;
/// Scales that differ by less are the same but for rounding.
constexpr double sameScale = 1e-12;

void addObstacles(const UVLayout& layout, const std::vector<int>& islands, Sheet& sheet)
{
    std::vector<char> moves(static_cast<std::size_t>(layout.islands.count()), 0);
    for (const int island : islands)
        moves[static_cast<std::size_t>(island)] = 1;
    for (int island = 0; island < layout.islands.count(); ++island)
        if (!moves[static_cast<std::size_t>(island)])
            addObstacle(sheet, standingOutline(layout, island));
}

void assignTiles(const Sheet& sheet, std::vector<Piece>& pieces)
{
    for (Piece& piece : pieces)
        piece.tile = tileAt(sheet, piece.pivot);
}

/// The factors that pull a layout to the far sides of all its tiles.
Vec2 stretchToSides(const std::vector<Piece>& pieces, const Sheet& sheet, const Layout& layout)
{
    Box2 bounds;
    for (const PosedTile& tile : poseTiles(pieces, sheet, layout))
        bounds.add(boundsOfPieces(tile));
    const auto factor = [&](double inner, double high) {
        const double used = high - sheet.margin;
        // What lies on a line along the other axis can't be pulled.
        return used > 1e-6 * inner ? std::max(1.0, inner / used) : 1.0;
    };
    return {factor(sheet.innerWidth(), bounds.high.x), factor(sheet.innerHeight(), bounds.high.y)};
}

IslandMove moveInPlace(const Piece& piece, double scale)
{
    return {piece.island, piece.pivot, scale * piece.size * piece.preTurn, {1.0, 1.0}, piece.pivot};
}

IslandMove moveInto(const Sheet& sheet, const Piece& piece, const Layout& layout,
                    const Placement& placement, Vec2 stretch)
{
    const Vec2 turn = turned(turnAndScale(piece, layout, placement), piece.preTurn);
    const Vec2 corner{sheet.margin, sheet.margin};
    const Vec2 fromCorner = placement.at - corner;
    return {piece.island, piece.pivot, piece.size * turn, stretch,
            sheet.tileCorner(placement.tile) + corner +
                Vec2{stretch.x * fromCorner.x, stretch.y * fromCorner.y}};
}

double areaAtScaleOne(const std::vector<Piece>& pieces)
{
    double area = 0.0;
    for (const Piece& piece : pieces)
        area += piece.area;
    return area;
}

/// The shares of the tiles that the layout covers and that any layout covers at most.
void measureCover(const Pieces& made, const Sheet& sheet, const PackOptions& options,
                  const Layout& layout, Vec2 stretch, PackResult& result)
{
    const double share =
        areaAtScaleOne(made.pieces) / (sheet.tileCount() * sheet.width * sheet.height);
    double bound = boundOfScale(made.pieces, sheet);
    if (keepsSize(options))
        bound = std::min(bound, made.naturalScale);
    const double stretched = stretch.x * stretch.y;
    result.covered = share * layout.scale * layout.scale * stretched;
    // Stretched islands can fill everything.
    result.mostCovered = options.layoutScaling == LayoutScaling::Stretch
                             ? 1.0
                             : std::min(1.0, share * bound * bound);
}

} // namespace

Vec2 IslandMove::operator()(Vec2 p) const
{
    const Vec2 local = turned(p - pivot, turnAndScale);
    return place + Vec2{stretch.x * local.x, stretch.y * local.y};
}

PackResult packIslands(const UVLayout& layout, const std::vector<int>& islands,
                       const PackOptions& options, RunControl& control)
{
    PackResult result;
    if (islands.empty())
        return result;
    TimeLimit time(options.seconds);
    Sheet sheet = makeSheet(options);
    Pieces made = makePieces(layout, islands, options, control);
    control.setProgress(piecesMade);
    if (!options.translate) {
        for (const Piece& piece : made.pieces)
            result.moves.push_back(moveInPlace(piece, made.naturalScale));
        return result;
    }
    addObstacles(layout, islands, sheet);
    if (options.tileChoice == TileChoice::ByBoxCentre)
        assignTiles(sheet, made.pieces);

    const FoundLayout found = findLargestLayout(made, sheet, options, time, control);
    const bool isShrunk = found.layout.scale < (1.0 - sameScale) * made.naturalScale;
    if (options.layoutScaling == LayoutScaling::Keep && isShrunk)
        throw std::invalid_argument("The islands don't fit into the box at their size.");
    if (options.layoutScaling == LayoutScaling::KeepOrShrink && isShrunk)
        result.shrunkBy = found.layout.scale / made.naturalScale;
    result.method = found.method;

    const bool stretches =
        options.layoutScaling == LayoutScaling::Stretch && sheet.obstacles.empty();
    const Vec2 stretch =
        stretches ? stretchToSides(made.pieces, sheet, found.layout) : Vec2{1.0, 1.0};
    measureCover(made, sheet, options, found.layout, stretch, result);
    for (std::size_t i = 0; i < made.pieces.size(); ++i)
        result.moves.push_back(
            moveInto(sheet, made.pieces[i], found.layout, found.layout.placements[i], stretch));
    return result;
}

} // namespace unfold3d
