#pragma once

#include <memory>
#include <span>
#include <vector>

/// The vertices of some edges under small numbers of their own, their places, which ascend with
/// their ids: what is kept by place is no larger than the edges are.
class BorderVertices
{
public:
    /// edges  ids below vertexCount. Linear in vertices, with a flag each.
    BorderVertices(std::span<const unsigned int> edges, unsigned int vertexCount);

    unsigned int size() const { return static_cast<unsigned int>(ids_.size()); }
    unsigned int idAt(unsigned int place) const { return ids_[place]; }
    bool contains(unsigned int id) const { return isContained_[id] != 0; }
    /// [vertex] 1 for one that is contained, else 0: for passes over very many.
    std::span<const char> flags() const { return isContained_; }
    /// Only for one that is contained.
    unsigned int placeOf(unsigned int id) const { return placeOfId_[id]; }

private:
    std::vector<unsigned int> ids_;             ///< [place]
    std::vector<char> isContained_;             ///< [vertex]
    std::unique_ptr<unsigned int[]> placeOfId_; ///< [vertex] nothing for one that isn't contained
};
