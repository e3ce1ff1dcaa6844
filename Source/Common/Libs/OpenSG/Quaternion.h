#pragma once

#include "OpenSG/Vector.h"

namespace osg
{

/// A rotation as x, y, z, w with w the real part. In a product p * q (Hamilton) q acts first, as
/// with matrices. Operations that rotate expect norm 1. Instantiated for float and double.
template <class T>
class QuaternionBase
{
public:
    /// Below this norm there is no rotation to be found; normalize leaves such a one alone.
    static constexpr T ShortestNorm = Vector<T, 4>::ShortestLength;

    /// No rotation.
    constexpr QuaternionBase() = default;
    constexpr QuaternionBase(T x, T y, T z, T w) : _values(x, y, z, w) {}
    /// From a quaternion of the other type of number.
    template <class U>
        requires(!std::is_same_v<U, T>)
    explicit constexpr QuaternionBase(const QuaternionBase<U>& other)
        : _values(other.x(), other.y(), other.z(), other.w())
    {}

    /// The rotation about an axis of any length, counter-clockwise seen from its tip. An axis
    /// shorter than ShortestNorm, or one that is not finite, gives no rotation.
    static QuaternionBase fromAxisAngle(const Vector<T, 3>& axis, double radians);
    /// Rz * Ry * Rx: the turn about x acts first.
    static QuaternionBase fromEulerDegrees(const Vector<T, 3>& degrees);
    /// The rotation that takes the coordinate axes to these three, which are of length 1, at right
    /// angles and right-handed.
    static QuaternionBase fromAxes(const Vector<T, 3>& x, const Vector<T, 3>& y,
                                   const Vector<T, 3>& z);

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

extern template class QuaternionBase<float>;
extern template class QuaternionBase<double>;

using Quaternion = QuaternionBase<float>;

} // namespace osg
