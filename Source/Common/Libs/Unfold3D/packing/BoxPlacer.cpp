#include "Unfold3D/packing/BoxPlacer.h"

#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace unfold3d
{

namespace
{

/// Pieces up to which each step looks at all of them: the work grows with their square and more.
constexpr std::size_t maxPiecesAtOnce = 400;
/// A turn whose box is larger than the smallest one by more than this isn't tried.
constexpr double wastefulBox = 1.1;
constexpr std::size_t maxPoses = 8;

/// The turns of a piece whose boxes are small and differ.
std::vector<int> turnsWorthTrying(const Piece& piece)
{
    const auto area = [](const Box2& box) { return box.width() * box.height(); };
    double least = std::numeric_limits<double>::infinity();
    for (const Box2& box : piece.boxes)
        least = std::min(least, area(box));
    std::vector<int> turns;
    for (std::size_t turn = 0; turn < piece.boxes.size() && turns.size() < maxPoses; ++turn) {
        const Box2& box = piece.boxes[turn];
        const bool isKnown = std::any_of(turns.begin(), turns.end(), [&](int other) {
            const Box2& known = piece.boxes[static_cast<std::size_t>(other)];
            return known.width() == box.width() && known.height() == box.height();
        });
        if (!isKnown && area(box) <= wastefulBox * least)
            turns.push_back(static_cast<int>(turn));
    }
    return turns;
}

} // namespace

BoxPlacer::BoxPlacer(const std::vector<Piece>& pieces, const Sheet& sheet,
                     const RunControl& control)
    : pieces_(pieces), sheet_(sheet), control_(control)
{
    turns_.reserve(pieces.size());
    for (const Piece& piece : pieces)
        turns_.push_back(turnsWorthTrying(piece));
}

std::vector<std::vector<double>> BoxPlacer::goodOrders() const
{
    if (pieces_.size() > maxPiecesAtOnce)
        return unfold3d::goodOrders(pieces_);
    // Weights divide the score; equal ones leave the choice to the fit alone.
    std::vector<std::vector<double>> orders(2);
    for (const Piece& piece : pieces_) {
        const Box2& box = piece.boxes.front();
        orders[0].push_back(1.0);
        orders[1].push_back(std::sqrt(std::max(box.width(), box.height())));
    }
    return orders;
}

bool BoxPlacer::setScale(double scale)
{
    scale_ = scale;
    poses_.assign(pieces_.size(), {});
    double area = 0.0;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        double least = std::numeric_limits<double>::infinity();
        for (const int turn : turns_[piece]) {
            const Box2& box = pieces_[piece].boxes[static_cast<std::size_t>(turn)];
            const BoxPose pose{turn, scale * box.width() + sheet_.gap,
                               scale * box.height() + sheet_.gap};
            poses_[piece].push_back(pose);
            least = std::min(least, pose.width * pose.height);
        }
        area += least;
    }
    return area <= sheet_.tileCount() * (sheet_.innerWidth() + sheet_.gap) *
                       (sheet_.innerHeight() + sheet_.gap);
}

void BoxPlacer::place(std::size_t piece, const BoxSpot& spot, BoxRoom& room, Attempt& attempt) const
{
    room.take(spot);
    const Box2& box = pieces_[piece].boxes[static_cast<std::size_t>(spot.pose.turn)];
    attempt.layout->placements[piece] = {spot.pose.turn, spot.tile,
                                         spot.free.low - scale_ * box.low};
    attempt.placedArea += pieces_[piece].area;
}

std::size_t BoxPlacer::layInOrder(std::span<const double> weights, BoxRoom& room,
                                  Attempt& attempt) const
{
    std::size_t placed = 0;
    for (const int p : heaviestFirst(weights)) {
        control_.checkpoint();
        const auto piece = static_cast<std::size_t>(p);
        const int tile = pieces_[piece].tile;
        BoxSpot spot = room.best(poses_[piece], 1.0, tile);
        if (!spot.isFound() && tile == Piece::anyTile && room.openNext())
            spot = room.best(poses_[piece], 1.0, tile);
        if (!spot.isFound())
            break;
        place(piece, spot, room, attempt);
        ++placed;
    }
    return placed;
}

std::size_t BoxPlacer::layBestFirst(std::span<const double> weights, BoxRoom& room,
                                    Attempt& attempt) const
{
    struct Waiting
    {
        std::size_t piece;
        BoxSpot best; ///< at present
    };
    std::vector<Waiting> waiting(pieces_.size());
    const auto lookAgain = [&] {
        for (Waiting& w : waiting)
            w.best = room.best(poses_[w.piece], weights[w.piece], pieces_[w.piece].tile);
    };
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        waiting[piece].piece = piece;
    lookAgain();
    while (!waiting.empty()) {
        control_.checkpoint();
        const auto chosen = std::min_element(
            waiting.begin(), waiting.end(),
            [](const Waiting& a, const Waiting& b) { return a.best.isBetterThan(b.best); });
        if (!chosen->best.isFound()) {
            if (!room.openNext())
                break;
            lookAgain();
            continue;
        }
        const BoxSpot taken = chosen->best;
        place(chosen->piece, taken, room, attempt);
        waiting.erase(chosen);
        for (Waiting& w : waiting)
            w.best = room.bestAfter(taken, w.best, poses_[w.piece], weights[w.piece],
                                    pieces_[w.piece].tile);
    }
    return pieces_.size() - waiting.size();
}

Attempt BoxPlacer::layOut(std::span<const double> weights) const
{
    BoxRoom room(sheet_);
    for (const Piece& piece : pieces_)
        if (piece.tile != Piece::anyTile && !room.isOpen(piece.tile))
            room.open(piece.tile);
    Attempt attempt;
    attempt.layout = Layout{scale_, std::vector<Placement>(pieces_.size())};
    const std::size_t placed = pieces_.size() <= maxPiecesAtOnce
                                   ? layBestFirst(weights, room, attempt)
                                   : layInOrder(weights, room, attempt);
    if (placed < pieces_.size())
        attempt.layout.reset();
    return attempt;
}

} // namespace unfold3d
