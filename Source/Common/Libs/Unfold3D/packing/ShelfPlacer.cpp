#include "Unfold3D/packing/ShelfPlacer.h"

#include "Unfold3D/packing/EvenTiles.h"
#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
#include <map>

namespace unfold3d
{

namespace
{

/// The rows of one tile.
class Shelves
{
public:
    explicit Shelves(const Sheet& sheet) : sheet_(sheet), next_{sheet.margin, sheet.margin} {}

    /// Finds a place for a box that is no taller than those before. False when there is none.
    bool put(double width, double height, Vec2& low)
    {
        if (next_.x + width > sheet_.width - sheet_.margin && next_.x > sheet_.margin)
            next_ = {sheet_.margin, top_ + sheet_.gap};
        if (next_.x + width > sheet_.width - sheet_.margin ||
            next_.y + height > sheet_.height - sheet_.margin)
            return false;
        low = next_;
        next_.x += width + sheet_.gap;
        top_ = std::max(top_, low.y + height);
        return true;
    }

private:
    const Sheet& sheet_;
    Vec2 next_;
    double top_ = 0.0;
};

} // namespace

std::vector<std::vector<double>> ShelfPlacer::goodOrders() const
{
    std::vector<double> heights;
    heights.reserve(pieces_.size());
    for (const Piece& piece : pieces_)
        heights.push_back(piece.boxes.front().height());
    return {std::move(heights)};
}

bool ShelfPlacer::setScale(double scale)
{
    scale_ = scale;
    return sheet_.obstacles.empty();
}

Attempt ShelfPlacer::layOut(std::span<const double> weights) const
{
    Layout layout;
    layout.scale = scale_;
    layout.placements.resize(pieces_.size());
    std::map<int, Shelves> shelvesOfTile;
    EvenTiles tiles(sheet_, pieces_.size());
    for (const int p : heaviestFirst(weights)) {
        const Piece& piece = pieces_[static_cast<std::size_t>(p)];
        const Box2& box = piece.boxes.front();
        const auto put = [&](int tile) {
            Vec2 low;
            Shelves& shelves = shelvesOfTile.try_emplace(tile, sheet_).first->second;
            if (!shelves.put(scale_ * box.width(), scale_ * box.height(), low))
                return false;
            layout.placements[static_cast<std::size_t>(p)] = {0, tile, low - scale_ * box.low};
            return true;
        };
        if (!tiles.lay(piece, put))
            return {};
    }
    return {std::move(layout), 0.0};
}

} // namespace unfold3d
