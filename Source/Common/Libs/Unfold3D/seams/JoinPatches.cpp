#include "Unfold3D/seams/JoinPatches.h"

#include "Unfold3D/seams/FitPieces.h"
#include "Unfold3D/seams/JoinCandidates.h"
#include "Unfold3D/seams/PatchTrials.h"
#include "Unfold3D/seams/Patches.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_set>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A piece is tried on the near part of a piece that has so many times its triangles: on a part of
/// so many times its area, or so many times its triangles.
constexpr std::size_t smallShare = 4;
constexpr double nearbyArea = 2.0;
constexpr std::size_t nearbyCount = 20;
/// How much more than a piece may be strained by a join it may be on the near part.
constexpr double nearbyTolerance = 1.5;
/// So many pieces are sewn to one at a time; less after a trial that failed.
constexpr int firstArms = 64;
/// What may be due to a minimisation that ended a step earlier or later.
constexpr double roundingOfEnergy = 1e-4;
/// A layout that was only put together is good enough with this share of the strain it may have.
constexpr double enoughShare = 0.25;

/// A piece and all that is to be sewn to it in one go.
struct Star
{
    int centre;
    std::vector<JoinArm> arms;
};

/// [triangle] -1 in none
std::vector<int> piecesOfTriangles(const SeamMesh& mesh, const std::vector<PatchLayout>& pieces)
{
    std::vector<int> pieceOf(mesh.triangles.size(), -1);
    for (std::size_t p = 0; p < pieces.size(); ++p)
        for (const int t : pieces[p].triangles)
            pieceOf[at(t)] = static_cast<int>(p);
    return pieceOf;
}

class Joiner
{
public:
    Joiner(const SeamMesh& mesh, const JoinRules& rules, std::vector<PatchLayout>& pieces,
           std::vector<char>& isSeam, RunControl& control)
        : mesh_(mesh), rules_(rules), pieces_(pieces), isSeam_(isSeam), control_(control),
          trials_(mesh, isSeam, control), pieceOf_(piecesOfTriangles(mesh, pieces)),
          candidates_(mesh, rules, pieces, isSeam, pieceOf_), isNear_(mesh.triangles.size(), 0),
          mostArms_(pieces.size(), firstArms)
    {}

    void run()
    {
        constexpr double shareOfRound = 0.1;
        while (joinRound())
            control_.approach(1.0, shareOfRound);
    }

private:
    /// One trial for each piece at most. False when nothing is left to try.
    bool joinRound()
    {
        std::vector<JoinArm> arms = candidates_.choose();
        if (arms.empty())
            return false;
        dropHopeless(arms);
        std::vector<Star> stars = gatherStars(std::move(arms));
        std::vector<PatchLayout> unions;
        std::vector<TrialLimits> limits;
        for (const Star& star : stars) {
            sew(star, true);
            unions.push_back(unionOf(star));
            limits.push_back({mostEnergyOf(star, enoughShare), mostEnergyOf(star, 1.0)});
        }
        trials_.run(unions, limits);
        for (std::size_t i = 0; i < stars.size(); ++i)
            joinOrGiveUp(stars[i], std::move(unions[i]));
        return true;
    }

    // Trials.

    /// Tries small pieces on the near parts of large ones first, which is quick, and drops those
    /// that don't fit even there.
    void dropHopeless(std::vector<JoinArm>& arms)
    {
        std::vector<int> tried;
        std::vector<PatchLayout> unions;
        std::vector<TrialLimits> limits;
        for (std::size_t i = 0; i < arms.size(); ++i) {
            const PatchLayout& small = pieces_[at(arms[i].small)];
            const PatchLayout& large = pieces_[at(arms[i].large)];
            if (small.triangles.size() * smallShare > large.triangles.size() ||
                fitsNearby_.contains(candidates_.keyOf(arms[i])))
                continue;
            tried.push_back(static_cast<int>(i));
            sew(arms[i], true);
            PatchLayout& whole = unions.emplace_back(nearbyPart(arms[i]));
            const double area = whole.area + small.area;
            limits.push_back({leastEnergy + enoughShare * rules_.mostNewStrain * small.area / area,
                              std::numeric_limits<double>::infinity()});
            addFitted(mesh_, arms[i].edges, large, small, whole);
            sortTriangles(whole);
        }
        trials_.run(unions, limits);
        std::vector<char> isHopeless(arms.size(), 0);
        for (std::size_t k = 0; k < tried.size(); ++k) {
            const JoinArm& arm = arms[at(tried[k])];
            const PatchLayout& small = pieces_[at(arm.small)];
            sew(arm, false);
            // The near part may be strained more than the large piece is as a whole.
            const double before = small.strain() + nearbyTolerance * (unions[k].area - small.area) *
                                                       (pieces_[at(arm.large)].energy -
                                                        leastEnergy + roundingOfEnergy);
            const bool fits =
                unions[k].strain() <= before + nearbyTolerance * rules_.mostNewStrain * small.area;
            if (fits)
                fitsNearby_.insert(candidates_.keyOf(arm));
            else
                candidates_.giveUp(arm);
            isHopeless[at(tried[k])] = !fits;
        }
        std::size_t place = 0;
        std::erase_if(arms, [&](const JoinArm&) { return isHopeless[place++] != 0; });
    }

