#pragma once

#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/BorderGap.h"
#include "Unfold3D/parameterisation/Spring.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A repulsion between pieces of the border that face each other across empty space, in the manner
/// of Li and others (2020): a logarithmic barrier on the distance of a point from an edge, smooth
/// and zero beyond its reach. Very near contact it is steep but finite: that nothing crosses is for
/// an exact test of every layout to see to. Where the way along the border from the point to the
/// edge is short, so is the reach; the shape itself brings such pieces near each other.
///
/// All positions are [point], as borderPositions gives them. Near linear in the points.
class BorderBarrier
{
public:
    /// reach     distance from which on nothing is felt
    /// pressure  force per length of border when the distance is about half the reach
    /// isFixed   [vertex] fixed ones don't feel each other; may be empty, kept by reference
    BorderBarrier(const Border& border, double reach, double pressure,
                  std::span<const char> isFixed = {})
        : border_(border), reach_(reach), pressure_(pressure), isFixed_(isFixed)
    {}

    const Border& border() const { return border_; }

    double energy(std::span<const Vec2> positions) const;

    /// Adds the derivatives of the energy as springs between vertices of the island.
    void addSprings(std::span<const Vec2> positions, std::vector<Spring>& springs) const;

    /// Adds the pairs of vertices that springs may join once distances have shrunk by `factor`.
    void addPairsWithin(std::span<const Vec2> positions, double factor,
                        std::vector<NodePair>& pairs) const;

    /// Whether every gap kept a fair part of what it had of the barrier's reach. A step that eats
    /// up nearly all of it leaves the barrier too steep for the next step.
    bool isFairMove(std::span<const Vec2> before, std::span<const Vec2> after) const;

    /// Least distance of pieces that face each other, of those for which the whole reach counts;
    /// at most the reach.
    double leastDistance(std::span<const Vec2> positions) const;

private:
    template <class Visit>
    void forEachContact(std::span<const Vec2> positions, double factor, const Visit& visit) const;
    template <class Visit>
    void visitContact(std::span<const Vec2> positions, int point, int edge, double factor,
                      const Visit& visit) const;
    double forceAt(int point) const;
    bool isFixed(int point) const
    {
        return !isFixed_.empty() && isFixed_[static_cast<std::size_t>(border_.vertexOf(point))];
    }

    const Border& border_;
    double reach_;
    double pressure_;
    std::span<const char> isFixed_;
};

} // namespace unfold3d
