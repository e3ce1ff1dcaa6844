#include "Unfold3D/seams/UnfoldablePatches.h"

#include "Unfold3D/seams/DevelopableRegions.h"
#include "Unfold3D/seams/HalvePatch.h"
#include "Unfold3D/seams/OpenPatches.h"
#include "Unfold3D/seams/PatchTrials.h"
#include "Unfold3D/seams/Patches.h"
#include "Unfold3D/seams/SeamCosts.h"
#include "Unfold3D/seams/StraightBorders.h"

#include <algorithm>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A whole patch between sharp edges is left alone up to this energy.
constexpr double goodEnergy = 4.06;
/// A region that rolls out nearly does better than that unless it would overlap.
constexpr double regionEnergy = 4.06;

class Maker
{
public:
    Maker(const SeamMesh& mesh, std::vector<char>& isSeam, RunControl& control)
        : mesh_(mesh), isSeam_(isSeam), control_(control), costs_(shapeCosts(mesh)), given_(isSeam),
          opener_(mesh, costs_, isSeam, control), trials_(mesh, isSeam, control)
    {}

    std::vector<PatchLayout> run()
    {
        std::vector<PatchLayout> good;
        const std::vector<char> isBad = keepWhatIsGood(openAll(), good);
        control_.approach(1.0, 0.2);
        dropCutsIn(isBad);
        partIntoDevelopables(mesh_, isBad, isSeam_, control_);
        const std::vector<char> mayMove = addedWithin(isBad);
        straightenBorders(mesh_, mayMove, costs_, isSeam_, control_);
        control_.approach(1.0, 0.2);
        std::vector<PatchLayout> pieces = halveWhatIsBad(tryAll(openAll(isBad)));
        control_.approach(1.0, 0.2);

        JoinRules rules;
        rules.maySew = mayMove;
        joinPieces(mesh_, rules, pieces, isSeam_, control_);
        std::erase_if(pieces, [](const PatchLayout& piece) { return piece.isEmpty(); });
        for (PatchLayout& piece : pieces)
            good.push_back(std::move(piece));
        return good;
    }

private:
    using Parts = std::vector<std::vector<int>>;

    /// Opens the patches, those with wanted triangles or all; returns them.
    Parts openAll(const std::vector<char>& isWanted = {})
    {
        const Patches before = findPatches(mesh_, isSeam_);
        for (int p = 0; p < before.count(); ++p)
            if (isWanted.empty() || isWanted[at(before.triangles[p].front())])
                opener_.open(before.triangles[p]);
        const Patches after = findPatches(mesh_, isSeam_);
        Parts parts;
        for (int p = 0; p < after.count(); ++p)
            if (isWanted.empty() || isWanted[at(after.triangles[p].front())])
                parts.emplace_back(after.triangles[p].begin(), after.triangles[p].end());
        return parts;
    }

    std::vector<PatchLayout> tryAll(Parts parts)
    {
        std::vector<PatchLayout> pieces(parts.size());
        for (std::size_t i = 0; i < parts.size(); ++i)
            pieces[i].triangles = std::move(parts[i]);
        const TrialLimits limits{leastEnergy, std::max(goodEnergy, regionEnergy)};
        trials_.run(pieces, std::vector<TrialLimits>(pieces.size(), limits));
        return pieces;
    }

    /// [triangle] whether it is in none of the patches that can stay.
    std::vector<char> keepWhatIsGood(Parts parts, std::vector<PatchLayout>& good)
    {
        std::vector<char> isBad(mesh_.triangles.size(), 0);
        for (PatchLayout& piece : tryAll(std::move(parts))) {
            if (piece.energy <= goodEnergy) {
                good.push_back(std::move(piece));
                continue;
            }
            for (const int t : piece.triangles)
                isBad[at(t)] = 1;
        }
        return isBad;
    }

    /// Regions that are strained all the same, or would lie over themselves, in halves of halves.
    std::vector<PatchLayout> halveWhatIsBad(std::vector<PatchLayout> pieces)
    {
        constexpr int mostHalvings = 12;
        for (int round = 0; round < mostHalvings; ++round) {
            std::vector<char> isBad(mesh_.triangles.size(), 0);
            std::size_t kept = 0;
            for (std::size_t i = 0; i < pieces.size(); ++i) {
                if (pieces[i].energy <= regionEnergy || pieces[i].triangles.size() < 2) {
                    if (kept != i)
                        pieces[kept] = std::move(pieces[i]);
                    ++kept;
                    continue;
                }
                for (const int t : pieces[i].triangles)
                    isBad[at(t)] = 1;
                halvePatch(mesh_, pieces[i].triangles, isSeam_);
            }
            if (kept == pieces.size())
                break;
            pieces.resize(kept);
            straightenBorders(mesh_, addedWithin(isBad), costs_, isSeam_, control_);
            for (PatchLayout& half : tryAll(openAll(isBad)))
                pieces.push_back(std::move(half));
        }
        return pieces;
    }

    /// [edge] whether it is between wanted triangles and not among the seams that have to be.
    std::vector<char> addedWithin(const std::vector<char>& isWanted) const
    {
        std::vector<char> isWithin(at(mesh_.edgeCount()), 0);
        for (int e = 0; e < mesh_.edgeCount(); ++e) {
            const auto [left, right] = mesh_.trianglesOf(e);
            isWithin[at(e)] =
                static_cast<char>(isWanted[at(left)] && isWanted[at(right)] && !given_[at(e)]);
        }
        return isWithin;
    }

    void dropCutsIn(const std::vector<char>& isBad)
    {
        for (int e = 0; e < mesh_.edgeCount(); ++e)
            if (isBad[at(mesh_.trianglesOf(e)[0])])
                isSeam_[at(e)] = given_[at(e)];
    }

    const SeamMesh& mesh_;
    std::vector<char>& isSeam_;
    RunControl& control_;
    const std::vector<PathCost> costs_;
    const std::vector<char> given_;
    PatchOpener opener_;
    PatchTrials trials_;
};

} // namespace

std::vector<PatchLayout> makeUnfoldable(const SeamMesh& mesh, std::vector<char>& isSeam,
                                        RunControl& control)
{
    return Maker(mesh, isSeam, control).run();
}

} // namespace unfold3d
