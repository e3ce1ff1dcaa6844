#pragma once

#include "OpenSG/Tuple.h"

#include <cmath>

namespace osg
{

/// A direction, an offset, or a texture coordinate: N packed components.
template <class T, unsigned N>
class Vector : public Tuple<T, N>
{
public:
    /// A vector shorter than this has no direction worth the name; normalising leaves it alone.
    static constexpr T ShortestLength = static_cast<T>(1e-6);

    using Tuple<T, N>::Tuple;

    constexpr T x() const { return (*this)[0]; }
    constexpr T y() const
        requires(N > 1)
    {
        return (*this)[1];
    }
    constexpr T z() const
        requires(N > 2)
    {
        return (*this)[2];
    }
    constexpr T w() const
        requires(N > 3)
    {
        return (*this)[3];
    }

    constexpr Vector& operator+=(const Vector& other)
    {
        for (unsigned i = 0; i < N; ++i)
            (*this)[i] += other[i];
        return *this;
    }
    constexpr Vector& operator-=(const Vector& other)
    {
        for (unsigned i = 0; i < N; ++i)
            (*this)[i] -= other[i];
        return *this;
    }
    constexpr Vector& operator*=(T factor)
    {
        for (unsigned i = 0; i < N; ++i)
            (*this)[i] *= factor;
        return *this;
    }
    friend constexpr Vector operator+(Vector a, const Vector& b) { return a += b; }
    friend constexpr Vector operator-(Vector a, const Vector& b) { return a -= b; }
    friend constexpr Vector operator*(Vector a, T factor) { return a *= factor; }
    friend constexpr Vector operator*(T factor, Vector a) { return a *= factor; }
    friend constexpr Vector operator-(Vector a) { return a *= T(-1); }

    constexpr T dot(const Vector& other) const
    {
        T sum = 0;
        for (unsigned i = 0; i < N; ++i)
            sum += (*this)[i] * other[i];
        return sum;
    }
    constexpr Vector cross(const Vector& other) const
        requires(N == 3)
    {
        return Vector(y() * other.z() - z() * other.y(), z() * other.x() - x() * other.z(),
                      x() * other.y() - y() * other.x());
    }
    constexpr T squareLength() const { return dot(*this); }
    T length() const { return std::sqrt(squareLength()); }

    /// Scales to length 1; a vector shorter than ShortestLength stays as it is.
    void normalize()
    {
        const T norm = length();
        if (norm >= ShortestLength)
            *this *= T(1) / norm;
    }
    Vector normalized() const
    {
        Vector result = *this;
        result.normalize();
        return result;
    }
};

/// A place: the difference of two is a Vector.
template <class T, unsigned N>
class Point : public Tuple<T, N>
{
public:
    using Tuple<T, N>::Tuple;
    constexpr Point() = default;
    explicit constexpr Point(const Vector<T, N>& fromOrigin)
    {
        for (unsigned i = 0; i < N; ++i)
            (*this)[i] = fromOrigin[i];
    }

    constexpr T x() const { return (*this)[0]; }
    constexpr T y() const
        requires(N > 1)
    {
        return (*this)[1];
    }
    constexpr T z() const
        requires(N > 2)
    {
        return (*this)[2];
    }

    /// The vector from the origin to this point.
    constexpr Vector<T, N> subZero() const
    {
        Vector<T, N> result;
        for (unsigned i = 0; i < N; ++i)
            result[i] = (*this)[i];
        return result;
    }

    constexpr Point& operator+=(const Vector<T, N>& offset)
    {
        for (unsigned i = 0; i < N; ++i)
            (*this)[i] += offset[i];
        return *this;
    }
    constexpr Point& operator-=(const Vector<T, N>& offset) { return *this += -offset; }
    friend constexpr Point operator+(Point p, const Vector<T, N>& offset) { return p += offset; }
    friend constexpr Point operator-(Point p, const Vector<T, N>& offset) { return p -= offset; }
    friend constexpr Vector<T, N> operator-(const Point& a, const Point& b)
    {
        return a.subZero() - b.subZero();
    }
};

template <class T, unsigned N>
constexpr T dot(const Vector<T, N>& a, const Vector<T, N>& b)
{
    return a.dot(b);
}
template <class T>
constexpr Vector<T, 3> cross(const Vector<T, 3>& a, const Vector<T, 3>& b)
{
    return a.cross(b);
}

using Vec1f = Vector<float, 1>;
using Vec2f = Vector<float, 2>;
using Vec3f = Vector<float, 3>;
using Vec4f = Vector<float, 4>;
using Pnt3f = Point<float, 3>;
using Pnt4f = Point<float, 4>;

} // namespace osg
