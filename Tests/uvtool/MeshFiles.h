#pragma once

#include "document/Format.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace uvtool::test
{

/// The OBJ files in the folder of large meshes, by name; none where the folder is absent.
inline std::vector<std::filesystem::path> objMeshes()
{
    std::vector<std::filesystem::path> files;
    std::error_code isAbsent;
    for (const auto& entry : std::filesystem::directory_iterator(KYUV_MESHES, isAbsent))
        if (entry.path().extension() == ".obj")
            files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

/// Where the corners lie. Polygons that came apart count as the triangles that they were.
inline std::vector<Vec3d> cornersIn(const std::filesystem::path& file)
{
    std::vector<Vec3d> corners;
    for (const DocumentGeometry& geometry : readDocument(file).geometries)
        for (const std::uint32_t corner : geometry.triangles)
            corners.push_back(geometry.positions.at(corner));
    return corners;
}

} // namespace uvtool::test
