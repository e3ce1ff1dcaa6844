#pragma once

#include "OpenSG/Vector.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

/// Distances are measured in double, whose differences of floats are nearly always exact.
using Vec3d = osg::Vector<double, 3>;

inline Vec3d vectorTo(const osg::Pnt3f& point)
{
    return Vec3d(point.x(), point.y(), point.z());
}

inline bool isFinite(const osg::Pnt3f& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y()) && std::isfinite(point.z());
}

/// A triangle with its corners ascending by x, then y, then z. Whatever is measured on one comes
/// out with the same bits from every triangle that has the same corners, and on an edge from both
/// triangles that share it.
struct SortedTriangle
{
    std::array<osg::Pnt3f, 3> corners;
    std::array<std::uint8_t, 3> cornerOf = {0, 1, 2}; ///< the triangle's own corner of each of them
    int number = -1;                                  ///< among the triangles of the geometry

    SortedTriangle() = default;
    SortedTriangle(const std::array<osg::Pnt3f, 3>& unsorted, int triangle)
        : corners(unsorted), number(triangle)
    {
        order(0, 1);
        order(1, 2);
        order(0, 1);
    }

private:
    void order(unsigned int i, unsigned int j)
    {
        if (!isBefore(corners[j], corners[i]))
            return;
        std::swap(corners[i], corners[j]);
        std::swap(cornerOf[i], cornerOf[j]);
    }
    static bool isBefore(const osg::Pnt3f& a, const osg::Pnt3f& b)
    {
        if (a.x() != b.x())
            return a.x() < b.x();
        return a.y() != b.y() ? a.y() < b.y() : a.z() < b.z();
    }
};

/// What lies nearer than this to an edge or a corner, as a barycentric weight, lies on it. Far
/// above what rounding in double does to a weight, far below what a float can tell apart.
inline constexpr double EdgeSnap = 0x1p-40;
