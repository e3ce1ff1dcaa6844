#pragma once

#include <cstddef>
#include <limits>
#include <vector>

/// A binary heap over all vertices of a graph, the least key on top, in which keys can be lowered.
///
/// Which of several equal keys comes out first follows from the order in which the heap moves its
/// entries, and that decides between paths of equal length. The order is part of what it promises:
/// a popped top is replaced by the last entry, which sinks below children with lesser keys, by way
/// of the right one unless the left one's key is less; a lowered entry rises above parents with
/// greater keys.
class PathHeap
{
public:
    struct Entry
    {
        float key;
        unsigned int vertex;
    };

    /// The key of what has not been reached.
    static constexpr float unreached = std::numeric_limits<float>::max();

    /// Takes in the vertices 0 to vertexCount - 1, in this order: `start` with key 0, all others
    /// unreached. Linear.
    void fill(unsigned int vertexCount, unsigned int start);

    bool isEmpty() const { return entries_.empty(); }

    /// What pop would take out. Not for an empty heap.
    const Entry& top() const { return entries_.front(); }

    /// Takes the top out.
    Entry pop();

    /// Gives a vertex that is still in the heap a lesser key than it has.
    void lowerKey(unsigned int vertex, float key);

private:
    void put(std::size_t position, const Entry& entry)
    {
        entries_[position] = entry;
        positionOfVertex_[entry.vertex] = static_cast<unsigned int>(position);
    }
    void rise(std::size_t position, const Entry& entry);
    void sink(const Entry& entry);

    std::vector<Entry> entries_; ///< the children of position i are at 2i + 1 and 2i + 2
    std::vector<unsigned int> positionOfVertex_; ///< nothing for one that was popped
};
