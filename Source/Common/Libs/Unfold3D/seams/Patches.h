#pragma once

#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The parts into which seams cut a surface: triangles that hang together through edges that are
/// not seams. They are numbered from 0 in the order of their lowest triangle.
///
/// A seam may have one patch on both sides. Vertices count as cut apart: a vertex with several fans
/// between seams and border stands as often in the border of the patches.
struct Patches
{
    std::vector<int> ofTriangle; ///< [triangle]
    OffsetArray<int> triangles;  ///< [patch] ascending
    std::vector<double> areas;   ///< [patch] in the scale of the mesh

    int count() const { return triangles.size(); }
};

/// isSeam  [edge]
/// Near linear.
Patches findPatches(const SeamMesh& mesh, std::span<const char> isSeam);

/// A walk along the border of a patch, which lies to the left: half-edges that are seams or border.
using BorderLoop = std::vector<int>;

/// The border loops of a list of triangles that is closed under crossing edges which are no seams,
/// as a patch is; in the order of their lowest half-edges. Linear in the triangles, with storage
/// for all half-edges kept between calls.
class LoopFinder
{
public:
    LoopFinder(const SeamMesh& mesh, std::span<const char> isSeam) : mesh_(mesh), isSeam_(isSeam) {}

    std::vector<BorderLoop> loopsOf(std::span<const int> triangles);

private:
    const SeamMesh& mesh_;
    std::span<const char> isSeam_;
    std::vector<char> isSeen_;
};

/// Whether a half-edge is on the border of its patch.
inline bool endsPatch(const SeamMesh& mesh, std::span<const char> isSeam, int h)
{
    const int edge = mesh.edgeOf[static_cast<std::size_t>(h)];
    return edge < 0 || isSeam[static_cast<std::size_t>(edge)];
}

/// The half-edge that follows h, one on the border of its patch, on that border.
int nextOnBorder(const SeamMesh& mesh, std::span<const char> isSeam, int h);

/// Vertices minus edges plus triangles of each patch: 2 minus twice the handles minus the border
/// loops. Linear.
std::vector<int> eulerCharacteristics(const SeamMesh& mesh, std::span<const char> isSeam,
                                      const Patches& patches);

/// How far a walk along a border loop turns to the left, in radians, as if the surface beside it
/// were laid flat: 2 pi for the rim of a flat disk, -2 pi for a hole in a flat plate, 0 for either
/// end of a tube.
double turningOf(const SeamMesh& mesh, std::span<const char> isSeam, const BorderLoop& loop);

} // namespace unfold3d
