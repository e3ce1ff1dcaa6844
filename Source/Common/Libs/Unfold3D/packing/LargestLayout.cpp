#include "Unfold3D/packing/LargestLayout.h"

#include "Unfold3D/packing/BoxPlacer.h"
#include "Unfold3D/packing/LayOrder.h"
#include "Unfold3D/packing/NestPlacer.h"
#include "Unfold3D/packing/ScaleBound.h"
#include "Unfold3D/packing/ScaleSearch.h"
#include "Unfold3D/packing/ShelfPlacer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

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
constexpr double likelyShareOfRows = 0.7;
/// Boxes that are larger than the pieces by no more than this can't be beaten.
constexpr double boxesAreAll = 1.02;
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
    if (pieces <= 150)
        return {512, 256};
    return pieces <= 400 ? Effort{64, 32} : Effort{16, 8};
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

/// A placer with the search for its largest layout.
class Entrant
{
public:
    Entrant(std::unique_ptr<Placer> placer, const char* method, Effort effort, SearchStart start,
            BestLayout& best, double maxScale, RunControl& control)
        : placer_(std::move(placer)), method_(method), effort_(effort), best_(best),
          search_(*placer_, maxScale, std::move(start), control,
                  [this](const Layout& layout) { best_.offer(layout, method_); })
    {}

    const ScaleSearch& search() const { return search_; }

    /// False when there is no layout.
    bool begin(bool hasWantedScale)
    {
        return (hasWantedScale && search_.tryLargest(effort_.firstRound)) || search_.start();
    }
    void firstRound() { climb(effort_.firstRound, 0.0); }
    void nextRound() { climb(effort_.laterRounds, search_.best()->scale); }

private:
    void climb(int orders, double before)
    {
        search_.climb(orders);
        if (search_.best()->scale > before)
            best_.offerSettled(*search_.best(), method_);
    }

    std::unique_ptr<Placer> placer_;
    const char* method_;
    Effort effort_;
    BestLayout& best_;
    ScaleSearch search_;
};

/// One competition for the largest layout.
class Competition
{
public:
    Competition(const Pieces& made, const Sheet& sheet, const PackOptions& options, TimeLimit& time,
                RunControl& control)
        : pieces_(made.pieces), sheet_(sheet), options_(options), time_(time), control_(control),
          bound_(boundOfScale(made.pieces, sheet)),
          isScaleWanted_(keepsSize(options) && made.naturalScale <= bound_),
          maxScale_(keepsSize(options) ? std::min(bound_, made.naturalScale) : bound_),
          best_(made.pieces, sheet, maxScale_, time, control)
    {}

    const BestLayout& best() const { return best_; }
    void run();

private:
    bool isOver() const { return isScaleWanted_ && best_.isAtBound(); }

    void enterRows();
    void enterBoxes();
    void enterNests();
    void climbOn();
    std::unique_ptr<Entrant> enter(std::unique_ptr<Placer> placer, const char* method,
                                   Effort effort, SearchStart start);

    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    const PackOptions& options_;
    const TimeLimit& time_;
    RunControl& control_;
    double bound_;
    bool isScaleWanted_; ///< and possible, so that the search ends there
    double maxScale_;
    BestLayout best_;
    std::vector<std::unique_ptr<Entrant>> entrants_; ///< that go on in later rounds
};

std::unique_ptr<Entrant> Competition::enter(std::unique_ptr<Placer> placer, const char* method,
                                            Effort effort, SearchStart start)
{
    auto entrant = std::make_unique<Entrant>(std::move(placer), method, effort, std::move(start),
                                             best_, maxScale_, control_);
    return entrant->begin(isScaleWanted_) ? std::move(entrant) : nullptr;
}

void Competition::enterRows()
{
    auto placer = std::make_unique<ShelfPlacer>(pieces_, sheet_);
    SearchStart start{likelyShareOfRows * bound_, placer->goodOrders()};
    ScaleSearch search(*placer, maxScale_, std::move(start), control_, [](const Layout&) {});
    if ((isScaleWanted_ && search.tryLargest(0)) || search.start())
        best_.offer(*search.best(), "rows");
}

void Competition::enterBoxes()
{
    auto placer = std::make_unique<BoxPlacer>(pieces_, sheet_, control_);
    SearchStart start{likelyShare * bound_, placer->goodOrders()};
    if (auto boxes = enter(std::move(placer), "boxes", boxEffort(pieces_.size()), std::move(start)))
    {
        boxes->firstRound();
        entrants_.push_back(std::move(boxes));
    }
}

/// Each search goes on where the one on the coarser raster before it ended.
void Competition::enterNests()
{
    SearchStart start{likelyShare * bound_, goodOrders(pieces_)};
    if (pieces_.size() > manyPieces)
        start.orders.resize(2);
    const std::vector<int> cells = rasterSizes(options_, pieces_.size(), sheet_);
    std::unique_ptr<Entrant> finest;
    for (const int side : cells) {
        auto nests = enter(std::make_unique<NestPlacer>(pieces_, sheet_, side, control_),
                           "outlines", nestEffort(pieces_.size()), start);
        if (!nests)
            continue;
        nests->firstRound();
        if (isOver())
            return;
        start = {finerGain * nests->search().best()->scale, nests->search().bestOrders()};
        if (pieces_.size() > manyPieces)
            start.orders.resize(1);
        finest = std::move(nests);
    }
    if (finest)
        entrants_.push_back(std::move(finest));
}

/// The one that is ahead goes on.
void Competition::climbOn()
{
    if (entrants_.empty())
        return;
    const auto ahead =
        std::max_element(entrants_.begin(), entrants_.end(), [](const auto& a, const auto& b) {
            return a->search().best()->scale < b->search().best()->scale;
        });
    for (int round = 1; (time_.exists() || round < options_.mutations) && !best_.isAtBound();
         ++round)
    {
        control_.checkpoint();
        (*ahead)->nextRound();
    }
}

void Competition::run()
{
    enterRows();
    const double share = boxAreaShare(pieces_);
    if (!isOver() && pieces_.size() <= mostPiecesInBoxes && share <= boxesWorthTrying)
        enterBoxes();
    if (!isOver() && (entrants_.empty() || share > boxesAreAll))
        enterNests();
    if (!isOver())
        climbOn();
}

} // namespace

FoundLayout findLargestLayout(const Pieces& made, const Sheet& sheet, const PackOptions& options,
                              TimeLimit& time, RunControl& control)
{
    Competition competition(made, sheet, options, time, control);
    try {
        competition.run();
    } catch (const Stopped&) {
        const bool isEnough =
            options.layoutScaling != LayoutScaling::Keep || competition.best().isAtBound();
        if (!competition.best().exists() || !isEnough)
            throw;
    }
    if (!competition.best().exists())
        throw std::invalid_argument("There is no room for " + std::to_string(made.pieces.size()) +
                                    (made.pieces.size() == 1 ? " island" : " islands") +
                                    " with this spacing, margin and box.");
    return competition.best().found();
}

} // namespace unfold3d
