#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A surface from which vertices are taken by moving each onto a neighbour. It stays a manifold
/// with the same connections, by the link condition (Dey, Edelsbrunner, Guha and Nekhayev 1999),
/// and its border stays a border.
class EdgeCollapse
{
public:
    /// Every vertex has to be the middle of one fan of triangles, open or closed. Both are read now
    /// and not kept.
    EdgeCollapse(std::span<const Vec3> positions, std::span<const Triangle> triangles);

    bool isOnBorder(int vertex) const { return isOnBorder_[static_cast<std::size_t>(vertex)] != 0; }
    /// Number of its triangles.
    int valence(int vertex) const { return valence_[static_cast<std::size_t>(vertex)]; }
    /// The neighbours of a vertex, ascending; valid up to the next call.
    std::span<const int> neighboursOf(int vertex);

    /// Whether a vertex may move onto a neighbour: connections are kept, triangles turn by less
    /// than 45 degrees, none becomes a needle, and no edge gets longer than `longest`.
    bool canMove(int vertex, int onto, double longest);
    /// Moves it, if that is allowed; the vertex is gone then.
    void move(int vertex, int onto);

    /// The triangles that are left, in the order in which they came.
    std::vector<Triangle> triangles() const;

private:
    struct Ring
    {
        std::vector<int> triangles;
        std::vector<int> vertices; ///< ascending, each once
    };

    void gather(int vertex, Ring& ring);
    bool keepsConnections(int vertex, int onto);
    bool keepsShape(int vertex, int onto, double longest) const;

    std::vector<Vec3> positions_;
    std::vector<Triangle> triangles_;
    std::vector<char> isGone_;     ///< [triangle]
    std::vector<char> isOnBorder_; ///< [vertex]
    std::vector<int> valence_;     ///< [vertex]
    std::vector<int> first_;       ///< [vertex] first of its corners, 3 t + i; -1 when gone
    std::vector<int> last_;        ///< [vertex]
    std::vector<int> next_;        ///< [corner] the next of its vertex, or -1
    Ring ring_;                    ///< of the vertex looked at
    Ring otherRing_;
    int ringOf_ = -1; ///< the vertex whose ring ring_ holds
};

} // namespace unfold3d
