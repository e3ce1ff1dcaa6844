#pragma once

#include "Unfold3D/packing/Piece.h"
#include "Unfold3D/packing/Sheet.h"

#include <algorithm>
#include <set>
#include <utility>

namespace unfold3d
{

/// Which tile a piece is laid into while a layout is made: the one that holds the least area so
/// far, so that all are filled evenly. More tiles than pieces aren't looked at.
class EvenTiles
{
public:
    EvenTiles(const Sheet& sheet, std::size_t pieces)
    {
        const auto count = std::min(static_cast<std::size_t>(sheet.tileCount()), pieces);
        for (std::size_t tile = 0; tile < count; ++tile)
            byArea_.emplace_hint(byArea_.end(), 0.0, static_cast<int>(tile));
    }

    /// Calls put(tile) for the tiles that the piece may go to, the emptiest first, until it returns
    /// true. False when it never does.
    template <class Put>
    bool lay(const Piece& piece, const Put& put)
    {
        if (piece.tile != Piece::anyTile)
            return put(piece.tile);
        const auto found = std::find_if(byArea_.begin(), byArea_.end(),
                                        [&](const auto& entry) { return put(entry.second); });
        if (found == byArea_.end())
            return false;
        const auto [area, tile] = *found;
        byArea_.erase(found);
        byArea_.emplace(area + piece.area, tile);
        return true;
    }

private:
    std::set<std::pair<double, int>> byArea_; ///< of what was laid into each tile
};

} // namespace unfold3d
