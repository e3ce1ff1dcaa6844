#pragma once

#include <span>
#include <vector>

namespace unfold3d
{

/// Lists of different lengths behind each other: `flat` holds the items of list 0, then those of
/// list 1, and so on; list i begins at offsets[i] and ends at offsets[i + 1].
template <class T>
struct OffsetArray
{
    std::vector<int> offsets{0};
    std::vector<T> flat;

    int size() const { return static_cast<int>(offsets.size()) - 1; }
    std::span<const T> operator[](int list) const
    {
        const auto begin = static_cast<std::size_t>(offsets[static_cast<std::size_t>(list)]);
        const auto end = static_cast<std::size_t>(offsets[static_cast<std::size_t>(list) + 1]);
        return {flat.data() + begin, end - begin};
    }
    /// Ends the list that push_back on `flat` has been filling.
    void closeList() { offsets.push_back(static_cast<int>(flat.size())); }
};

/// The numbers 0 to keys.size() - 1 grouped by key, ascending in each list. A negative key leaves
/// its number out. Every key is below listCount.
inline OffsetArray<int> groupByKey(std::span<const int> keys, int listCount)
{
    OffsetArray<int> groups;
    groups.offsets.assign(static_cast<std::size_t>(listCount) + 1, 0);
    for (const int key : keys)
        if (key >= 0)
            ++groups.offsets[static_cast<std::size_t>(key) + 1];
    for (std::size_t i = 1; i < groups.offsets.size(); ++i)
        groups.offsets[i] += groups.offsets[i - 1];
    groups.flat.resize(static_cast<std::size_t>(groups.offsets.back()));
    std::vector<int> next(groups.offsets.begin(), groups.offsets.end() - 1);
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i] >= 0)
            groups.flat[static_cast<std::size_t>(next[static_cast<std::size_t>(keys[i])]++)] =
                static_cast<int>(i);
    return groups;
}

} // namespace unfold3d
