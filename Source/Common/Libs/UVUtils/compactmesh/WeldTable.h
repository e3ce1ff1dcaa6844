#pragma once

#include "UVUtils/compactmesh/ShellArrays.h"

#include <map>
#include <vector>

/// Numbers vertices by position and UV: vertices whose keys are equal within the tolerance have one
/// weld id. Ids count from 0 in the order in which they are asked for first.
class WeldTable
{
public:
    explicit WeldTable(const ShellArrays& shell) : shell_(shell) {}

    unsigned int weldId(unsigned int vertex);
    unsigned int size() const { return static_cast<unsigned int>(firstVertex_.size()); }
    /// The vertex for which the id was made, and whose key stands for it.
    unsigned int firstVertexOf(unsigned int weldId) const { return firstVertex_[weldId]; }

private:
    const ShellArrays& shell_;
    std::map<WeldKey, unsigned int, WeldKeyLess> idOfKey_;
    std::vector<unsigned int> firstVertex_;
};
