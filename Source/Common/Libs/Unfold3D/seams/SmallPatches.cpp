#include "Unfold3D/seams/SmallPatches.h"

#include "Unfold3D/seams/JoinPatches.h"
#include "Unfold3D/seams/Patches.h"

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Shares of the area of a surface that hangs together, below which a patch is next to nothing: of
/// any patch, and of one with so few triangles.
constexpr double specksShare = 1e-4;
constexpr double sliversShare = 1e-3;
constexpr std::size_t sliverTriangles = 4;

/// A small patch may be strained more than others, and be sewn along any edge.
constexpr double mostNewStrain = 0.5;

} // namespace

void joinSmallPatches(const SeamMesh& mesh, const SmallPatchRules& rules,
                      std::vector<PatchLayout>& patches, std::vector<char>& isSeam,
                      RunControl& control)
{
    const Patches whole = findPatches(mesh, std::vector<char>(at(mesh.edgeCount()), 0));
    const auto isSmall = [&](const PatchLayout& patch) {
        const int surface = whole.ofTriangle[at(patch.triangles.front())];
        const double share = whole.triangles[surface].size() > patch.triangles.size()
                                 ? patch.area / whole.areas[at(surface)]
                                 : 1.0;
        return patch.area < rules.minArea ||
               static_cast<int>(patch.triangles.size()) < rules.minTriangles ||
               !(share >= specksShare) ||
               (patch.triangles.size() < sliverTriangles && share < sliversShare);
    };
    const std::vector<char> maySew(at(mesh.edgeCount()), 1);
    JoinRules join;
    join.maySew = maySew;
    join.mostNewStrain = mostNewStrain;
    join.leastShare = 0.0;
    join.areWanted = [&](const PatchLayout& a, const PatchLayout& b) {
        return isSmall(a) || isSmall(b);
    };
    joinPieces(mesh, join, patches, isSeam, control);
}

} // namespace unfold3d
