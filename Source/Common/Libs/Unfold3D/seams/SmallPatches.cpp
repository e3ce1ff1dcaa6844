#include "Unfold3D/seams/SmallPatches.h"

#include "Unfold3D/seams/JoinPatches.h"
#include "Unfold3D/seams/Patches.h"

#include <numeric>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Shares of an area below which a patch is next to nothing: of any patch, and of one with so few
/// triangles.
struct LeastShares
{
    double specks;
    double slivers;
};
constexpr std::size_t sliverTriangles = 4;
constexpr LeastShares ofSurface{1e-4, 1e-3}; ///< of the area of a surface that hangs together
constexpr LeastShares ofMesh{2e-4, 2e-3};    ///< of the area of the mesh

bool isBelow(const LeastShares& least, const PatchLayout& patch, double area)
{
    const bool isSliver = patch.triangles.size() <= sliverTriangles;
    return !(patch.area >= (isSliver ? least.slivers : least.specks) * area);
}

/// A small patch may be strained more than others, and be sewn along any edge.
constexpr double mostNewStrain = 0.5;

} // namespace

void joinSmallPatches(const SeamMesh& mesh, const SmallPatchRules& rules,
                      std::vector<PatchLayout>& patches, std::vector<char>& isSeam,
                      RunControl& control)
{
    const Patches whole = findPatches(mesh, std::vector<char>(at(mesh.edgeCount()), 0));
    const double area = std::accumulate(whole.areas.begin(), whole.areas.end(), 0.0);
    const auto isSmall = [&](const PatchLayout& patch) {
        return patch.area < rules.minArea ||
               static_cast<int>(patch.triangles.size()) < rules.minTriangles ||
               isBelow(ofSurface, patch,
                       whole.areas[at(whole.ofTriangle[at(patch.triangles.front())])]) ||
               isBelow(ofMesh, patch, area);
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
