#pragma once

#include <span>
#include <vector>

class CompactShellMesh;

// Whole sets of vertices between a node and its compact mesh, both ways. All ids come out ascending
// and each once. Linear where they are a good part of the vertices, else n log n in ids.

/// The vertices of the mesh that stand for some of the node's. Ids that the mesh doesn't know are
/// passed over.
std::vector<unsigned int> meshVerticesOf(const CompactShellMesh& mesh,
                                         std::span<const unsigned int> ids);

/// All vertices of the node that some of the mesh's stand for.
std::vector<unsigned int> nodeVerticesOf(const CompactShellMesh& mesh,
                                         std::span<const unsigned int> compactIds);
