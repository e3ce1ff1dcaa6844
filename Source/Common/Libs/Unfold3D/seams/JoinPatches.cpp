#include "Unfold3D/seams/JoinPatches.h"

#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/FitPieces.h"
#include "Unfold3D/seams/PatchTrials.h"
#include "Unfold3D/seams/Patches.h"
#include "Unfold3D/seams/Stretches.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <unordered_map>
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
/// For the first try of two pieces, and the next ones. A last try with hardly any curvature only
/// fails where the pieces would overlap.
constexpr std::array<DefectLimits, 3> triedLimits{{{0.6, 100.0}, {0.3, 0.3}, {0.03, 0.03}}};
/// So many pieces are sewn to one at a time; less after a trial that failed.
constexpr int firstArms = 64;
/// What may be due to a minimisation that ended a step earlier or later.
constexpr double roundingOfEnergy = 1e-4;
/// A layout that was only put together is good enough with this share of the strain it may have.
constexpr double enoughShare = 0.25;

/// A piece that is to be sewn to a larger one.
struct Arm
{
    int small;
    int large;
    std::vector<int> edges;
    std::int64_t order; ///< lower first
};

/// What became of two pieces so far.
struct Failure
{
    std::size_t tries = 0;
    std::vector<int> edges; ///< of the last one
};

/// A piece and all that is to be sewn to it in one go.
struct Star
{
    int centre;
    std::vector<Arm> arms;
};

class Joiner
{
public:
    Joiner(const SeamMesh& mesh, const JoinRules& rules, std::vector<PatchLayout>& pieces,
           std::vector<char>& isSeam, RunControl& control)
        : mesh_(mesh), rules_(rules), pieces_(pieces), isSeam_(isSeam), control_(control),
          trials_(mesh, isSeam, control), pieceOf_(mesh.triangles.size(), -1),
          stretches_(mesh, isSeam, pieceOf_), isNear_(mesh.triangles.size(), 0),
          mostArms_(pieces.size(), firstArms)
    {
        for (std::size_t p = 0; p < pieces.size(); ++p) {
            generation_.push_back(static_cast<int>(p));
            for (const int t : pieces[p].triangles)
                pieceOf_[at(t)] = static_cast<int>(p);
        }
        nextGeneration_ = static_cast<int>(pieces.size());
        for (int e = 0; e < mesh.edgeCount(); ++e)
            if (isSeam[at(e)] && rules.maySew[at(e)])
                seams_.push_back({0, e});
    }

    void run()
    {
        constexpr double shareOfRound = 0.1;
        while (joinRound())
            control_.approach(1.0, shareOfRound);
    }

private:
    struct SeamEdge
    {
        std::uint64_t pair; ///< of pieces, the lower one in the higher half
        int edge;
    };

    /// One trial for each piece at most. False when nothing is left to try.
    bool joinRound()
    {
        std::vector<Arm> arms = chooseArms();
        if (arms.empty())
            return false;
        dropHopeless(arms);
        std::vector<Star> stars = gatherStars(std::move(arms));
        std::vector<PatchLayout> unions;
        for (const Star& star : stars) {
            sew(star, true);
            unions.push_back(unionOf(star));
        }
        trials_.run(unions, std::numeric_limits<double>::infinity());
        for (std::size_t i = 0; i < stars.size(); ++i)
            joinOrGiveUp(stars[i], std::move(unions[i]));
        return true;
    }

    // Choosing.

    /// The best of all stretches, such that no piece is sewn to one that is sewn to another.
    std::vector<Arm> chooseArms()
    {
        sortSeams();
        measurePerimeters();
        std::vector<Arm> arms;
        std::vector<int> edges;
        for (std::size_t i = 0; i < seams_.size(); ++i) {
            edges.push_back(seams_[i].edge);
            if (i + 1 < seams_.size() && seams_[i + 1].pair == seams_[i].pair)
                continue;
            considerPair(edges, arms);
            edges.clear();
        }
        std::sort(arms.begin(), arms.end(), [](const Arm& a, const Arm& b) {
            return a.order != b.order ? a.order < b.order : a.edges.front() < b.edges.front();
        });
        std::vector<char> isArm(pieces_.size(), 0);
        std::vector<char> isCentre(pieces_.size(), 0);
        std::erase_if(arms, [&](const Arm& arm) {
            if (isArm[at(arm.small)] || isCentre[at(arm.small)] || isArm[at(arm.large)])
                return true;
            isArm[at(arm.small)] = 1;
            isCentre[at(arm.large)] = 1;
            return false;
        });
        return arms;
    }

