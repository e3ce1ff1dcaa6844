#pragma once

#include <variant>

namespace unfold3d
{

/// Few, long, hidden seams for bodies and characters.
struct OrganicOptions
{
    bool usePipesCutter = false; ///< open tubes along one line and cut them off at their ends
    double segmentAmount = 0.0;  ///< 0 to 1: the more, the more seams and the less distortion
};

/// Patches between sharp edges, for hard surfaces.
struct ManufacturedOptions
{
    double angle = 89.0;        ///< degrees between the normals from which on an edge is a seam
    double minPatchRatio = 0.0; ///< 0 to 1: a patch with a lesser share of the area goes to a
                                ///< neighbour
};

/// Patches between the edges that are hard in shading, for baking.
struct BakingOptions
{
    double angle = 89.0;      ///< degrees, as above
    int minPatchPolygons = 5; ///< a patch with fewer triangles goes to a neighbour
};

using SeamOptions = std::variant<OrganicOptions, ManufacturedOptions, BakingOptions>;

} // namespace unfold3d
