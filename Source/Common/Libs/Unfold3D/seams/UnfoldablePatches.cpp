#include "Unfold3D/seams/UnfoldablePatches.h"

#include "Unfold3D/seams/DevelopableRegions.h"
#include "Unfold3D/seams/OpenPatches.h"
#include "Unfold3D/seams/PatchSurface.h"
#include "Unfold3D/seams/Patches.h"
#include "Unfold3D/seams/SeamCosts.h"
#include "Unfold3D/seams/TrialUnfold.h"

#include <tbb/enumerable_thread_specific.h>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

constexpr double goodEnergy = 4.06;

std::vector<char> areGood(const SeamMesh& mesh, const std::vector<char>& isSeam,
                          const Patches& patches, const RunControl& control)
{
    std::vector<char> isGood(at(patches.count()), 0);
    tbb::enumerable_thread_specific<PatchTaker> takers([&] { return PatchTaker(mesh); });
    tbb::parallel_for(0, patches.count(), [&](int p) {
        const PatchSurface patch = takers.local().take(patches.triangles[p], isSeam);
        isGood[at(p)] = tryUnfoldApart(patch.mesh, control).isWithin(goodEnergy);
    });
    return isGood;
}

} // namespace

void makeUnfoldable(const SeamMesh& mesh, std::vector<char>& isSeam, RunControl& control)
{
    const std::vector<PathCost> costs = shapeCosts(mesh);
    const std::vector<char> sharp = isSeam;
    openPatches(mesh, costs, isSeam, control);
    const Patches patches = findPatches(mesh, isSeam);
    const std::vector<char> isGood = areGood(mesh, isSeam, patches, control);
    std::vector<char> isBad(mesh.triangles.size(), 0);
    for (int t = 0; t < mesh.triangleCount(); ++t)
        isBad[at(t)] = !isGood[at(patches.ofTriangle[at(t)])];
    for (int e = 0; e < mesh.edgeCount(); ++e)
        if (isBad[at(mesh.trianglesOf(e)[0])] && isBad[at(mesh.trianglesOf(e)[1])])
            isSeam[at(e)] = sharp[at(e)];
    partIntoDevelopables(mesh, isBad, isSeam, control);
    openPatches(mesh, costs, isSeam, control);
}

} // namespace unfold3d
