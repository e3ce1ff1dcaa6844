#pragma once

#include "Unfold3D/base/Box2.h"
#include "Unfold3D/base/OffsetArray.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Finds boxes by place: a grid of square buckets, about one for each box.
class BoxGrid
{
public:
    /// No box is empty. Linear.
    explicit BoxGrid(std::span<const Box2> boxes);

    /// Calls use(i) for each box that meets the given one, in an order that depends on the boxes
    /// alone.
    template <class Use>
    void visit(const Box2& wanted, const Use& use) const
    {
        if (boxes_.empty() || !wanted.meets(whole_))
            return;
        const Range range = rangeOf(wanted);
        for (int y = range.lowY; y <= range.highY; ++y)
            for (int x = range.lowX; x <= range.highX; ++x)
                for (const int i : buckets_[y * columns_ + x]) {
                    const Box2& box = boxes_[static_cast<std::size_t>(i)];
                    if (!box.meets(wanted))
                        continue;
                    // A box is in several buckets: it counts in the first that both share.
                    const Range own = rangeOf(box);
                    if (x == std::max(own.lowX, range.lowX) && y == std::max(own.lowY, range.lowY))
                        use(i);
                }
    }

private:
    struct Range
    {
        int lowX, lowY, highX, highY;
    };

    Range rangeOf(const Box2& box) const;

    std::vector<Box2> boxes_;
    Box2 whole_;
    double bucket_ = 1.0;
    int columns_ = 1;
    int rows_ = 1;
    OffsetArray<int> buckets_;
};

} // namespace unfold3d
