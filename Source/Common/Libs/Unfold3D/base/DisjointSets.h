#pragma once

#include <numeric>
#include <utility>
#include <vector>

namespace unfold3d
{

/// Union-find over 0 to n - 1. The lowest member stands for its set, so numbering sets in the order
/// of their representatives depends on the members alone.
class DisjointSets
{
public:
    explicit DisjointSets(int n) : parent_(static_cast<std::size_t>(n))
    {
        std::iota(parent_.begin(), parent_.end(), 0);
    }

    int find(int i)
    {
        while (parent(i) != i)
            i = parent(i) = parent(parent(i));
        return i;
    }
    /// True when the two were in different sets.
    bool join(int a, int b)
    {
        a = find(a);
        b = find(b);
        if (a == b)
            return false;
        if (b < a)
            std::swap(a, b);
        parent(b) = a;
        return true;
    }

private:
    int& parent(int i) { return parent_[static_cast<std::size_t>(i)]; }

    std::vector<int> parent_;
};

} // namespace unfold3d
