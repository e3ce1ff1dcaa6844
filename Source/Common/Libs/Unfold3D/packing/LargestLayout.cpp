#include "Unfold3D/packing/LargestLayout.h"

#include "Unfold3D/packing/BoxPlacer.h"
#include "Unfold3D/packing/NestPlacer.h"
#include "Unfold3D/packing/PosedPieces.h"
#include "Unfold3D/packing/ScaleSearch.h"
#include "Unfold3D/packing/Settle.h"
#include "Unfold3D/packing/ShelfPlacer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace unfold3d
{

namespace
{

constexpr int leastCells = 64;
constexpr int mostCells = 2048;
/// Cells across a piece of middle size, at least.
constexpr double cellsOfPiece = 10.0;
/// Boxes compete when they are larger than the pieces by no more than this.
constexpr double boxesWorthTrying = 1.35;
constexpr std::size_t mostPiecesInBoxes = 2000;

/// Orders that the first round tries beyond the good ones, and each further round.
struct Effort
{
    int firstRound;
    int laterRounds;
};

Effort nestEffort(std::size_t pieces)
{
    if (pieces <= 60)
        return {64, 32};
    if (pieces <= 300)
        return {32, 16};
    if (pieces <= 1500)
        return {8, 4};
    return {4, 4};
}

Effort boxEffort(std::size_t pieces)
{
    return pieces <= 150 ? Effort{128, 64} : Effort{16, 8};
}

int cellsAcross(const PackOptions& options, std::size_t pieces, const Sheet& sheet)
{
    const double used = std::min<double>(static_cast<double>(pieces), sheet.tileCount());
    const double forPieces = cellsOfPiece * std::sqrt(static_cast<double>(pieces) / used);
    return std::clamp(std::max(options.resolution, static_cast<int>(forPieces)), leastCells,
                      mostCells);
}

/// No layout is larger: by the area of the tiles, and by the largest piece.
double boundOfScale(const std::vector<Piece>& pieces, const Sheet& sheet)
{
    double bound = std::numeric_limits<double>::infinity();
    std::map<int, double> areaOfTile;
    for (const Piece& piece : pieces) {
        areaOfTile[piece.tile] += piece.area;
        double own = 0.0;
        for (const Box2& box : piece.boxes)
            own = std::max(own, std::min(sheet.innerWidth() / box.width(),
                                         sheet.innerHeight() / box.height()));
        bound = std::min(bound, own);
    }
    const double room = (sheet.innerWidth() + sheet.gap) * (sheet.innerHeight() + sheet.gap);
    for (const auto& [tile, area] : areaOfTile)
        bound = std::min(bound,
                         std::sqrt(room * (tile == Piece::anyTile ? sheet.tileCount() : 1) / area));
    return std::isfinite(bound) ? bound : 1.0; // points only
}

double boxAreaShare(const std::vector<Piece>& pieces)
{
    double boxes = 0.0;
    double areas = 0.0;
    for (const Piece& piece : pieces) {
        double least = std::numeric_limits<double>::infinity();
        for (const Box2& box : piece.boxes)
            least = std::min(least, box.width() * box.height());
        boxes += least;
        areas += piece.area;
    }
    return areas > 0.0 ? boxes / areas : 1.0;
}

/// One competition for the largest layout.
class Competition
{
public:
    Competition(const std::vector<Piece>& pieces, const Sheet& sheet, double wantedScale,
                const RunControl& control)
        : pieces_(pieces), sheet_(sheet), wantedScale_(wantedScale), control_(control),
          bound_(boundOfScale(pieces, sheet))
    {}

    bool isWon() const { return !best_.layout.placements.empty(); }
    bool hasWantedScale() const { return isWon() && best_.layout.scale >= wantedScale_; }

    void enter(Placer& placer, const char* method, Effort effort, int rounds);
    FoundLayout winner() && { return std::move(best_); }

private:
    void consider(const Layout& layout, const char* method);

    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    double wantedScale_; ///< infinite for as large as possible
    const RunControl& control_;
    double bound_;
    FoundLayout best_;
};

void Competition::consider(const Layout& layout, const char* method)
{
    for (const Layout& candidate :
         {settle(pieces_, sheet_, layout, std::max(layout.scale, wantedScale_), control_), layout})
    {
        if (isWon() && candidate.scale <= best_.layout.scale)
            return;
        if (isSound(pieces_, sheet_, candidate)) {
            best_ = {candidate, method};
            return;
        }
    }
}

void Competition::enter(Placer& placer, const char* method, Effort effort, int rounds)
{
    ScaleSearch search(placer, std::min(bound_, wantedScale_), control_);
    const bool canKeep = wantedScale_ <= bound_;
    if (!(canKeep && search.tryLargest(effort.firstRound)) && !search.start())
        return;
    for (int round = 0; round < std::max(1, rounds) && !hasWantedScale(); ++round) {
        const double before = round == 0 ? 0.0 : search.best()->scale;
        search.climb(round == 0 ? effort.firstRound : effort.laterRounds);
        if (search.best()->scale > before)
            consider(*search.best(), method);
    }
}

} // namespace

FoundLayout findLargestLayout(const Pieces& made, const Sheet& sheet, const PackOptions& options,
                              RunControl& control)
{
    const std::vector<Piece>& pieces = made.pieces;
    const bool keeps = options.layoutScaling == LayoutScaling::Keep ||
                       options.layoutScaling == LayoutScaling::KeepOrShrink;
    Competition competition(pieces, sheet,
                            keeps ? made.naturalScale : std::numeric_limits<double>::infinity(),
                            control);

    if (pieces.size() <= mostPiecesInBoxes && boxAreaShare(pieces) <= boxesWorthTrying) {
        BoxPlacer boxes(pieces, sheet, control);
        competition.enter(boxes, "boxes", boxEffort(pieces.size()), options.mutations);
    }
    control.setProgress(0.3);
    if (!competition.hasWantedScale()) {
        NestPlacer nest(pieces, sheet, cellsAcross(options, pieces.size(), sheet), control);
        competition.enter(nest, "outlines", nestEffort(pieces.size()), options.mutations);
    }
    control.setProgress(0.95);
    if (!competition.isWon()) {
        ShelfPlacer shelves(pieces, sheet);
        competition.enter(shelves, "rows", {0, 0}, 1);
    }
    if (!competition.isWon())
        throw std::invalid_argument("There is no room for " + std::to_string(pieces.size()) +
                                    (pieces.size() == 1 ? " island" : " islands") +
                                    " with this spacing, margin and box.");
    return std::move(competition).winner();
}

} // namespace unfold3d
