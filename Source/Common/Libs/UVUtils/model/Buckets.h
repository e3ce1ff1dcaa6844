#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

/// Items dealt into numbered buckets: lists of any length in one array. Moves, but isn't copied.
template <class Item>
class Buckets
{
public:
    Buckets() = default;

    /// A counting sort: two passes over the items, no comparison. Within a bucket items keep their
    /// order.
    ///
    /// visitAll  calls its argument with (bucket, item) for each item; runs twice and must say the
    ///           same both times
    template <class VisitAll>
    Buckets(std::size_t bucketCount, const VisitAll& visitAll) : offsets_(bucketCount + 2)
    {
        visitAll([this](unsigned int bucket, const Item&) { ++offsets_[bucket + 2]; });
        for (std::size_t i = 2; i < offsets_.size(); ++i)
            offsets_[i] += offsets_[i - 1];
        items_ = std::make_unique_for_overwrite<Item[]>(offsets_.back());
        // The places of a bucket fill up from its start, which so becomes the start of the next.
        visitAll([this](unsigned int bucket, const Item& item) {
            items_[offsets_[bucket + 1]++] = item;
        });
        offsets_.pop_back();
    }

    std::size_t size() const { return offsets_.size() - 1; }
    std::span<Item> operator[](std::size_t bucket)
    {
        return {items_.get() + offsets_[bucket], offsets_[bucket + 1] - offsets_[bucket]};
    }
    std::span<const Item> operator[](std::size_t bucket) const
    {
        return {items_.get() + offsets_[bucket], offsets_[bucket + 1] - offsets_[bucket]};
    }

    /// [size() + 1] where each bucket begins among the items, and the end of all.
    std::span<const unsigned int> offsets() const { return offsets_; }
    std::span<Item> items() { return {items_.get(), offsets_.back()}; } ///< bucket after bucket
    std::span<const Item> items() const { return {items_.get(), offsets_.back()}; }

private:
    std::vector<unsigned int> offsets_{0}; ///< [size() + 1]
    std::unique_ptr<Item[]> items_;        ///< [offsets_.back()] not filled with zeros first
};
