#include "ObjSurface.h"

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

using unfold3d::Vec2;
using unfold3d::Vec3;

ObjSurface::ObjSurface(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::vector<Vec3> points;
    std::vector<Vec2> places{{0.0, 0.0}};
    std::map<std::pair<int, int>, int> vertexOf;
    for (std::string row; std::getline(file, row);) {
        std::istringstream words(row);
        std::string word;
        words >> word;
        if (word == "v") {
            Vec3& p = points.emplace_back();
            words >> p.x >> p.y >> p.z;
        } else if (word == "vt") {
            Vec2& p = places.emplace_back();
            words >> p.x >> p.y;
        } else if (word == "f") {
            std::vector<int> corners;
            while (words >> word) {
                int point = 0;
                int uv = 0;
                std::sscanf(word.c_str(), "%d/%d", &point, &uv);
                if (uv == 0 && places.size() > 1)
                    break;
                const auto [at, isNew] = vertexOf.try_emplace({point, uv}, mesh.vertexCount());
                if (isNew) {
                    mesh.positions.push_back(points.at(static_cast<std::size_t>(point - 1)));
                    uvs.push_back(places.at(static_cast<std::size_t>(uv)));
                }
                corners.push_back(at->second);
            }
            for (std::size_t i = 2; i < corners.size(); ++i)
                mesh.triangles.push_back({corners[0], corners[i - 1], corners[i]});
        }
    }
}
