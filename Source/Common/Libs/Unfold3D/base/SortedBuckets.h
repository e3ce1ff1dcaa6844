#pragma once

#include "Unfold3D/base/OffsetArray.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace unfold3d
{

/// Sorts items into buckets, and each bucket by itself: what a sort by the bucket first gives, but
/// linear where few items share one.
///
/// visit(put) calls put(bucket, item) for every item; it is called twice and has to do the same
/// each time. No two items of a bucket may be equal.
template <class Item, class Visit>
OffsetArray<Item> sortedBuckets(int bucketCount, const Visit& visit)
{
    OffsetArray<Item> buckets;
    buckets.offsets.assign(static_cast<std::size_t>(bucketCount) + 1, 0);
    visit(
        [&](int bucket, const Item&) { ++buckets.offsets[static_cast<std::size_t>(bucket) + 1]; });
    for (std::size_t i = 1; i < buckets.offsets.size(); ++i)
        buckets.offsets[i] += buckets.offsets[i - 1];
    buckets.flat.resize(static_cast<std::size_t>(buckets.offsets.back()));
    std::vector<int> next(buckets.offsets.begin(), buckets.offsets.end() - 1);
    visit([&](int bucket, const Item& item) {
        buckets.flat[static_cast<std::size_t>(next[static_cast<std::size_t>(bucket)]++)] = item;
    });
    for (std::size_t i = 0; i + 1 < buckets.offsets.size(); ++i)
        std::sort(buckets.flat.begin() + buckets.offsets[i],
                  buckets.flat.begin() + buckets.offsets[i + 1]);
    return buckets;
}

} // namespace unfold3d
