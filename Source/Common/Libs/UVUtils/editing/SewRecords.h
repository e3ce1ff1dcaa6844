#pragma once

#include "UVUtils/editing/SewKeys.h"

#include <unordered_set>

/// Which border edges take part in a merge, and which of their keys may be merged.
struct SewRecords
{
    std::vector<MergeRecord> records;
    std::vector<unsigned int> keyOfRecord; ///< [record] the number of its key
    std::vector<unsigned int> useOfKey;    ///< [number] see mergeVertexGroups
};

using EdgeSet = std::unordered_set<Edge, EdgeHash>;

/// All border edges on the keys of the edges to be sewn. A key with more than two edges is not to
/// be told apart: it gets no record, and its edges enter `unsewable`, in vertex ids, which may be
/// null.
SewRecords collectSewRecords(const SewKeys& keys, std::span<const MergeRecord> borders,
                             const BorderVertices& vertices, EdgeSet* unsewable);

/// Keeps open what a merge would fold: keys between whose ends there is an interior edge, places
/// between which there are at least three interior edges, and every key that touches an end of
/// these. The interior edges enter `unsewable`, which may be null.
void blockFolds(const SewKeys& keys, std::size_t placeCount, SewRecords& sewRecords,
                EdgeSet* unsewable);
