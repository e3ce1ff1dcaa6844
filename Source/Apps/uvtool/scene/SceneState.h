#pragma once

#include "document/Document.h"
#include "scene/SceneGeometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace uvtool
{

/// What an edit of UVs may change in a scene, to compare states before and after.
struct SceneState
{
    struct Surface
    {
        std::vector<unsigned int> indices;
        std::vector<Vec3f> positions;
        std::vector<Vec2f> uvs;
    };

    std::vector<Surface> surfaces;
    std::vector<unsigned int> selectedEdges;
    std::vector<unsigned int> selectedSeeds;
    std::vector<Vec2f> compactUVs; ///< [triangle corner] as the compact mesh has them
};

SceneState stateOf(const SceneGeometry& scene, std::size_t slot);

/// Where two states differ, as half a sentence: "the indices of surface 3"; empty where they agree.
/// Selections, indices and the UVs of the compact mesh have to agree to the bit, what the surfaces
/// store within the distance at which the library takes vertices for one.
std::string differenceOf(const SceneState& state, const SceneState& other);

} // namespace uvtool
