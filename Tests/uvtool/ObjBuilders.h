#pragma once

#include <cmath>
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
