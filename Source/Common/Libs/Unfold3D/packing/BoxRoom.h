#pragma once

#include "Unfold3D/packing/FreeRectangles.h"
#include "Unfold3D/packing/Sheet.h"

#include <limits>
#include <map>
#include <span>

namespace unfold3d
{

/// A box as it is to be laid: the box of a piece in one of its turns, at the scale of the layout,
/// with the gap to its right and above.
struct BoxPose
{
    int turn = 0;
    double width = 0.0;
    double height = 0.0;
};

/// A place for a box.
struct BoxSpot
{
    double score = std::numeric_limits<double>::infinity(); ///< less is better
    double longer = 0.0; ///< room left along the other side, decides between equal scores
    int tile = -1;
    BoxPose pose;
    Box2 free; ///< what it was found in, from the lower left corner of the tile; the box goes there

    bool isFound() const { return tile >= 0; }
    bool isBetterThan(const BoxSpot& other) const
    {
        return score != other.score ? score < other.score : longer < other.longer;
    }
    Box2 box() const { return {free.low, free.low + Vec2{pose.width, pose.height}}; }
};

/// The room in the tiles that are in use.
///
/// A piece takes its box and the gap to the right and above, so the room reaches beyond the margin
/// by as much there.
class BoxRoom
{
public:
    explicit BoxRoom(const Sheet& sheet) : sheet_(sheet) {}

    bool isOpen(int tile) const { return tiles_.count(tile) > 0; }
    void open(int tile);
    /// Opens the lowest tile that isn't in use. False when there is none.
    bool openNext();

    /// Takes what the spot takes, which has to be free.
    void take(const BoxSpot& spot);

    /// The place that leaves the least room along one side, over all poses, in all tiles or in the
    /// one that is named. The score is divided by the weight.
    BoxSpot best(std::span<const BoxPose> poses, double weight, int tile) const;

    /// The same after a box was taken, for one whose best place was known before that: looks at
    /// what is new, and at everything only where the known place is gone.
    BoxSpot bestAfter(const BoxSpot& taken, const BoxSpot& known, std::span<const BoxPose> poses,
                      double weight, int tile) const;

private:
    const Sheet& sheet_;
    std::map<int, FreeRectangles> tiles_;
};

} // namespace unfold3d
