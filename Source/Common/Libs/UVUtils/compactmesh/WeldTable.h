#pragma once

#include "UVUtils/compactmesh/ShellArrays.h"

#include <map>
#include <span>
#include <vector>

/// Numbers vertices by position and UV: vertices whose keys are equal within the tolerance have one
/// weld id. Ids count from 0 in the order in which they are asked for first.
///
/// The answers are those of a std::map from keys to ids that is ordered by WeldKeyLess and takes a
/// key in when it is first asked for. Nearly always that order is a good one, and then classes of
/// equal keys, found beforehand, give the same answers at once. Where it is none (a key stands
/// between two near ones), answers depend on what the map holds already: the keys concerned are
/// asked for in such a map, which needs all others too to have the same shape.
class WeldTable
{
public:
    /// order  the vertices by position (orderByPosition)
    WeldTable(const ShellArrays& shell, std::span<const unsigned int> order);

    /// Ask in the same order for the same answers.
    unsigned int weldId(unsigned int vertex);
    unsigned int size() const { return static_cast<unsigned int>(firstVertex_.size()); }
    /// The vertex for which the id was made, and whose key stands for it.
    unsigned int firstVertexOf(unsigned int weldId) const { return firstVertex_[weldId]; }

    /// Vertices of different classes never have one weld id; those of one class always do, unless
    /// the answers depend on the order of questions.
    unsigned int classOf(unsigned int vertex) const { return classOf_[vertex]; }
    std::size_t classCount() const { return idOfClass_.size(); }
    /// May questions be left out whose answers are of no interest?
    bool dependsOnQuestions() const { return !isUnsettled_.empty(); }

private:
    unsigned int makeId(unsigned int vertex);

    const ShellArrays& shell_;
    std::vector<unsigned int> classOf_;     ///< [vertex]
    std::vector<unsigned int> idOfClass_;   ///< [class] none until asked for
    std::vector<unsigned int> firstVertex_; ///< [id]

    // Only where answers depend on questions:
    std::vector<char> isUnsettled_; ///< [class] of those keys
    std::map<WeldKey, unsigned int, WeldKeyLess> idOfKey_;
};
