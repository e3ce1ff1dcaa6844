#include "Unfold3D/packing/BoxPlacer.h"

#include "Unfold3D/packing/FreeRectangles.h"
#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace unfold3d
{

namespace
{

/// Pieces up to which each step looks at all of them: the work grows with their cube.
constexpr std::size_t maxPiecesAtOnce = 250;
/// A turn whose box is larger than the smallest one by more than this isn't tried.
constexpr double wastefulBox = 1.1;
constexpr std::size_t maxPoses = 8;

} // namespace

/// A place for a piece.
struct BoxPlacer::Spot
{
    double score = std::numeric_limits<double>::infinity(); ///< less is better
    double longer = 0.0; ///< room left along the other side, decides between equal scores
    int tile = -1;
    Pose pose{};
    Vec2 low; ///< lower left corner of the box, from that of the tile

    bool isBetterThan(const Spot& other) const
    {
        return score != other.score ? score < other.score : longer < other.longer;
    }
};

/// The room in the tiles that are in use.
///
/// A piece takes its box and the gap to the right and above, so the room reaches beyond the margin
/// by as much there.
class BoxPlacer::Room
{
public:
    explicit Room(const Sheet& sheet) : sheet_(sheet) {}

    const std::map<int, FreeRectangles>& tiles() const { return tiles_; }
    bool isOpen(int tile) const { return tiles_.count(tile) > 0; }

    void open(int tile)
    {
        const double gap = sheet_.gap;
        const Vec2 low{sheet_.margin, sheet_.margin};
        const Vec2 size{sheet_.innerWidth() + gap, sheet_.innerHeight() + gap};
        FreeRectangles& room = tiles_.try_emplace(tile, Box2{low, low + size}).first->second;
        for (const Obstacle& obstacle : sheet_.obstacles)
            if (obstacle.tile == tile)
                // What lies to its left and below keeps away by the gap that it takes itself.
                room.take({obstacle.outline.bounds().low,
                           obstacle.outline.bounds().high + Vec2{gap, gap}});
    }
    /// Opens the lowest tile that isn't in use. False when there is none.
    bool openNext()
    {
        int tile = 0;
        while (isOpen(tile))
            ++tile;
        if (tile >= sheet_.tileCount())
            return false;
        open(tile);
        return true;
    }
    void take(int tile, const Box2& used) { tiles_.at(tile).take(used); }

private:
    const Sheet& sheet_;
    std::map<int, FreeRectangles> tiles_;
};

BoxPlacer::BoxPlacer(const std::vector<Piece>& pieces, const Sheet& sheet,
                     const RunControl& control)
    : pieces_(pieces), sheet_(sheet), control_(control)
{
    const auto area = [](const Box2& box) { return box.width() * box.height(); };
    for (const Piece& piece : pieces) {
        double least = std::numeric_limits<double>::infinity();
        for (const Box2& box : piece.boxes)
            least = std::min(least, area(box));
        std::vector<Pose>& poses = poses_.emplace_back();
        for (std::size_t turn = 0; turn < piece.boxes.size() && poses.size() < maxPoses; ++turn) {
            const Box2& box = piece.boxes[turn];
            const bool isKnown = std::any_of(poses.begin(), poses.end(), [&](const Pose& pose) {
                return pose.box.width() == box.width() && pose.box.height() == box.height();
            });
            if (!isKnown && area(box) <= wastefulBox * least)
                poses.push_back({static_cast<int>(turn), box});
        }
    }
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
    double area = 0.0;
    for (const std::vector<Pose>& poses : poses_) {
        double least = std::numeric_limits<double>::infinity();
        for (const Pose& pose : poses)
            least = std::min(least, (scale * pose.box.width() + sheet_.gap) *
                                        (scale * pose.box.height() + sheet_.gap));
        area += least;
    }
    return area <= sheet_.tileCount() * (sheet_.innerWidth() + sheet_.gap) *
                       (sheet_.innerHeight() + sheet_.gap);
}

BoxPlacer::Spot BoxPlacer::bestSpot(std::size_t piece, double weight, const Room& room) const
{
    Spot best;
    for (const auto& [tile, rectangles] : room.tiles()) {
        if (pieces_[piece].tile != Piece::anyTile && pieces_[piece].tile != tile)
            continue;
        for (const Pose& pose : poses_[piece]) {
            const double width = scale_ * pose.box.width() + sheet_.gap;
            const double height = scale_ * pose.box.height() + sheet_.gap;
            for (const Box2& free : rectangles.all()) {
                const double overU = free.width() - width;
                const double overV = free.height() - height;
                if (overU < 0.0 || overV < 0.0)
                    continue;
                const Spot spot{std::min(overU, overV) / weight, std::max(overU, overV), tile, pose,
                                free.low};
                if (spot.isBetterThan(best))
                    best = spot;
            }
        }
    }
    return best;
}

void BoxPlacer::place(std::size_t piece, const Spot& spot, Room& room, Layout& layout) const
{
    const Vec2 size{scale_ * spot.pose.box.width() + sheet_.gap,
                    scale_ * spot.pose.box.height() + sheet_.gap};
    room.take(spot.tile, {spot.low, spot.low + size});
    layout.placements[piece] = {spot.pose.turn, spot.tile, spot.low - scale_ * spot.pose.box.low};
}

bool BoxPlacer::layInOrder(std::span<const double> weights, Room& room, Layout& layout) const
{
    for (const int p : heaviestFirst(weights)) {
        control_.checkpoint();
        const auto piece = static_cast<std::size_t>(p);
        Spot spot = bestSpot(piece, 1.0, room);
        if (spot.tile < 0) {
            if (pieces_[piece].tile != Piece::anyTile || !room.openNext())
                return false;
            spot = bestSpot(piece, 1.0, room);
            if (spot.tile < 0)
                return false;
        }
        place(piece, spot, room, layout);
    }
    return true;
}

bool BoxPlacer::layBestFirst(std::span<const double> weights, Room& room, Layout& layout) const
{
    std::vector<std::size_t> left = {};
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        left.push_back(piece);
    while (!left.empty()) {
        control_.checkpoint();
        Spot best;
        std::size_t chosen = 0;
        for (std::size_t i = 0; i < left.size(); ++i) {
            const Spot spot = bestSpot(left[i], weights[left[i]], room);
            if (spot.isBetterThan(best)) {
                best = spot;
                chosen = i;
            }
        }
        if (best.tile < 0) {
            if (!room.openNext())
                return false;
            continue;
        }
        place(left[chosen], best, room, layout);
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(chosen));
    }
    return true;
}

std::optional<Layout> BoxPlacer::layOut(std::span<const double> weights) const
{
    Room room(sheet_);
    for (const Piece& piece : pieces_)
        if (piece.tile != Piece::anyTile && !room.isOpen(piece.tile))
            room.open(piece.tile);
    Layout layout;
    layout.scale = scale_;
    layout.placements.resize(pieces_.size());
    const bool isDone = pieces_.size() <= maxPiecesAtOnce ? layBestFirst(weights, room, layout)
                                                          : layInOrder(weights, room, layout);
    if (!isDone)
        return std::nullopt;
    return layout;
}

} // namespace unfold3d
