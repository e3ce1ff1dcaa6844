#pragma once

#include <algorithm>
#include <span>
#include <utility>

/// Sorts a list that is nearly always very short, such as what lies at one vertex: no call, and
/// insertion where that is quickest. n log n where the list is long after all. Equal items end up
/// in any order.
template <class Item>
void sortFew(std::span<Item> items)
{
    constexpr std::size_t few = 12;
    if (items.size() > few) {
        std::sort(items.begin(), items.end());
        return;
    }
    for (std::size_t i = 1; i < items.size(); ++i) {
        const Item item = items[i];
        std::size_t place = i;
        for (; place > 0 && item < items[place - 1]; --place)
            items[place] = items[place - 1];
        items[place] = item;
    }
}
