#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace uvtool::test
{

/// What the numbers of an OBJ say, read and counted by plain maps.
class ObjTopology
{
public:
    using Corner = std::pair<std::size_t, std::size_t>; ///< v and vt from 1; 0 for none
    using Face = std::vector<Corner>;

    explicit ObjTopology(const std::string& text)
    {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string word;
            words >> word;
            if (word == "v")
                positions.push_back(line);
            else if (word == "vt")
                uvs.push_back(line);
            else if (word == "o")
                objects.emplace_back();
            else if (word == "f")
                addFace(words);
        }
    }

    /// [corner of all faces but those that come by a place twice] the lines that it names
    std::vector<std::array<std::string, 2>> cornerValues() const
    {
        std::vector<std::array<std::string, 2>> values;
        for (const std::vector<Face>& faces : objects)
            for (const Face& face : faces)
                for (const auto& [v, vt] : hasRepeats(face) ? Face() : face)
                    values.push_back({positions.at(v - 1), vt == 0 ? "" : uvs.at(vt - 1)});
        return values;
    }

    /// Vertices in which faces of an object meet that no chain of shared edges joins, and edges of
    /// three faces or more. A vertex is a `v`, or with `byUV` a pair of `v` and `vt`.
    std::size_t singularCount(bool byUV) const
    {
        std::size_t count = 0;
        for (std::vector<Face> faces : objects) {
            for (Face& face : faces)
                for (Corner& corner : face)
                    corner.second = byUV ? corner.second : 0;
            count += singularCount(faces, byUV);
        }
        return count;
    }

    std::vector<std::string> positions;
    std::vector<std::string> uvs;
    std::vector<std::vector<Face>> objects;

private:
    bool hasRepeats(const Face& face) const
    {
        std::set<std::string> places;
        for (const Corner& corner : face)
            places.insert(positions.at(corner.first - 1));
        return places.size() < face.size();
    }

    void addFace(std::istringstream& words)
    {
        if (objects.empty())
            objects.emplace_back();
        Face& face = objects.back().emplace_back();
        for (std::string word; words >> word;) {
            const std::size_t slash = std::min(word.find('/'), word.size() - 1);
            face.emplace_back(std::stoul(word), std::strtoul(&word[slash + 1], nullptr, 10));
        }
    }

    static std::size_t singularCount(const std::vector<Face>& faces, bool byUV)
    {
        std::map<std::set<Corner>, std::vector<std::size_t>> facesOfEdge;
        for (std::size_t f = 0; f < faces.size(); ++f)
            for (std::size_t k = 0; k < faces[f].size(); ++k)
                facesOfEdge[{faces[f][k], faces[f][(k + 1) % faces[f].size()]}].push_back(f);
        std::vector<std::size_t> parent(faces.size());
        for (std::size_t f = 0; f < faces.size(); ++f)
            parent[f] = f;
        const auto rootOf = [&parent](std::size_t f) {
            while (parent[f] != f)
                f = parent[f] = parent[parent[f]];
            return f;
        };
        std::size_t count = 0;
        for (const auto& [edge, users] : facesOfEdge) {
            if (edge.size() == 1)
                continue;
            count += users.size() > 2 ? 1U : 0U;
            for (const std::size_t f : users)
                parent[rootOf(f)] = rootOf(users[0]);
        }
        std::map<Corner, std::set<std::size_t>> piecesOfVertex;
        for (std::size_t f = 0; f < faces.size(); ++f)
            for (const Corner& corner : faces[f])
                if (!byUV || corner.second != 0)
                    piecesOfVertex[corner].insert(rootOf(f));
        for (const auto& [vertex, pieces] : piecesOfVertex)
            count += pieces.size() > 1 ? 1U : 0U;
        return count;
    }
};

} // namespace uvtool::test
