#pragma once

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace uvtool
{

/// Sets of numbers that only ever grow together. The lowest member stands for its set, so that
/// answers don't depend on the order of the joins.
class DisjointSets
{
public:
    explicit DisjointSets(std::size_t count) : parent_(count)
    {
        std::iota(parent_.begin(), parent_.end(), 0U);
    }

    std::uint32_t find(std::uint32_t member)
    {
        while (parent_[member] != member) {
            parent_[member] = parent_[parent_[member]];
            member = parent_[member];
        }
        return member;
    }

    void join(std::uint32_t a, std::uint32_t b)
    {
        a = find(a);
        b = find(b);
        if (a < b)
            parent_[b] = a;
        else
            parent_[a] = b;
    }

private:
    std::vector<std::uint32_t> parent_;
};

} // namespace uvtool