    /// The triangles of the large piece around a stretch, some times the area of the small one.
    PatchLayout nearbyPart(const JoinArm& arm)
    {
        const PatchLayout& large = pieces_[at(arm.large)];
        const PatchLayout& small = pieces_[at(arm.small)];
        PatchLayout part;
        const auto add = [&](int t) {
            if (pieceOf_[at(t)] != arm.large || isNear_[at(t)])
                return;
            isNear_[at(t)] = 1;
            part.triangles.push_back(t);
            part.corners.push_back(large.corners[large.placeOf(t)]);
            part.area += mesh_.areas[at(t)];
        };
        for (const int edge : arm.edges)
            for (const int t : mesh_.trianglesOf(edge))
                add(t);
        const double enough = nearbyArea * small.area;
        const std::size_t most = nearbyCount * (1 + small.triangles.size());
        for (std::size_t next = 0;
             next < part.triangles.size() && part.area < enough && part.triangles.size() < most;
             ++next)
            for (int h = 3 * part.triangles[next]; h < 3 * part.triangles[next] + 3; ++h)
                if (!endsPatch(mesh_, isSeam_, h))
                    add(mesh_.twin[at(h)] / 3);
        for (const int t : part.triangles)
            isNear_[at(t)] = 0;
        return part;
    }

    std::vector<Star> gatherStars(std::vector<JoinArm> arms)
    {
        std::vector<Star> stars;
        std::vector<int> starOf(pieces_.size(), -1);
        for (JoinArm& arm : arms) {
            int& star = starOf[at(arm.large)];
            if (star < 0) {
                star = static_cast<int>(stars.size());
                stars.push_back({arm.large, {}});
            }
            if (static_cast<int>(stars[at(star)].arms.size()) < mostArms_[at(arm.large)])
                stars[at(star)].arms.push_back(std::move(arm));
        }
        return stars;
    }

    /// The whole star, put together.
    PatchLayout unionOf(const Star& star) const
    {
        const PatchLayout& centre = pieces_[at(star.centre)];
        PatchLayout whole = centre;
        for (const JoinArm& arm : star.arms)
            addFitted(mesh_, arm.edges, centre, pieces_[at(arm.small)], whole);
        sortTriangles(whole);
        return whole;
    }

    /// What a star may have when its parts keep their strain and get a share of what is allowed.
    double mostEnergyOf(const Star& star, double share) const
    {
        const PatchLayout& centre = pieces_[at(star.centre)];
        double area = centre.area;
        double strain = centre.strain();
        for (const JoinArm& arm : star.arms) {
            const PatchLayout& piece = pieces_[at(arm.small)];
            area += piece.area;
            strain += piece.strain() + share * rules_.mostNewStrain * piece.area;
        }
        return area > 0.0
                   ? std::min(leastEnergy + strain / area + roundingOfEnergy, rules_.mostEnergy)
                   : rules_.mostEnergy;
    }

    // Writing.

    void sew(const JoinArm& arm, bool closed)
    {
        for (const int edge : arm.edges)
            isSeam_[at(edge)] = static_cast<char>(!closed);
    }
    void sew(const Star& star, bool closed)
    {
        for (const JoinArm& arm : star.arms)
            sew(arm, closed);
    }

    void joinOrGiveUp(const Star& star, PatchLayout whole)
    {
        int& mostArms = mostArms_[at(star.centre)];
        if (whole.energy <= mostEnergyOf(star, 1.0)) {
            mostArms = std::min(2 * mostArms, firstArms);
            join(star, std::move(whole));
            return;
        }
        sew(star, false);
        if (star.arms.size() == 1) {
            fitsNearby_.erase(candidates_.keyOf(star.arms.front()));
            candidates_.giveUp(star.arms.front());
        }
        mostArms = std::max(1, static_cast<int>(star.arms.size()) / 2);
    }

    void join(const Star& star, PatchLayout whole)
    {
        pieces_[at(star.centre)] = std::move(whole);
        candidates_.renew(star.centre);
        for (const JoinArm& arm : star.arms) {
            for (const int t : pieces_[at(arm.small)].triangles)
                pieceOf_[at(t)] = star.centre;
            pieces_[at(arm.small)] = {};
        }
    }

    const SeamMesh& mesh_;
    const JoinRules& rules_;
    std::vector<PatchLayout>& pieces_;
    std::vector<char>& isSeam_;
    RunControl& control_;
    PatchTrials trials_;
    std::vector<int> pieceOf_; ///< [triangle] -1 in none
    JoinCandidates candidates_;
    std::vector<char> isNear_;                     ///< [triangle] cleared after use
    std::vector<int> mostArms_;                    ///< [piece] that may be sewn to it in one go
    std::unordered_set<std::uint64_t> fitsNearby_; ///< by keyOf
};

} // namespace

void joinPieces(const SeamMesh& mesh, const JoinRules& rules, std::vector<PatchLayout>& pieces,
                std::vector<char>& isSeam, RunControl& control)
{
    Joiner(mesh, rules, pieces, isSeam, control).run();
}

} // namespace unfold3d
