#include "Patchwork.h"

#include <cmath>
#include <numbers>

namespace patchwork
{

namespace
{

void addQuad(Patch& patch, int a, int b, int c, int d)
{
    patch.triangles.push_back({a, b, c});
    patch.triangles.push_back({a, c, d});
}

/// A band of quads between two rows of as many vertices each, the second after the first.
void addBand(Patch& patch, int vertices, bool closed)
{
    for (int i = 0; i + (closed ? 0 : 1) < vertices; ++i) {
        const int next = (i + 1) % vertices;
        addQuad(patch, i, next, vertices + next, vertices + i);
    }
}

/// Numbers from 0 to 1, the same with every standard library.
class Uniform
{
public:
    explicit Uniform(unsigned seed) : engine_(seed) {}
    double operator()(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(engine_()) / 4294967295.0);
    }

private:
    std::mt19937 engine_;
};

} // namespace

Patch placed(const Patch& patch, Vec2 by, double degrees, Vec2 scale)
{
    Patch result = patch;
    const double angle = degrees * std::numbers::pi / 180.0;
    for (Vec2& uv : result.uvs) {
        const Vec2 p{scale.x * uv.x, scale.y * uv.y};
        uv = by + Vec2{std::cos(angle) * p.x - std::sin(angle) * p.y,
                       std::sin(angle) * p.x + std::cos(angle) * p.y};
    }
    return result;
}

Patch rectangle(double width, double height)
{
    Patch patch{{{0, 0}, {width, 0}, {width, height}, {0, height}}, {}};
    addQuad(patch, 0, 1, 2, 3);
    return patch;
}

Patch frame(double hole)
{
    const double low = 0.5 * (1.0 - hole);
    const double high = 1.0 - low;
    Patch patch{
        {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {low, low}, {high, low}, {high, high}, {low, high}}, {}};
    addBand(patch, 4, true);
    return patch;
}

Patch clamp(double thickness)
{
    const double t = thickness;
    Patch patch{{{0, 1}, {0, 0}, {1, 0}, {1, 1}, {t, 1}, {t, t}, {1 - t, t}, {1 - t, 1}}, {}};
    addBand(patch, 4, false);
    return patch;
}

Patch star(int spikes, double innerRadius)
{
    Patch patch;
    patch.uvs.push_back({0.0, 0.0});
    for (int i = 0; i < 2 * spikes; ++i) {
        const double radius = i % 2 == 0 ? 1.0 : innerRadius;
        const double angle = std::numbers::pi * i / spikes;
        patch.uvs.push_back({radius * std::cos(angle), radius * std::sin(angle)});
        patch.triangles.push_back({0, i + 1, (i + 1) % (2 * spikes) + 1});
    }
    return patch;
}

Patch foldedStrip()
{
    Patch patch{{{0, 0}, {1, 0}, {0.3, 0.1}, {0, 0.3}, {1, 0.3}, {0.3, 0.4}}, {}};
    addBand(patch, 3, false);
    return patch;
}

Patch line(double length)
{
    Patch patch;
    for (int i = 0; i < 4; ++i) {
        patch.uvs.push_back({length * i / 3.0, 0.0});
        if (i >= 2)
            patch.triangles.push_back({i - 2, i - 1, i});
    }
    return patch;
}

Patch point()
{
    return {{{0, 0}, {0, 0}, {0, 0}}, {{0, 1, 2}}};
}

Layout::Layout(const std::vector<Patch>& patches)
{
    for (const Patch& patch : patches)
        add(patch);
}

void Layout::add(const Patch& patch, double spaceScale)
{
    const int first = mesh.vertexCount();
    for (const Vec2 uv : patch.uvs) {
        uvs.push_back(uv);
        mesh.positions.push_back({spaceScale * uv.x, spaceScale * uv.y, 0.0});
        patchOfVertex.push_back(patchCount);
    }
    for (const Triangle& t : patch.triangles) {
        mesh.triangles.push_back({first + t[0], first + t[1], first + t[2]});
        patchOfTriangle.push_back(patchCount);
    }
    ++patchCount;
}

Layout randomLayout(int count, unsigned seed)
{
    Uniform uniform(seed);
    Layout layout;
    for (int i = 0; i < count; ++i) {
        const Patch kinds[] = {
            rectangle(1.0, uniform(0.1, 1.0)), frame(uniform(0.2, 0.9)), clamp(uniform(0.05, 0.4)),
            star(3 + static_cast<int>(uniform(0.0, 5.0)), uniform(0.1, 0.8)), foldedStrip()};
        const auto kind = static_cast<std::size_t>(uniform(0.0, 4.999));
        const double size = std::pow(10.0, uniform(-1.5, 0.3));
        const double mirror = uniform(0.0, 1.0) < 0.3 ? -1.0 : 1.0;
        const Vec2 by{uniform(-1.0, 1.0), uniform(-1.0, 1.0)};
        layout.add(placed(kinds[kind], by, uniform(0.0, 360.0), {mirror * size, size}),
                   uniform(0.5, 2.0));
    }
    return layout;
}

} // namespace patchwork
