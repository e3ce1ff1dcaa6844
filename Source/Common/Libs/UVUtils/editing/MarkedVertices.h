#pragma once

#include <span>
#include <vector>

class CompactShellMesh;

/// Some of the vertices of a compact mesh: a mark for each that it has. Whole sets of vertices go
/// from a node to its mesh and back by marks, which need no sort and keep each vertex once: a
/// vertex of the node belongs to them if its compact id has a mark.
///
/// All is linear in the mesh.
class MarkedVertices
{
public:
    /// Marks the vertices of the mesh that stand for some of the node's. Ids that the mesh doesn't
    /// know are passed over.
    MarkedVertices(const CompactShellMesh& mesh, std::span<const unsigned int> ids);

    [[nodiscard]] bool empty() const { return count_ == 0; }
    /// Whether all vertices of the mesh have a mark, so that nobody needs to look at marks.
    [[nodiscard]] bool isWholeMesh() const { return count_ == marks_.size(); }
    [[nodiscard]] std::span<const unsigned char> marks() const { return marks_; } ///< [compact id]

    /// The compact ids, ascending.
    [[nodiscard]] std::vector<unsigned int> compactIds() const;

private:
    std::vector<unsigned char> marks_; ///< [compact id] 1 or 0
    std::size_t count_ = 0;            ///< of the marks that are 1
};
