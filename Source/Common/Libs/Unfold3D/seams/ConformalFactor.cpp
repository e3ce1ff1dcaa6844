#include "Unfold3D/seams/ConformalFactor.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/linear/VertexGraph.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace unfold3d
{

namespace
{

/// u is kept within this: e^(2 u) of a spike that nobody sees must not drown all else.
constexpr double largestFactor = 20.0;
/// Strain from which on the energy grows by its size rather than its square.
constexpr double parabolaEnds = 0.3;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

double meanLongestEdge(std::span<const Vec3> positions, std::span<const Triangle> triangles)
{
    double sum = 0.0;
    for (const Triangle& t : triangles)
        for (std::size_t i = 0; i < 3; ++i)
            sum += length(positions[at(t[(i + 1) % 3])] - positions[at(t[i])]);
    return triangles.empty() ? 1.0 : sum / (3.0 * static_cast<double>(triangles.size()));
}

struct CornerAngles
{
    std::array<double, 3> angle;
    std::array<double, 3> cotangent;
};

CornerAngles anglesOf(const RestTriangle& rest)
{
    const std::array<Vec2, 3> p{Vec2{0.0, 0.0}, Vec2{rest.bx, 0.0}, Vec2{rest.cx, rest.cy}};
    const double doubleArea = 2.0 * rest.area();
    CornerAngles angles{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double along = dot(p[(i + 1) % 3] - p[i], p[(i + 2) % 3] - p[i]);
        angles.angle[i] = std::atan2(doubleArea, along);
        angles.cotangent[i] = along / doubleArea;
    }
    return angles;
}

std::vector<int> partsOf(std::span<const Triangle> triangles, int vertexCount)
{
    DisjointSets sets(vertexCount);
    for (const Triangle& t : triangles) {
        sets.join(t[0], t[1]);
        sets.join(t[0], t[2]);
    }
    std::vector<int> part(at(vertexCount));
    for (int v = 0; v < vertexCount; ++v)
        part[at(v)] = sets.find(v);
    return part;
}

} // namespace

ConformalFactor::ConformalFactor(std::span<const Vec3> positions,
                                 std::span<const Triangle> triangles, const RunControl& control)
    : areas_(positions.size(), 0.0), angleDefects_(positions.size(), 2.0 * std::numbers::pi),
      part_(partsOf(triangles, static_cast<int>(positions.size()))),
      partArea_(positions.size(), 0.0),
      symbolic_(analyse(vertexGraph(triangles, static_cast<int>(positions.size())), control)),
      stiffness_(symbolic_.entryRows.size(), 0.0), matrix_(symbolic_, 1), cholesky_(symbolic_)
{
    const double scale = meanLongestEdge(positions, triangles);
    for (const Triangle& t : triangles) {
        const RestTriangle rest =
            restTriangle(positions[at(t[0])], positions[at(t[1])], positions[at(t[2])], scale);
        const CornerAngles angles = anglesOf(rest);
        for (std::size_t i = 0; i < 3; ++i) {
            areas_[at(t[i])] += rest.area() / 3.0;
            angleDefects_[at(t[i])] -= angles.angle[i];
            const int a = symbolic_.newOfOld[at(t[(i + 1) % 3])];
            const int b = symbolic_.newOfOld[at(t[(i + 2) % 3])];
            stiffness_[at(symbolic_.entryOf(a, b))] -= 0.5 * angles.cotangent[i];
        }
    }
    for (std::size_t v = 0; v < part_.size(); ++v)
        partArea_[at(part_[v])] += areas_[v];
}

void ConformalFactor::assemble(std::span<const char> isFixed)
{
    matrix_.setZero();
    const auto isFixedColumn = [&](std::size_t column) {
        return isFixed[at(symbolic_.oldOfNew[column])] != 0;
    };
    for (std::size_t column = 0; column < areas_.size(); ++column)
        for (int e = symbolic_.columnOffsets[column]; e < symbolic_.columnOffsets[column + 1]; ++e)
        {
            const std::size_t row = at(symbolic_.entryRows[at(e)]);
            matrix_.diagonal[column] -= stiffness_[at(e)];
            matrix_.diagonal[row] -= stiffness_[at(e)];
            if (!isFixedColumn(column) && !isFixedColumn(row))
                matrix_.lower[at(e)] = stiffness_[at(e)];
        }
    for (std::size_t column = 0; column < areas_.size(); ++column)
        if (isFixedColumn(column))
            matrix_.diagonal[column] = 1.0;
}

std::vector<int> ConformalFactor::anchorsOfClosedParts(std::span<const char> isCut)
{
    std::vector<char> hasCut(part_.size(), 0);
    for (std::size_t v = 0; v < part_.size(); ++v)
        if (isCut[v])
            hasCut[at(part_[v])] = 1;
    std::vector<int> anchors;
    for (std::size_t v = 0; v < part_.size(); ++v)
        if (at(part_[v]) == v && !hasCut[v])
            anchors.push_back(static_cast<int>(v));
    return anchors;
}

void ConformalFactor::dealOutMean(std::span<const int> anchors, std::vector<double>& values) const
{
    std::vector<double> sum(values.size(), 0.0);
    std::vector<char> isClosed(values.size(), 0);
    for (const int anchor : anchors)
        isClosed[at(anchor)] = 1;
    for (std::size_t v = 0; v < values.size(); ++v)
        sum[at(part_[v])] += values[v];
    for (std::size_t v = 0; v < values.size(); ++v)
        if (isClosed[at(part_[v])] && partArea_[at(part_[v])] > 0.0)
            values[v] -= sum[at(part_[v])] * areas_[v] / partArea_[at(part_[v])];
}

std::vector<double> ConformalFactor::solve(std::span<const char> isCut, const RunControl& control)
{
    const std::vector<int> anchors = anchorsOfClosedParts(isCut);
    std::vector<char> isFixed(isCut.begin(), isCut.end());
    for (const int anchor : anchors)
        isFixed[at(anchor)] = 1;
    assemble(isFixed);
    cholesky_.factorise(matrix_, control);

    // The Laplacian is minus the stiffness, so curvature enters with its sign turned.
    std::vector<double> rest(angleDefects_.size());
    std::transform(angleDefects_.begin(), angleDefects_.end(), rest.begin(), std::negate<>());
    dealOutMean(anchors, rest);
    std::vector<double> values(rest.size());
    for (std::size_t v = 0; v < rest.size(); ++v)
        values[at(symbolic_.newOfOld[v])] = isFixed[v] ? 0.0 : rest[v];
    cholesky_.solve(values);

    std::vector<double> u(values.size());
    for (std::size_t v = 0; v < u.size(); ++v) {
        const double value = values[at(symbolic_.newOfOld[v])];
        u[v] = std::isfinite(value) ? std::clamp(value, -largestFactor, largestFactor) : 0.0;
    }
    for (const int anchor : anchors) {
        double mean = 0.0;
        for (std::size_t v = 0; v < u.size(); ++v)
            if (part_[v] == anchor)
                mean += u[v] * areas_[v];
        mean /= std::max(partArea_[at(anchor)], 1e-300);
        for (std::size_t v = 0; v < u.size(); ++v)
            if (part_[v] == anchor)
                u[v] -= mean;
    }
    return u;
}

double strainExcess(double strain)
{
    const double share = strain / parabolaEnds;
    return 8.0 * parabolaEnds * parabolaEnds * (std::sqrt(1.0 + share * share) - 1.0);
}

double strainWeight(double strain)
{
    const double share = strain / parabolaEnds;
    return 1.0 / std::sqrt(1.0 + share * share);
}

} // namespace unfold3d