    void sortSeams()
    {
        std::size_t kept = 0;
        for (SeamEdge seam : seams_) {
            const auto [left, right] = mesh_.trianglesOf(seam.edge);
            const int a = pieceOf_[at(left)];
            const int b = pieceOf_[at(right)];
            if (a == b || a < 0 || b < 0)
                continue;
            seam.pair = static_cast<std::uint64_t>(std::min(a, b)) << 32 |
                        static_cast<std::uint64_t>(std::max(a, b));
            seams_[kept++] = seam;
        }
        seams_.resize(kept);
        std::sort(seams_.begin(), seams_.end(), [](const SeamEdge& a, const SeamEdge& b) {
            return a.pair != b.pair ? a.pair < b.pair : a.edge < b.edge;
        });
    }

    void measurePerimeters()
    {
        perimeters_.assign(pieces_.size(), 0.0);
        for (std::size_t p = 0; p < pieces_.size(); ++p)
            for (const int t : pieces_[p].triangles)
                for (int h = 3 * t; h < 3 * t + 3; ++h)
                    if (endsPatch(mesh_, isSeam_, h))
                        perimeters_[p] += length(mesh_.positions[at(mesh_.targetOf(h))] -
                                                 mesh_.positions[at(mesh_.originOf(h))]);
    }

    /// Adds the longest stretch that two pieces have in common, if it is worth a trial.
    void considerPair(const std::vector<int>& edges, std::vector<Arm>& arms)
    {
        const auto [left, right] = mesh_.trianglesOf(edges.front());
        const auto [small, large] = bySize(pieceOf_[at(left)], pieceOf_[at(right)]);
        Arm arm{small, large, {}, 0};
        if (!isWorthTrial(arm))
            return;
        Stretch stretch = nextStretch(arm, edges);
        if (stretch.edges.empty())
            return;
        const double share =
            stretch.length / std::min(perimeters_[at(small)], perimeters_[at(large)]);
        if (!(share >= rules_.leastShare))
            return;
        constexpr double quanta = 1e4;
        arm.order = -std::llround(quanta * share);
        arm.edges = std::move(stretch.edges);
        arms.push_back(std::move(arm));
    }

    /// The piece of less area first.
    std::array<int, 2> bySize(int a, int b) const
    {
        const PathCost sideA = toPathCost(std::sqrt(pieces_[at(a)].area));
        const PathCost sideB = toPathCost(std::sqrt(pieces_[at(b)].area));
        const bool isASmall = sideA != sideB ? sideA < sideB : a > b;
        return isASmall ? std::array{a, b} : std::array{b, a};
    }

    /// The longest stretch that hasn't been tried; empty when there is none.
    Stretch nextStretch(const Arm& arm, const std::vector<int>& edges)
    {
        if (triesOf(arm) == 0)
            return stretches_.longest(arm.small, arm.large, edges, triedLimits[0]);
        Failure& failure = failures_[keyOf(arm)];
        for (; failure.tries < triedLimits.size(); ++failure.tries) {
            Stretch stretch =
                stretches_.longest(arm.small, arm.large, edges, triedLimits[failure.tries]);
            if (stretch.edges != failure.edges)
                return stretch;
        }
        return {};
    }

    bool isWorthTrial(const Arm& arm) const
    {
        const PatchLayout& a = pieces_[at(arm.small)];
        const PatchLayout& b = pieces_[at(arm.large)];
        if (a.corners.empty() || b.corners.empty() || triesOf(arm) >= triedLimits.size() ||
            (rules_.areWanted && !rules_.areWanted(a, b)))
            return false;
        return a.strain() + b.strain() <= (a.area + b.area) * (rules_.mostEnergy - leastEnergy);
    }

    /// A small piece as it is, and a large one whatever it has become.
    std::uint64_t keyOf(const Arm& arm) const
    {
        return static_cast<std::uint64_t>(generation_[at(arm.small)]) << 32 |
               static_cast<std::uint64_t>(arm.large);
    }

    std::size_t triesOf(const Arm& arm) const
    {
        const auto failure = failures_.find(keyOf(arm));
        return failure == failures_.end() ? 0 : failure->second.tries;
    }

    // Trials.

