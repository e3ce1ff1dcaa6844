#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// Sorts what is in order already but for a few items: the drop-merge sort of Emil Ernerfelt. One
/// pass takes the items that are out of place aside; sorted by themselves they are merged in again.
///
/// keyOf  what orders an item; no two items have the same key, or which comes first is open
///
/// Returns false, with the items in any order, once more than one in 16 were out of place: another
/// way is quicker then. Linear else.
template <class Item, class KeyOf>
bool sortNearlySorted(std::vector<Item>& items, const KeyOf& keyOf)
{
    if (items.empty())
        return true;
    const std::size_t affordable = items.size() / 16;
    std::vector<Item> strays;
    std::size_t kept = 1; // the front of the items, in order; as many places behind as strays
    auto lastKey = keyOf(items.front());
    for (std::size_t i = 1; i < items.size(); ++i) {
        const Item item = items[i];
        const auto key = keyOf(item);
        if (!(key < lastKey)) {
            items[kept++] = item;
            lastKey = key;
            continue;
        }
        // Whichever of the two is out of place: where the last one was, all behind it seem to be.
        const bool isLastTheStray = kept > 1 && !(key < keyOf(items[kept - 2]));
        strays.push_back(isLastTheStray ? items[kept - 1] : item);
        if (isLastTheStray) {
            items[kept - 1] = item;
            lastKey = key;
        }
        if (strays.size() > affordable) {
            std::copy(strays.begin(), strays.end(),
                      items.begin() + static_cast<std::ptrdiff_t>(kept));
            return false;
        }
    }
    std::sort(strays.begin(), strays.end(),
              [&](const Item& a, const Item& b) { return keyOf(a) < keyOf(b); });
    for (std::size_t end = items.size(); !strays.empty();) {
        if (kept > 0 && keyOf(strays.back()) < keyOf(items[kept - 1])) {
            items[--end] = items[--kept];
        } else {
            items[--end] = strays.back();
            strays.pop_back();
        }
    }
    return true;
}
