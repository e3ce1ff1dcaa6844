#pragma once

#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <string>

namespace uvtool::test
{

/// An OBJ of one object or several, put together piece by piece.
class ObjBuilder
{
public:
    explicit ObjBuilder(std::string start = {}) : text_(std::move(start)) {}

    ObjBuilder& object(const std::string& name)
    {
        text_ += "o " + name + "\n";
        return *this;
    }

    /// A dome of n by n quads over [x, x + 1] by [0, 1]: open, curved, without UVs.
    ObjBuilder& dome(int n, double x = 0.0)
    {
        const int first = positions_;
        for (int row = 0; row <= n; ++row)
            for (int column = 0; column <= n; ++column) {
                const double u = double(column) / n;
                const double v = double(row) / n;
                position(x + u, v, u * (1 - u) + v * (1 - v));
            }
        for (int row = 0; row < n; ++row)
            for (int column = 0; column < n; ++column) {
                const int corner = first + row * (n + 1) + column + 1;
                text_ += "f " + std::to_string(corner) + " " + std::to_string(corner + 1) + " " +
                         std::to_string(corner + n + 2) + " " + std::to_string(corner + n + 1) +
                         "\n";
            }
        return *this;
    }

    /// A closed piece; every corner has the UV 0.25, 0.75.
    ObjBuilder& tetrahedron(double x)
    {
        position(x, 0, 0);
        position(x + 1, 0, 0);
        position(x, 1, 0);
        position(x, 0, 1);
        text_ += "vt .25 .75\n";
        for (const char* const face : {"-4 -2 -3", "-4 -3 -1", "-3 -2 -1", "-2 -4 -1"}) {
            text_ += "f";
            const std::string corners(face);
            for (std::size_t at = 0; at < corners.size(); at += 3)
                text_ += " " + corners.substr(at, 2) + "/-1";
            text_ += "\n";
        }
        return *this;
    }

    /// A closed cube of n by n quads a side, its middle at the origin; blown up to a sphere it is
    /// round.
    ObjBuilder& cube(int n, bool isRound = false)
    {
        LatticeNumbers numbers;
        for (std::size_t face = 0; face < 6; ++face)
            cubeFace(n, face, isRound, numbers);
        return *this;
    }

    /// The sides of a cube as six objects that share nothing but places.
    ObjBuilder& cubeOfPatches(int n)
    {
        for (std::size_t face = 0; face < 6; ++face) {
            LatticeNumbers numbers;
            object("side" + std::to_string(face)).cubeFace(n, face, false, numbers);
        }
        return *this;
    }

    /// A torus of n by m quads around the z axis.
    ObjBuilder& torus(int n, int m)
    {
        const int first = positions_ + 1;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < m; ++j) {
                const double u = 2 * std::numbers::pi * i / n;
                const double v = 2 * std::numbers::pi * j / m;
                const double radius = 1 + 0.4 * std::cos(v);
                position(radius * std::cos(u), radius * std::sin(u), 0.4 * std::sin(v));
            }
        const auto corner = [&](int i, int j) {
            return " " + std::to_string(first + (i % n) * m + j % m);
        };
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < m; ++j)
                text_ += "f" + corner(i, j) + corner(i + 1, j) + corner(i + 1, j + 1) +
                         corner(i, j + 1) + "\n";
        return *this;
    }

    /// A square of two triangles with UVs of its own, `side` wide in space and in UV.
    ObjBuilder& square(double x, double side)
    {
        for (const auto& [dx, dy] : {std::pair{0.0, 0.0}, {side, 0.0}, {side, side}, {0.0, side}}) {
            position(x + dx, dy, 0);
            text_ += "vt " + std::to_string(dx) + " " + std::to_string(dy) + "\n";
        }
        text_ += "f -4/-4 -3/-3 -2/-2\nf -4/-4 -2/-2 -1/-1\n";
        return *this;
    }

    const std::string& text() const { return text_; }

private:
    using LatticeNumbers = std::map<std::array<int, 3>, int>;

    void cubeFace(int n, std::size_t face, bool isRound, LatticeNumbers& numbers)
    {
        const std::size_t axis = face / 2;
        const bool isFar = face % 2 != 0;
        const auto corner = [&](int u, int v) {
            std::array<int, 3> at{};
            at[axis] = isFar ? n : 0;
            at[(axis + (isFar ? 1 : 2)) % 3] = u;
            at[(axis + (isFar ? 2 : 1)) % 3] = v;
            const auto [entry, isNew] = numbers.try_emplace(at, positions_ + 1);
            if (isNew) {
                const std::array<double, 3> p{2.0 * at[0] / n - 1, 2.0 * at[1] / n - 1,
                                              2.0 * at[2] / n - 1};
                const double size = isRound ? std::hypot(p[0], p[1], p[2]) : 1.0;
                position(p[0] / size, p[1] / size, p[2] / size);
            }
            return " " + std::to_string(entry->second);
        };
        std::string faces;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j)
                faces += "f" + corner(i, j) + corner(i + 1, j) + corner(i + 1, j + 1) +
                         corner(i, j + 1) + "\n";
        text_ += faces;
    }

    void position(double x, double y, double z)
    {
        ++positions_;
        text_ +=
            "v " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(z) + "\n";
    }

    std::string text_;
    int positions_ = 0;
};

} // namespace uvtool::test
