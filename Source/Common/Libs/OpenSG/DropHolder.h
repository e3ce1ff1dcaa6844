#pragma once

#include <cstddef>
#include <vector>

namespace osg
{

/// Takes a holder, which stands there, out of the list of those that hold something, one time. It
/// is looked for from both ends at once: those of a tree that goes are the first, and those of
/// copies that get a core of their own the last.
template <class Holder>
void dropHolder(std::vector<Holder>& holders, const Holder& holder)
{
    std::size_t first = 0;
    std::size_t last = holders.size() - 1;
    while (holders[first] != holder && holders[last] != holder) {
        ++first;
        --last;
    }
    const std::size_t found = holders[first] == holder ? first : last;
    holders.erase(holders.begin() + static_cast<std::ptrdiff_t>(found));
}

} // namespace osg
