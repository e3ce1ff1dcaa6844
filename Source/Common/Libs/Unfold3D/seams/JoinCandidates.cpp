#include "Unfold3D/seams/JoinCandidates.h"

#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/Patches.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// For the first try of two pieces, and the next ones. A last try with hardly any curvature only
/// fails where the pieces would overlap.
constexpr std::array<DefectLimits, 3> triedLimits{{{0.6, 100.0}, {0.3, 0.3}, {0.03, 0.03}}};
} // namespace

JoinCandidates::JoinCandidates(const SeamMesh& mesh, const JoinRules& rules,
                               const std::vector<PatchLayout>& pieces, std::span<const char> isSeam,
                               std::span<const int> pieceOf)
    : mesh_(mesh), rules_(rules), pieces_(pieces), isSeam_(isSeam), pieceOf_(pieceOf),
      stretches_(mesh, isSeam, pieceOf), generation_(pieces.size()),
      nextGeneration_(static_cast<int>(pieces.size()))
{
    std::iota(generation_.begin(), generation_.end(), 0);
    for (int e = 0; e < mesh.edgeCount(); ++e)
        if (isSeam[at(e)] && rules.maySew[at(e)])
            seams_.push_back({0, e});
}

std::vector<JoinArm> JoinCandidates::choose()
{
    sortSeams();
    measurePerimeters();
    std::vector<JoinArm> arms;
    std::vector<int> edges;
    for (std::size_t i = 0; i < seams_.size(); ++i) {
        edges.push_back(seams_[i].edge);
        if (i + 1 < seams_.size() && seams_[i + 1].pair == seams_[i].pair)
            continue;
        considerPair(edges, arms);
        edges.clear();
    }
    std::sort(arms.begin(), arms.end(), [](const JoinArm& a, const JoinArm& b) {
        return a.order != b.order ? a.order < b.order : a.edges.front() < b.edges.front();
    });
    std::vector<char> isArm(pieces_.size(), 0);
    std::vector<char> isCentre(pieces_.size(), 0);
    std::erase_if(arms, [&](const JoinArm& arm) {
        if (isArm[at(arm.small)] || isCentre[at(arm.small)] || isArm[at(arm.large)])
            return true;
        isArm[at(arm.small)] = 1;
        isCentre[at(arm.large)] = 1;
        return false;
    });
    return arms;
}

void JoinCandidates::sortSeams()
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

void JoinCandidates::measurePerimeters()
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
void JoinCandidates::considerPair(const std::vector<int>& edges, std::vector<JoinArm>& arms)
{
    const auto [left, right] = mesh_.trianglesOf(edges.front());
    const auto [small, large] = bySize(pieceOf_[at(left)], pieceOf_[at(right)]);
    JoinArm arm{small, large, {}, 0};
    if (!isWorthTrial(arm))
        return;
    Stretch stretch = nextStretch(arm, edges);
    if (stretch.edges.empty())
        return;
    const double share = stretch.length / std::min(perimeters_[at(small)], perimeters_[at(large)]);
    if (!(share >= rules_.leastShare))
        return;
    constexpr double quanta = 1e4;
    arm.order = -std::llround(quanta * share);
    arm.edges = std::move(stretch.edges);
    arms.push_back(std::move(arm));
}

/// The piece of less area first.
std::array<int, 2> JoinCandidates::bySize(int a, int b) const
{
    const PathCost sideA = toPathCost(std::sqrt(pieces_[at(a)].area));
    const PathCost sideB = toPathCost(std::sqrt(pieces_[at(b)].area));
    const bool isASmall = sideA != sideB ? sideA < sideB : a > b;
    return isASmall ? std::array{a, b} : std::array{b, a};
}

/// The longest stretch that hasn't been tried; empty when there is none.
Stretch JoinCandidates::nextStretch(const JoinArm& arm, const std::vector<int>& edges)
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

bool JoinCandidates::isWorthTrial(const JoinArm& arm) const
{
    const PatchLayout& a = pieces_[at(arm.small)];
    const PatchLayout& b = pieces_[at(arm.large)];
    if (a.corners.empty() || b.corners.empty() || triesOf(arm) >= triedLimits.size() ||
        (rules_.areWanted && !rules_.areWanted(a, b)))
        return false;
    return a.strain() + b.strain() <= (a.area + b.area) * (rules_.mostEnergy - leastEnergy);
}

std::uint64_t JoinCandidates::keyOf(const JoinArm& arm) const
{
    return static_cast<std::uint64_t>(generation_[at(arm.small)]) << 32 |
           static_cast<std::uint64_t>(arm.large);
}

std::size_t JoinCandidates::triesOf(const JoinArm& arm) const
{
    const auto failure = failures_.find(keyOf(arm));
    return failure == failures_.end() ? 0 : failure->second.tries;
}

void JoinCandidates::giveUp(const JoinArm& arm)
{
    Failure& failure = failures_[keyOf(arm)];
    ++failure.tries;
    failure.edges = arm.edges;
}

} // namespace unfold3d
