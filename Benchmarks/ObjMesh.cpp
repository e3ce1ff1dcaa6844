#include "ObjMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace bench
{

namespace
{

using Point = std::array<double, 3>;

Point point(const std::vector<double>& coords, int vertex)
{
    const double* const at = coords.data() + std::ptrdiff_t{3} * vertex;
    return {at[0], at[1], at[2]};
}

Point minus(const Point& a, const Point& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

double dot(const Point& a, const Point& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

} // namespace

FlatMesh readObj(const std::filesystem::path& file)
{
    std::ifstream in(file);
    if (!in)
        throw std::runtime_error("can't read " + file.string());
    FlatMesh mesh;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "v") {
            for (int i = 0; i < 3; ++i) {
                double coordinate = 0.0;
                words >> coordinate;
                mesh.coordsXYZ.push_back(coordinate);
            }
        } else if (word == "f") {
            std::vector<int> corners;
            while (words >> word)
                corners.push_back(std::stoi(word) - 1);
            for (std::size_t i = 2; i < corners.size(); ++i)
                mesh.triangles.insert(mesh.triangles.end(),
                                      {corners[0], corners[i - 1], corners[i]});
        }
    }
    mesh.coordsUVW.assign(mesh.coordsXYZ.size(), 0.0);
    return mesh;
}

FlatMesh splitInFour(const FlatMesh& mesh)
{
    FlatMesh finer;
    finer.coordsXYZ = mesh.coordsXYZ;
    std::map<std::pair<int, int>, int> middleOf;
    const auto middle = [&](int a, int b) {
        const auto [known, isNew] =
            middleOf.try_emplace(std::pair<int, int>(std::minmax(a, b)), finer.vertexCount());
        if (isNew) {
            const Point p = point(mesh.coordsXYZ, a);
            const Point q = point(mesh.coordsXYZ, b);
            for (std::size_t i = 0; i < 3; ++i)
                finer.coordsXYZ.push_back(0.5 * (p[i] + q[i]));
        }
        return known->second;
    };
    for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
        const int a = mesh.triangles[t];
        const int b = mesh.triangles[t + 1];
        const int c = mesh.triangles[t + 2];
        const int ab = middle(a, b);
        const int bc = middle(b, c);
        const int ca = middle(c, a);
        finer.triangles.insert(finer.triangles.end(),
                               {a, ab, ca, ab, b, bc, ca, bc, c, ab, bc, ca});
    }
    finer.coordsUVW.assign(finer.coordsXYZ.size(), 0.0);
    return finer;
}

double symmetricDirichlet(const FlatMesh& mesh, const std::vector<double>& uvw)
{
    double area = 0.0;
    double stretch = 0.0;
    double shrink = 0.0;
    for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
        const auto edge = [&](const std::vector<double>& coords, std::size_t corner) {
            return minus(point(coords, mesh.triangles[t + corner]),
                         point(coords, mesh.triangles[t]));
        };
        const Point p = edge(mesh.coordsXYZ, 1);
        const Point q = edge(mesh.coordsXYZ, 2);
        const Point u = edge(uvw, 1);
        const Point v = edge(uvw, 2);
        const double doubled = std::sqrt(dot(p, p) * dot(q, q) - dot(p, q) * dot(p, q));
        const double flat = u[0] * v[1] - u[1] * v[0];
        if (!(flat > 0.0))
            return std::numeric_limits<double>::infinity();
        // The squared norm of the map, by the metric of the triangle in space.
        const double squares =
            (dot(q, q) * dot(u, u) - 2.0 * dot(p, q) * dot(u, v) + dot(p, p) * dot(v, v)) /
            (doubled * doubled);
        const double det = flat / doubled;
        area += doubled;
        stretch += doubled * squares;
        shrink += doubled * squares / (det * det);
    }
    return 2.0 * std::sqrt(stretch) * std::sqrt(shrink) / area;
}

} // namespace bench
