#pragma once

#include "uvtool/TempFolder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <numeric>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace uvtool::test
{

/// The UV islands of an OBJ as its lines tell them: faces hang together where they name the same
/// pair of position and UV.
struct WrittenIslands
{
    /// [island] vertices - edges + faces: 1 for a disk, 0 for a ring, 2 for a closed surface.
    std::vector<int> eulerCharacteristics;
    std::size_t faces = 0;
    std::size_t facesWithoutUVs = 0;

    /// Are all open: disks, or with holes? That none has a handle tells a layout without overlaps.
    bool areOpen() const
    {
        return std::all_of(eulerCharacteristics.begin(), eulerCharacteristics.end(),
                           [](int characteristic) { return characteristic <= 1; });
    }
};

inline WrittenIslands writtenIslands(const std::filesystem::path& file)
{
    WrittenIslands written;
    std::map<std::string, std::size_t> numbers;
    std::vector<std::vector<std::size_t>> faces;
    std::istringstream text(bytesOf(file));
    for (std::string line; std::getline(text, line);) {
        if (!line.starts_with("f "))
            continue;
        ++written.faces;
        std::istringstream words(line.substr(2));
        std::vector<std::size_t> face;
        bool hasUVs = true;
        for (std::string word; words >> word;) {
            hasUVs = hasUVs && word.find('/') != std::string::npos;
            const std::string corner = word.substr(0, word.find('/', word.find('/') + 1));
            face.push_back(numbers.try_emplace(corner, numbers.size()).first->second);
        }
        if (hasUVs)
            faces.push_back(std::move(face));
        else
            ++written.facesWithoutUVs;
    }

    std::vector<std::size_t> parent(numbers.size());
    std::iota(parent.begin(), parent.end(), std::size_t{0});
    const auto root = [&parent](std::size_t v) {
        while (parent[v] != v)
            v = parent[v] = parent[parent[v]];
        return v;
    };
    for (const auto& face : faces)
        for (const std::size_t v : face)
            parent[root(v)] = root(face[0]);

    std::map<std::size_t, int> characteristicOf;
    std::set<std::array<std::size_t, 2>> edges;
    std::set<std::size_t> vertices;
    for (const auto& face : faces) {
        int& characteristic = characteristicOf[root(face[0])];
        ++characteristic;
        for (std::size_t k = 0; k < face.size(); ++k) {
            const auto [low, high] = std::minmax(face[k], face[(k + 1) % face.size()]);
            characteristic -= edges.insert({low, high}).second ? 1 : 0;
            characteristic += vertices.insert(face[k]).second ? 1 : 0;
        }
    }
    for (const auto& [island, characteristic] : characteristicOf)
        written.eulerCharacteristics.push_back(characteristic);
    return written;
}

} // namespace uvtool::test
