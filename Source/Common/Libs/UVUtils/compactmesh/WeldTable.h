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

    /// Vertices of one class always have one weld id, and those of different ones never do, unless
    /// both classes are unsettled.
    unsigned int classOf(unsigned int vertex) const { return classOf_[vertex]; }
    /// [class] whether its id depends on which questions came before.
    std::vector<char> unsettledClasses() const;
    /// Is there such a class? Then no question may be left out, not even one whose answer is of no
    /// interest.
    bool dependsOnQuestions() const { return !isUnsettled_.empty(); }

private:
    unsigned int makeId(unsigned int vertex);

    const ShellArrays& shell_;
    std::vector<unsigned int> classOf_;     ///< [vertex]
    std::vector<unsigned int> idOfClass_;   ///< [class] none until asked for
    std::vector<unsigned int> firstVertex_; ///< [id]

    // Only where answers depend on questions:
    using IdOfKey = std::map<WeldKey, unsigned int, WeldKeyLess>;
    std::vector<char> isUnsettled_; ///< [class]
    IdOfKey idOfKey_;
};
