#include "UVUtils/editing/PathHeap.h"

#include <numeric>

void PathHeap::fill(unsigned int vertexCount, unsigned int start)
{
    entries_.resize(vertexCount);
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex)
        entries_[vertex] = {unreached, vertex};
    positionOfVertex_.resize(vertexCount);
    std::iota(positionOfVertex_.begin(), positionOfVertex_.end(), 0U);
    // With equal keys everywhere else, ordering the heap from below comes down to this.
    lowerKey(start, 0.0F);
}

PathHeap::Entry PathHeap::pop()
{
    const Entry top = entries_.front();
    const Entry last = entries_.back();
    entries_.pop_back();
    if (!entries_.empty())
        sink(last);
    return top;
}

void PathHeap::lowerKey(unsigned int vertex, float key)
{
    rise(positionOfVertex_[vertex], {key, vertex});
}

void PathHeap::rise(std::size_t position, const Entry& entry)
{
    while (position > 0) {
        const std::size_t parent = (position - 1) / 2;
        if (!(entries_[parent].key > entry.key))
            break;
        put(position, entries_[parent]);
        position = parent;
    }
    put(position, entry);
}

/// From the top, whose place is free. Which child is less is a toss-up, so nothing branches on it.
void PathHeap::sink(const Entry& entry)
{
    std::size_t position = 0;
    for (std::size_t right = 2; right <= entries_.size(); right = 2 * position + 2) {
        const std::size_t other = right < entries_.size() ? right : right - 1;
        const bool isLeftLess = entries_[right - 1].key < entries_[other].key;
        const std::size_t child = other - static_cast<std::size_t>(isLeftLess);
        if (!(entry.key > entries_[child].key))
            break;
        put(position, entries_[child]);
        position = child;
    }
    put(position, entry);
}
