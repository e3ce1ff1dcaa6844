#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <filesystem>
#include <vector>

/// The triangles of an OBJ file, polygons as fans, with a vertex for each pair of position and UV.
/// Polygons without UVs are left out, unless the whole file is without.
struct ObjSurface
{
    unfold3d::IslandMesh mesh;
    std::vector<unfold3d::Vec2> uvs;

    explicit ObjSurface(const std::filesystem::path& path);
};
