#pragma once

#include "OpenSG/Vector.h"

#include <cmath>
#include <optional>

/// Where a way over a surface crosses an edge.
struct EdgeCrossing
{
    float t; ///< from 0 at the first end of the edge to 1 at the second
    osg::Pnt3f point;
};

/// The place where an edge goes through a plane, from the distances of its ends; none where both
/// are on one side. An end counts as on the plane when it nearly is, so the edge of two ends that
/// nearly are may have a crossing outside of it, and one that lies in the plane has it in the
/// middle.
inline std::optional<EdgeCrossing> crossingWithPlane(const osg::Pnt3f& first,
                                                     const osg::Pnt3f& second, double firstDistance,
                                                     double secondDistance)
{
    constexpr double tolerance = 1e-10;
    if (firstDistance * secondDistance >= tolerance)
        return std::nullopt;
    const double width = firstDistance - secondDistance;
    const auto t = static_cast<float>(std::abs(width) > tolerance ? firstDistance / width : 0.5);
    return EdgeCrossing{t, osg::Pnt3f(first.subZero() * (1 - t) + second.subZero() * t)};
}

/// The place of an edge that is closest to the line between two points, as seen when the far one is
/// turned about the edge's plane with the near one: the way goes straight on over the fold. For an
/// edge that points at `from`, the place of it that is closest to `from`.
///
/// An edge always has such a place. That of an edge without a length is its first end.
EdgeCrossing crossingWithLine(const osg::Pnt3f& first, const osg::Pnt3f& second,
                              const osg::Pnt3f& from, const osg::Pnt3f& to);
