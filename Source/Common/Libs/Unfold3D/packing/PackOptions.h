#pragma once

#include "Unfold3D/base/Box2.h"

#include <limits>

namespace unfold3d
{

/// How an island is turned before anything else. The numbers are those of the command.
enum class PreRotation
{
    None = 0,
    LongestSideAlongU = 1, ///< the longest side of its convex hull
    LongestSideAlongV = 2,
    LeastBox = 3,       ///< its box of least area along the axes, by the lesser turn
    LeastBoxAlongU = 4, ///< the same with the longer side of the box along U
    LeastBoxAlongV = 5
};

/// What the sizes of the islands are before the layout as a whole is scaled.
enum class IslandScaling
{
    None = 0,       ///< as they are
    ByArea = 1,     ///< each so that its area is that of its surface
    ByOneFactor = 3 ///< as they are relative to each other, their whole area that of their surfaces
};

/// What is done with the size of the whole layout.
enum class LayoutScaling
{
    Keep = 0,         ///< nothing; islands that don't fit are an error
    KeepOrShrink = 1, ///< made smaller where it doesn't fit
    Fit = 2,          ///< as large as it fits
    Stretch = 3       ///< as large as it fits, then pulled to the far sides of the box
};

/// Which tile an island goes to.
enum class TileChoice
{
    ByBoxCentre, ///< the one that the middle of its box lies in, or the nearest
    Distribute   ///< any
};

/// Lengths are in UV units, angles in degrees.
struct PackOptions
{
    /// May islands be moved? Without, each is turned and scaled around the middle of its box, and
    /// nothing from `layoutScaling` on has an effect.
    bool translate = true;

    PreRotation preRotation = PreRotation::None;
    /// On top of that, each island may be turned by turnMin, turnMin + turnStep ... up to turnMax.
    /// 0: not.
    double turnStep = 0.0;
    double turnMin = 0.0;
    double turnMax = 360.0;
    IslandScaling islandScaling = IslandScaling::None;

    LayoutScaling layoutScaling = LayoutScaling::Fit;
    int resolution = 256; ///< cells along the longer side of the box in which room is looked for
    int mutations = 1;    ///< rounds of trying other orders
    /// When it is finite, the search goes on for so long, whatever `mutations` is. There is a
    /// layout even if the first one takes longer.
    double seconds = std::numeric_limits<double>::infinity();
    double spacing = 0.0; ///< least distance between islands
    double margin = 0.0;  ///< least distance between islands and the sides of their tile
    Box2 box{{0.0, 0.0}, {1.0, 1.0}};
    int tilesU = 1; ///< the box and its copies to the right
    int tilesV = 1; ///< and those above
    TileChoice tileChoice = TileChoice::Distribute;
};

/// Is the layout made no larger than the islands are?
inline bool keepsSize(const PackOptions& options)
{
    return options.layoutScaling == LayoutScaling::Keep ||
           options.layoutScaling == LayoutScaling::KeepOrShrink;
}

} // namespace unfold3d
