#include "Unfold3D/packing/LargestLayout.h"

#include "Unfold3D/packing/BoxPlacer.h"
#include "Unfold3D/packing/LayOrder.h"
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
/// Cells across a piece of middle size, at least: where the search begins and where it ends.
constexpr double cellsOfPiece = 7.0;
constexpr double fineCellsOfPiece = 20.0;
/// A raster of half the cells takes this much of the scale.
constexpr double finerGain = 1.02;
/// A layout that is likely to be found covers about this share of the room, squared.
constexpr double likelyShare = 0.84;
/// Boxes compete when they are larger than the pieces by no more than this.
constexpr double boxesWorthTrying = 1.35;
constexpr std::size_t mostPiecesInBoxes = 2000;
/// With more, fewer orders have to do.
constexpr std::size_t manyPieces = 1500;

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
    if (pieces <= manyPieces)
        return {8, 4};
    return {0, 4};
}

Effort boxEffort(std::size_t pieces)
{
    return pieces <= 150 ? Effort{128, 64} : Effort{16, 8};
}

/// Cells along a tile of the rasters on which the search goes on, one after the other. With many
/// pieces each search takes long enough, so there are two.
std::vector<int> rasterSizes(const PackOptions& options, std::size_t pieces, const Sheet& sheet)
{
    const double used = std::min<double>(static_cast<double>(pieces), sheet.tileCount());
    const double piecesAcross = std::sqrt(static_cast<double>(pieces) / used);
    const auto within = [](double cells) {
        return static_cast<int>(std::clamp<double>(cells, leastCells, mostCells));
    };
    const int asked = std::clamp(options.resolution, leastCells, mostCells / 2);
    const int last = std::max(within(fineCellsOfPiece * piecesAcross), 2 * asked);
    std::vector<int> sizes{std::min(last, within(cellsOfPiece * piecesAcross))};
    while (pieces <= manyPieces && 3 * sizes.back() < last)
        sizes.push_back(2 * sizes.back());
    sizes.push_back(last);
    return sizes;
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
                RunControl& control)
        : pieces_(pieces), sheet_(sheet), wantedScale_(wantedScale), control_(control),
          bound_(boundOfScale(pieces, sheet))
    {}

    bool isWon() const { return !best_.layout.placements.empty(); }
    bool hasWantedScale() const { return isWon() && best_.layout.scale >= wantedScale_; }
    FoundLayout winner() && { return std::move(best_); }

    void enterBoxes(int rounds);
    void enterNests(const std::vector<int>& cells, int rounds);
    void enterShelves();

private:
    double maxScale() const { return std::min(bound_, wantedScale_); }
    SearchStart usualStart(const Placer& placer) const
    {
        return {likelyShare * bound_, placer.goodOrders()};
    }
    bool findFirst(ScaleSearch& search, int orders) const;
    void climb(ScaleSearch& search, const char* method, Effort effort, int rounds);
    void consider(const Layout& layout, const char* method);

    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    double wantedScale_; ///< infinite for as large as possible
    RunControl& control_;
    double bound_;
    FoundLayout best_;
};

void Competition::consider(const Layout& layout, const char* method)
{
    for (const Layout& candidate :
         {settle(pieces_, sheet_, layout, std::max(layout.scale, maxScale()), control_), layout})
    {
        if (isWon() && candidate.scale <= best_.layout.scale)
            return;
        if (isSound(pieces_, sheet_, candidate, control_)) {
            best_ = {candidate, method};
            return;
        }
    }
}

bool Competition::findFirst(ScaleSearch& search, int orders) const
{
    return (wantedScale_ <= bound_ && search.tryLargest(orders)) || search.start();
}

void Competition::climb(ScaleSearch& search, const char* method, Effort effort, int rounds)
{
    for (int round = 0; round < std::max(1, rounds) && !hasWantedScale(); ++round) {
        const double before = round == 0 ? 0.0 : search.best()->scale;
        search.climb(round == 0 ? effort.firstRound : effort.laterRounds);
        if (search.best()->scale > before)
            consider(*search.best(), method);
    }
}

void Competition::enterBoxes(int rounds)
{
    BoxPlacer placer(pieces_, sheet_, control_);
    ScaleSearch search(placer, maxScale(), usualStart(placer), control_);
    const Effort effort = boxEffort(pieces_.size());
    if (findFirst(search, effort.firstRound))
        climb(search, "boxes", effort, rounds);
}

/// Each search goes on where the one on the coarser raster before it ended.
void Competition::enterNests(const std::vector<int>& cells, int rounds)
{
    const Effort effort = nestEffort(pieces_.size());
    SearchStart start{likelyShare * bound_, goodOrders(pieces_)};
    if (pieces_.size() > manyPieces)
        start.orders.resize(2);
    for (const int side : cells) {
        NestPlacer placer(pieces_, sheet_, side, control_);
        ScaleSearch search(placer, maxScale(), start, control_);
        if (!findFirst(search, effort.firstRound))
            continue;
        climb(search, "outlines", effort, side == cells.back() ? rounds : 1);
        if (hasWantedScale())
            return;
        start = {finerGain * search.best()->scale, search.bestOrders()};
        if (pieces_.size() > manyPieces)
            start.orders.resize(1);
    }
}

void Competition::enterShelves()
{
    ShelfPlacer placer(pieces_, sheet_);
    ScaleSearch search(placer, maxScale(), usualStart(placer), control_);
    if (findFirst(search, 0))
        consider(*search.best(), "rows");
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
    if (pieces.size() <= mostPiecesInBoxes && boxAreaShare(pieces) <= boxesWorthTrying)
        competition.enterBoxes(options.mutations);
    if (!competition.hasWantedScale())
        competition.enterNests(rasterSizes(options, pieces.size(), sheet), options.mutations);
    if (!competition.isWon())
        competition.enterShelves();
    if (!competition.isWon())
        throw std::invalid_argument("There is no room for " + std::to_string(pieces.size()) +
                                    (pieces.size() == 1 ? " island" : " islands") +
                                    " with this spacing, margin and box.");
    return std::move(competition).winner();
}

} // namespace unfold3d