    /// Tries small pieces on the near parts of large ones first, which is quick, and drops those
    /// that don't fit even there.
    void dropHopeless(std::vector<Arm>& arms)
    {
        std::vector<int> tried;
        std::vector<PatchLayout> unions;
        for (std::size_t i = 0; i < arms.size(); ++i) {
            const PatchLayout& small = pieces_[at(arms[i].small)];
            const PatchLayout& large = pieces_[at(arms[i].large)];
            if (small.triangles.size() * smallShare > large.triangles.size() ||
                fitsNearby_.contains(keyOf(arms[i])))
                continue;
            tried.push_back(static_cast<int>(i));
            sew(arms[i], true);
            PatchLayout& whole = unions.emplace_back(nearbyPart(arms[i]));
            const double area = whole.area + small.area;
            whole.energy = leastEnergy + enoughShare * rules_.mostNewStrain * small.area / area;
            addFitted(mesh_, arms[i].edges, large, small, whole);
            sortTriangles(whole);
        }
        trials_.run(unions, rules_.mostEnergy);
        std::vector<char> isHopeless(arms.size(), 0);
        for (std::size_t k = 0; k < tried.size(); ++k) {
            const Arm& arm = arms[at(tried[k])];
            const PatchLayout& small = pieces_[at(arm.small)];
            sew(arm, false);
            // The near part may be strained more than the large piece is as a whole.
            const double before = small.strain() + nearbyTolerance * (unions[k].area - small.area) *
                                                       (pieces_[at(arm.large)].energy -
                                                        leastEnergy + roundingOfEnergy);
            const bool fits =
                unions[k].strain() <= before + nearbyTolerance * rules_.mostNewStrain * small.area;
            if (fits)
                fitsNearby_.insert(keyOf(arm));
            else
                giveUp(arm);
            isHopeless[at(tried[k])] = !fits;
        }
        std::size_t place = 0;
        std::erase_if(arms, [&](const Arm&) { return isHopeless[place++] != 0; });
    }

    /// The triangles of the large piece around a stretch, some times the area of the small one.
    PatchLayout nearbyPart(const Arm& arm)
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

    std::vector<Star> gatherStars(std::vector<Arm> arms)
    {
        std::vector<Star> stars;
        std::vector<int> starOf(pieces_.size(), -1);
        for (Arm& arm : arms) {
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

    /// The whole star, put together, with the energy that is good enough for it.
    PatchLayout unionOf(const Star& star) const
    {
        const PatchLayout& centre = pieces_[at(star.centre)];
        PatchLayout whole = centre;
        for (const Arm& arm : star.arms)
            addFitted(mesh_, arm.edges, centre, pieces_[at(arm.small)], whole);
        sortTriangles(whole);
        whole.energy = std::min(mostEnergyOf(star, enoughShare), rules_.mostEnergy);
        return whole;
    }

    /// What a star may have when its parts keep their strain and get a share of what is allowed.
    double mostEnergyOf(const Star& star, double share) const
    {
        const PatchLayout& centre = pieces_[at(star.centre)];
        double area = centre.area;
        double strain = centre.strain();
        for (const Arm& arm : star.arms) {
            const PatchLayout& piece = pieces_[at(arm.small)];
            area += piece.area;
            strain += piece.strain() + share * rules_.mostNewStrain * piece.area;
        }
        return area > 0.0 ? leastEnergy + strain / area + roundingOfEnergy : rules_.mostEnergy;
    }

    // Writing.

    void sew(const Arm& arm, bool closed)
    {
        for (const int edge : arm.edges)
            isSeam_[at(edge)] = static_cast<char>(!closed);
    }
    void sew(const Star& star, bool closed)
    {
        for (const Arm& arm : star.arms)
            sew(arm, closed);
    }

    void joinOrGiveUp(const Star& star, PatchLayout whole)
    {
        int& mostArms = mostArms_[at(star.centre)];
        if (whole.energy <= std::min(mostEnergyOf(star, 1.0), rules_.mostEnergy)) {
            mostArms = std::min(2 * mostArms, firstArms);
            join(star, std::move(whole));
            return;
        }
        sew(star, false);
        if (star.arms.size() == 1)
            giveUp(star.arms.front());
        mostArms = std::max(1, static_cast<int>(star.arms.size()) / 2);
    }

    void giveUp(const Arm& arm)
    {
        Failure& failure = failures_[keyOf(arm)];
        ++failure.tries;
        failure.edges = arm.edges;
        fitsNearby_.erase(keyOf(arm));
    }

    void join(const Star& star, PatchLayout whole)
    {
        pieces_[at(star.centre)] = std::move(whole);
        generation_[at(star.centre)] = nextGeneration_++;
        for (const Arm& arm : star.arms) {
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
    StretchFinder stretches_;
    std::vector<SeamEdge> seams_;    ///< that may still go
    std::vector<char> isNear_;       ///< [triangle] cleared after use
    std::vector<int> mostArms_;      ///< [piece] that may be sewn to it in one go
    std::vector<double> perimeters_; ///< [piece]
    std::vector<int> generation_;    ///< [piece] another number after each join
    int nextGeneration_ = 0;
    std::unordered_map<std::uint64_t, Failure> failures_; ///< by keyOf
    std::unordered_set<std::uint64_t> fitsNearby_;        ///< by keyOf
};

} // namespace

void joinPieces(const SeamMesh& mesh, const JoinRules& rules, std::vector<PatchLayout>& pieces,
                std::vector<char>& isSeam, RunControl& control)
{
    Joiner(mesh, rules, pieces, isSeam, control).run();
}

} // namespace unfold3d
