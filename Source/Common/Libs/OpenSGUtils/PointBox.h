#pragma once

#include "OpenSG/Vector.h"

#include <algorithm>
#include <cmath>
#include <limits>

/// The box around some points. One that is not finite is passed over.
class PointBox
{
public:
    PointBox() : PointBox(std::numeric_limits<float>::max()) {}
    /// For points within -limit to limit: at these the sides of the empty box stand, the lower ones
    /// above the upper ones.
    explicit PointBox(float limit) : min_(limit, limit, limit), max_(-limit, -limit, -limit) {}

    bool isEmpty() const { return min_.x() > max_.x(); }
    const osg::Pnt3f& min() const { return min_; }
    const osg::Pnt3f& max() const { return max_; }

    void widen(const osg::Pnt3f& point)
    {
        if (!std::isfinite(point.x()) || !std::isfinite(point.y()) || !std::isfinite(point.z()))
            return;
        for (unsigned int i = 0; i < 3; ++i) {
            min_[i] = std::min(min_[i], point[i]);
            max_[i] = std::max(max_[i], point[i]);
        }
    }

private:
    osg::Pnt3f min_;
    osg::Pnt3f max_;
};
