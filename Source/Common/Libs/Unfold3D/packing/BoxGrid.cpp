#include "Unfold3D/packing/BoxGrid.h"

#include <cmath>

namespace unfold3d
{

namespace
{

/// Keeps the grid from growing far beyond the number of boxes when they lie on a line.
constexpr double maxBucketsAlong = 1024.0;

} // namespace

BoxGrid::BoxGrid(std::span<const Box2> boxes) : boxes_(boxes.begin(), boxes.end())
{
    for (const Box2& box : boxes_)
        whole_.add(box);
    if (boxes_.empty())
        return;
    const double width = whole_.width();
    const double height = whole_.height();
    bucket_ = std::max({std::sqrt(width * height / static_cast<double>(boxes_.size())),
                        std::max(width, height) / maxBucketsAlong});
    if (!(bucket_ > 0.0))
        bucket_ = 1.0;
    columns_ = static_cast<int>(width / bucket_) + 1;
    rows_ = static_cast<int>(height / bucket_) + 1;

    // Counted first, then filled: no list of its own for each bucket.
    std::vector<int>& offsets = buckets_.offsets;
    offsets.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_) + 1, 0);
    const auto forBuckets = [&](const Box2& box, const auto& use) {
        const Range range = rangeOf(box);
        for (int y = range.lowY; y <= range.highY; ++y)
            for (int x = range.lowX; x <= range.highX; ++x)
                use(static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) +
                    static_cast<std::size_t>(x));
    };
    for (const Box2& box : boxes_)
        forBuckets(box, [&](std::size_t bucket) { ++offsets[bucket + 1]; });
    for (std::size_t i = 1; i < offsets.size(); ++i)
        offsets[i] += offsets[i - 1];
    buckets_.flat.resize(static_cast<std::size_t>(offsets.back()));
    std::vector<int> next(offsets.begin(), offsets.end() - 1);
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        forBuckets(boxes_[i], [&](std::size_t bucket) {
            buckets_.flat[static_cast<std::size_t>(next[bucket]++)] = static_cast<int>(i);
        });
}

BoxGrid::Range BoxGrid::rangeOf(const Box2& box) const
{
    const auto along = [this](double distance, int count) {
        return static_cast<int>(std::clamp(std::floor(distance / bucket_), 0.0, count - 1.0));
    };
    return {along(box.low.x - whole_.low.x, columns_), along(box.low.y - whole_.low.y, rows_),
            along(box.high.x - whole_.low.x, columns_), along(box.high.y - whole_.low.y, rows_)};
}

} // namespace unfold3d
