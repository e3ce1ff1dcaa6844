#pragma once

#include <cmath>

namespace unfold3d
{

/// A point or direction of the UV plane.
struct Vec2
{
    double x = 0.0;
    double y = 0.0;

    friend Vec2 operator+(Vec2 a, Vec2 b) { return {a.x + b.x, a.y + b.y}; }
    friend Vec2 operator-(Vec2 a, Vec2 b) { return {a.x - b.x, a.y - b.y}; }
    friend Vec2 operator*(double s, Vec2 a) { return {s * a.x, s * a.y}; }
    Vec2& operator+=(Vec2 b) { return *this = *this + b; }
    Vec2& operator-=(Vec2 b) { return *this = *this - b; }
    friend bool operator==(const Vec2&, const Vec2&) = default;
};

inline double dot(Vec2 a, Vec2 b)
{
    return a.x * b.x + a.y * b.y;
}
/// Positive when b lies counter-clockwise of a.
inline double cross(Vec2 a, Vec2 b)
{
    return a.x * b.y - a.y * b.x;
}
inline double length(Vec2 a)
{
    return std::sqrt(dot(a, a));
}
/// Twice the signed area of the triangle a b c; positive when it turns counter-clockwise.
inline double doubleArea(Vec2 a, Vec2 b, Vec2 c)
{
    return cross(b - a, c - a);
}

/// A point or direction in space.
struct Vec3
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    friend Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec3 operator*(double s, Vec3 a) { return {s * a.x, s * a.y, s * a.z}; }
    friend bool operator==(const Vec3&, const Vec3&) = default;
};

inline double dot(Vec3 a, Vec3 b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 cross(Vec3 a, Vec3 b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(Vec3 a)
{
    return std::sqrt(dot(a, a));
}

} // namespace unfold3d
