#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/LayoutWarning.h"
#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/parameterisation/NodeLayout.h"
#include "Unfold3D/parameterisation/Spring.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

/// A coordinate of a layout.
enum class Axis : std::int8_t
{
    U,
    V
};

inline double coordinate(const Vec2& point, Axis axis)
{
    return axis == Axis::U ? point.x : point.y;
}
inline double& coordinate(Vec2& point, Axis axis)
{
    return axis == Axis::U ? point.x : point.y;
}

/// Lines of vertices that shall have a coordinate in common. Line l has a node of its own,
/// nodeOf(l) behind the vertices, whose u is that coordinate; its v means nothing.
class StraightLines
{
public:
    struct Line
    {
        Axis axis;                   ///< of the common coordinate
        std::vector<int> vertices;   ///< ascending
        std::vector<double> weights; ///< [position in vertices] length of line it stands for
        bool isFixed = false;        ///< has vertices that don't move, so the line doesn't either
    };

    /// Takes of the lines asked for what can be had. Lines along one axis that share a vertex
    /// become one. Left out, with a warning, are lines that would fold triangles: those that close
    /// a ring or branch, and those that meet another one twice.
    StraightLines(const IslandMesh& mesh, std::span<const StraightLine> asked,
                  std::vector<LayoutWarning>& warnings);

    /// Fixes vertices where they are in `uv`; isFixed [vertex]. Leaves out, with a warning, lines
    /// whose fixed vertices aren't on one, and without one those of which nothing can move.
    void fix(std::span<const char> isFixed, std::span<const Vec2> uv,
             std::vector<LayoutWarning>& warnings);

    int count() const { return static_cast<int>(lines_.size()); }
    std::span<const Line> lines() const { return lines_; }
    int nodeOf(int line) const { return vertexCount_ + line; }
    bool isFixed(int line) const { return lines_[static_cast<std::size_t>(line)].isFixed; }
    /// Keeps the lines for which isKept [line] holds, and returns the others.
    std::vector<Line> keep(std::span<const char> isKept);

    /// The angle by which a layout ([vertex]) is to be turned for the lines to run along their axes
    /// as well as they can.
    double bestTurn(std::span<const Vec2> uv) const;
    /// Turns a layout by that.
    void turnAlong(std::vector<Vec2>& uv) const;

    /// The coordinate that is nearest to the vertices of a line, uv [vertex or node]; when some of
    /// them are fixed, to those.
    double mean(int line, std::span<const Vec2> uv) const;
    /// Moves the vertices of a line onto that, but for the fixed ones.
    void straighten(int line, std::vector<Vec2>& uv) const;

    /// Moves the vertices of all lines onto them, one behind the other by the lengths that their
    /// edges have in the mesh, in the direction in which most of the line runs already. Returns
    /// [vertex] which these are; nothing, with the layout as it was, where lines cross or a line is
    /// in pieces.
    std::vector<char> rollOut(const IslandMesh& mesh, std::vector<Vec2>& uv) const;

    /// Energy and derivatives of springs between the vertices and their lines' nodes.
    double energy(const NodeLayout& layout, double stiffness) const;
    void addSprings(const NodeLayout& layout, double stiffness, std::vector<Spring>& springs) const;

    /// Warns of lines that can't be had without flipping triangles, if there are any.
    static void warnOfGivenUp(std::span<const Line> lines, std::vector<LayoutWarning>& warnings);

    /// Adds the pairs of nodes that meet once vertices share the unknown of their line, in a mesh
    /// whose vertices meet in triangles and in the pairs that stand in `pairs` already.
    void addPairs(std::span<const Triangle> triangles, std::vector<NodePair>& pairs) const;

private:
    struct Segment
    {
        Axis axis;
        std::array<int, 2> vertices;
    };

    bool isFixedVertex(int v) const
    {
        return !isFixed_.empty() && isFixed_[static_cast<std::size_t>(v)];
    }

    std::vector<int> chainOf(int line) const;

    int vertexCount_;
    std::vector<char> isFixed_; ///< [vertex] empty when all move
    std::vector<Line> lines_;
    std::vector<Segment> segments_; ///< edges of the mesh between vertices of one line
};

} // namespace unfold3d
