#pragma once

#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/Edge.h"

#include <span>
#include <vector>

/// One edge that may be joined with others of the same key, end by end.
struct MergeRecord
{
    Edge key;          ///< equal for edges that lie in one place
    unsigned int end0; ///< the vertex at key.first
    unsigned int end1; ///< the vertex at key.second
};

/// Vertices that become one.
struct VertexGroups
{
    Buckets<unsigned int> members;   ///< [group] its vertices; none for a group that joined another
    std::vector<unsigned int> keyId; ///< [group] the id in the key of its first vertex
};

/// Zips edges of equal keys together, so that chains of such edges grow into groups of vertices
/// across them. It is edges that join, never two vertices alone.
///
/// records      in the order in which groups and their members are made; the first of two groups
///              that meet at a record's end is the one of the earlier record, and takes the
///              other's members behind its own
/// keyOfRecord  [record] the number of its key (numberEdges)
/// useOfKey     [key]    up to 2: its records are joined; from 3 on their ends are joined by other
///              records only, and stand alone else
///
/// Every end is in exactly one group. Near linear in the records plus the highest vertex.
VertexGroups mergeVertexGroups(std::span<const MergeRecord> records,
                               std::span<const unsigned int> keyOfRecord,
                               std::span<const unsigned int> useOfKey);
