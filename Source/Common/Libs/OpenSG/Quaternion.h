#pragma once

#include "OpenSG/Vector.h"

#include <cmath>
#include <numbers>

namespace osg
{

/// A rotation as x, y, z, w with w the real part. In a product p * q (Hamilton) q acts first, as
/// with matrices. Operations that rotate expect norm 1.
template <class T>
class QuaternionBase
{
public:
    /// Below this norm there is no rotation to be found; normalize leaves such a one alone.
    static constexpr T ShortestNorm = Vector<T, 4>::ShortestLength;

    /// No rotation.
    constexpr QuaternionBase() = default;
    constexpr QuaternionBase(T x, T y, T z, T w) : _values(x, y, z, w) {}

    /// The rotation about an axis of any length, counter-clockwise seen from its tip. An axis
    /// shorter than ShortestNorm gives no rotation.
    static QuaternionBase fromAxisAngle(const Vector<T, 3>& axis, double radians)
    {
        if (!(axis.length() >= ShortestNorm))
            return {};
        const Vector<T, 3> v = axis.normalized() * static_cast<T>(std::sin(radians / 2));
        return {v.x(), v.y(), v.z(), static_cast<T>(std::cos(radians / 2))};
    }
    /// Rz * Ry * Rx: the turn about x acts first.
    static QuaternionBase fromEulerDegrees(const Vector<T, 3>& degrees)
    {
        const auto turn = [&degrees](unsigned axis) {
            Vector<T, 3> direction;
            direction[axis] = 1;
            const double radians = static_cast<double>(degrees[axis]) * std::numbers::pi / 180;
            return fromAxisAngle(direction, radians);
        };
        return turn(2) * turn(1) * turn(0);
    }

    constexpr T x() const { return _values[0]; }
    constexpr T y() const { return _values[1]; }
    constexpr T z() const { return _values[2]; }
    constexpr T w() const { return _values[3]; }
    constexpr bool operator==(const QuaternionBase&) const = default;

    T norm() const { return _values.length(); }
    void normalize() { _values.normalize(); }
    QuaternionBase normalized() const
    {
        QuaternionBase result = *this;
        result.normalize();
        return result;
    }
    /// The way back, for norm 1.
    constexpr QuaternionBase conjugated() const { return {-x(), -y(), -z(), w()}; }

    friend constexpr QuaternionBase operator*(const QuaternionBase& p, const QuaternionBase& q)
    {
        return {p.w() * q.x() + p.x() * q.w() + p.y() * q.z() - p.z() * q.y(),
                p.w() * q.y() - p.x() * q.z() + p.y() * q.w() + p.z() * q.x(),
                p.w() * q.z() + p.x() * q.y() - p.y() * q.x() + p.z() * q.w(),
                p.w() * q.w() - p.x() * q.x() - p.y() * q.y() - p.z() * q.z()};
    }

    constexpr Vector<T, 3> rotate(const Vector<T, 3>& v) const
    {
        const Vector<T, 3> u(x(), y(), z());
        const Vector<T, 3> t = u.cross(v) * T(2);
        return v + t * w() + u.cross(t);
    }

private:
    Vector<T, 4> _values{0, 0, 0, 1};
};

using Quaternion = QuaternionBase<float>;

} // namespace osg
