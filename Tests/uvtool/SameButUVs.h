#pragma once

#include "uvtool/TempFolder.h"
#include "uvtool/formats/GltfCorners.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace uvtool::test
{

/// An OBJ without what says anything about UVs.
inline std::vector<std::string> linesButUVs(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    std::istringstream text(bytesOf(file));
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("vt "))
            continue;
        lines.emplace_back();
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            const std::size_t vt = line.starts_with("f ") ? word.find('/') : std::string::npos;
            const std::size_t vn = word.find('/', vt + 1);
            lines.back() += vt == std::string::npos ? word : word.substr(0, vt);
            lines.back() +=
                vt == std::string::npos || vn == std::string::npos ? " " : word.substr(vn) + " ";
        }
    }
    return lines;
}

/// The bytes of all attributes but the first UVs, at the corners of all triangles of a GLB.
inline std::vector<std::vector<std::string>> cornersButUVs(const std::filesystem::path& file)
{
    const tinygltf::Model model = gltfCorners::load(file);
    std::vector<std::vector<std::string>> corners;
    for (const tinygltf::Mesh& mesh : model.meshes)
        for (const tinygltf::Primitive& primitive : mesh.primitives)
            for (const auto& [name, accessor] : primitive.attributes)
                if (name != "TEXCOORD_0") {
                    corners.push_back({name});
                    for (std::string& bytes : gltfCorners::atCorners(model, primitive, accessor))
                        corners.back().push_back(std::move(bytes));
                }
    return corners;
}

/// An OBJ is compared line by line, a GLB as another reader finds it, corner by corner.
inline void expectSameButUVs(const std::filesystem::path& file,
                             const std::filesystem::path& original)
{
    if (file.extension() == ".obj")
        EXPECT_TRUE(linesButUVs(file) == linesButUVs(original)) << file;
    else
        EXPECT_TRUE(cornersButUVs(file) == cornersButUVs(original)) << file;
}

} // namespace uvtool::test
