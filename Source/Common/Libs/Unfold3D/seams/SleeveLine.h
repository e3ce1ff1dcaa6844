#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace unfold3d
{

/// Some vertices of a surface, with numbers of their own.
struct VertexSet
{
    explicit VertexSet(std::span<const int> all) : vertices(all.begin(), all.end())
    {
        for (std::size_t i = 0; i < vertices.size(); ++i)
            numbers[vertices[i]] = static_cast<int>(i);
    }

    std::vector<int> vertices; ///< [number]
    std::unordered_map<int, int> numbers;

    /// -1 for a vertex that isn't among them.
    int numberOf(int vertex) const
    {
        const auto found = numbers.find(vertex);
        return found == numbers.end() ? -1 : found->second;
    }
};

/// A line over edges from one end of a sleeve of a surface to the other, which tells ways that
/// cross it from those that don't.
class SleeveLine
{
public:
    /// No line yet, so that nothing crosses it. Both are kept by reference.
    SleeveLine(const SeamMesh& mesh, const VertexSet& sleeve);

    /// line  numbers of vertices in the sleeve, in order
    void lay(std::vector<int> line);

    std::span<const int> vertices() const { return line_; }

    /// 1 for an edge that leaves the line to its left, -1 for one that comes to it from its left,
    /// 0 for all others: the sum along a way is how often the way has crossed the line.
    ///
    /// from, to  numbers in the sleeve
    int crossing(int from, int edge, int to) const;

private:
    enum class Met
    {
        Nothing,
        Next,
        Previous
    };

    bool isLeft(int number, int edge) const;
    Met firstMet(int vertex, int edge, int next, int previous, bool counterClockwise) const;
    Met meets(int vertex, int next, int previous) const;

    const SeamMesh& mesh_;
    const VertexSet& sleeve_;
    std::vector<int> line_;
    std::vector<int> placeInLine_; ///< [number] -1 off the line
};

} // namespace unfold3d
