#pragma once

#include "Unfold3D/linear/EliminationTree.h"

#include <vector>

namespace unfold3d
{

/// Groups of columns of a factor that are stored and eliminated as one dense block.
///
///   columnsOf  [supernode]  its columns, ascending
///   parent     [supernode]  the supernode that takes its update; -1 for a root
///   height     [supernode]  rows of its block: its columns and all rows below
///
/// A parent comes after its children.
struct SupernodeTree
{
    std::vector<std::vector<int>> columnsOf;
    std::vector<int> parent;
    std::vector<int> height;
};

/// Joins columns with equal rows, then small supernodes with their parents wherever the dense
/// arithmetic gains more than the zeros cost that come into the blocks.
SupernodeTree groupColumns(const EliminationTree& tree);

/// A postorder of the supernodes that keeps the stack of waiting updates low (Liu 1986): supernodes
/// in the order in which to eliminate them.
std::vector<int> eliminationSequence(const SupernodeTree& tree);

} // namespace unfold3d
