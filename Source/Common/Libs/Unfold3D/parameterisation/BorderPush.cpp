#include "Unfold3D/parameterisation/BorderPush.h"

#include "Unfold3D/parameterisation/BorderCrossings.h"

#include <algorithm>
#include <array>
#include <limits>

namespace unfold3d
{

namespace
{

/// Stiffness of a push: it begins with the first and grows by this factor while a point is covered.
/// The curvature of the distortion at a vertex is about 4, but whole pieces of the island hang on a
/// point of the border, and more where that is bent sharply.
constexpr double firstStiffness = 100.0;
constexpr double stiffnessGrowth = 2.0;
constexpr double lastStiffness = 1e6;
/// A point is pushed over an edge only when the way there along the border is this much longer:
/// shorter ones belong to the bends of the border itself.
constexpr double wayPerDepth = 1.5;
/// Clearance is at most this share of the way along the border.
constexpr double clearancePerWay = 0.1;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

/// The pieces of the border that other parts of the island cover, each a run of points.
struct BorderPush::CoveredPieces
{
    std::vector<int> pieceOfPoint;        ///< -1 when free
    std::vector<std::vector<int>> across; ///< [piece] edges that cover it, ascending

    CoveredPieces(const Border& border, std::span<const Vec2> positions)
    {
        const std::vector<EdgePair> crossings = crossingEdges(border, positions);
        collectPieces(border, coverOf(border, positions, crossings));
        collectEdges(border, crossings);
    }

private:
    /// [point] by how many parts it is covered. Crossing an edge from its right to its left leads
    /// below the part of the island whose border that is. The point of a loop that is covered least
    /// counts as free.
    static std::vector<int> coverOf(const Border& border, std::span<const Vec2> positions,
                                    std::span<const EdgePair> crossings)
    {
        const auto along = [&](int edge) {
            return positions[at(border.next(edge))] - positions[at(edge)];
        };
        std::vector<int> entered(at(border.size()), 0); // [edge] on the way along it
        for (const auto [p, q] : crossings) {
            const int sense = cross(along(q), along(p)) > 0.0 ? 1 : -1;
            entered[at(p)] += sense;
            entered[at(q)] -= sense;
        }
        std::vector<int> cover(at(border.size()), 0);
        for (int begin = 0, last = 0; begin < border.size(); begin = ++last) {
            int least = 0;
            for (; border.next(last) == last + 1; ++last) {
                cover[at(last + 1)] = cover[at(last)] + entered[at(last)];
                least = std::min(least, cover[at(last + 1)]);
            }
            for (int p = begin; p <= last; ++p)
                cover[at(p)] -= least;
        }
        return cover;
    }

    void collectPieces(const Border& border, std::span<const int> cover)
    {
        pieceOfPoint.assign(cover.size(), -1);
        int count = 0;
        for (int first = 0; first < border.size(); ++first) {
            if (cover[at(first)] == 0 || cover[at(border.previous(first))] > 0)
                continue;
            for (int p = first; cover[at(p)] > 0; p = border.next(p))
                pieceOfPoint[at(p)] = count;
            ++count;
        }
        across.resize(at(count));
    }

    /// A piece is covered by what crosses its ends, and by the pieces that begin there.
    void collectEdges(const Border& border, std::span<const EdgePair> crossings)
    {
        const auto pieceAt = [&](int edge) {
            return std::max(pieceOfPoint[at(edge)], pieceOfPoint[at(border.next(edge))]);
        };
        std::vector<std::array<int, 2>> partners;
        for (const auto [p, q] : crossings) {
            const int pieceP = pieceAt(p);
            const int pieceQ = pieceAt(q);
            if (pieceP >= 0)
                across[at(pieceP)].push_back(q);
            if (pieceQ >= 0)
                across[at(pieceQ)].push_back(p);
            if (pieceP >= 0 && pieceQ >= 0)
                partners.insert(partners.end(), {{pieceP, pieceQ}, {pieceQ, pieceP}});
        }
        std::sort(partners.begin(), partners.end());
        partners.erase(std::unique(partners.begin(), partners.end()), partners.end());
        std::vector<std::vector<int>> edges(across.size());
        for (int e = 0; e < border.size(); ++e)
            if (pieceAt(e) >= 0)
                edges[at(pieceAt(e))].push_back(e);
        for (const auto& [piece, partner] : partners)
            across[at(piece)].insert(across[at(piece)].end(), edges[at(partner)].begin(),
                                     edges[at(partner)].end());
        for (std::vector<int>& list : across) {
            std::sort(list.begin(), list.end());
            list.erase(std::unique(list.begin(), list.end()), list.end());
        }
    }
};

BorderPush::BorderPush(const Border& border, double clearance)
    : border_(border), clearance_(clearance), stiffness_(at(border.size()), 0.0)
{}

int BorderPush::countCovered(std::span<const Vec2> positions) const
{
    const CoveredPieces pieces(border_, positions);
    return static_cast<int>(std::count_if(pieces.pieceOfPoint.begin(), pieces.pieceOfPoint.end(),
                                          [](int piece) { return piece >= 0; }));
}

void BorderPush::aim(std::span<const Vec2> positions, double work)
{
    const CoveredPieces pieces(border_, positions);
    pushes_.clear();
    for (int p = 0; p < border_.size(); ++p)
        if (pieces.pieceOfPoint[at(p)] >= 0) {
            stiffness_[at(p)] =
                std::clamp(stiffnessGrowth * stiffness_[at(p)], firstStiffness, lastStiffness);
            pushOut(positions, pieces, p);
        }
    for (const BorderGap& gap : narrowGaps(border_, positions))
        if (pieces.pieceOfPoint[at(gap.point)] < 0)
            pushes_.push_back({gap, clearanceOf(gap.point, gap.edge), work});
}

double BorderPush::clearanceOf(int point, int edge) const
{
    return std::min(clearance_, clearancePerWay * border_.wayToEdge(point, edge));
}

/// Over the nearest edge of those that cover the point's piece.
void BorderPush::pushOut(std::span<const Vec2> positions, const CoveredPieces& pieces, int point)
{
    double least = std::numeric_limits<double>::infinity();
    BorderGap nearest{};
    for (const int edge : pieces.across[at(pieces.pieceOfPoint[at(point)])]) {
        if (border_.touches(point, edge))
            continue;
        const BorderGap gap = gapBetween(border_, positions, point, edge);
        if (!(gap.distance > 0.0) || gap.distance >= least ||
            wayPerDepth * gap.distance > border_.wayToEdge(point, edge) ||
            gap.isOutside(border_, positions))
            continue;
        least = gap.distance;
        nearest = gap;
    }
    if (!(least < std::numeric_limits<double>::infinity()))
        return;
    nearest.normal = -1.0 * nearest.normal;
    pushes_.push_back({nearest, clearanceOf(point, nearest.edge)});
}

/// What is missing of the clearance, not below 0.
double BorderPush::shortfall(std::span<const Vec2> positions, const Push& push) const
{
    const BorderGap& gap = push.gap;
    const Vec2 foot = (1.0 - gap.share) * positions[at(gap.edge)] +
                      gap.share * positions[at(border_.next(gap.edge))];
    return std::max(0.0, push.clearance - dot(gap.normal, positions[at(gap.point)] - foot));
}

double BorderPush::stiffnessOf(const Push& push) const
{
    return std::max(stiffness_[at(push.gap.point)], firstStiffness);
}

double BorderPush::energy(std::span<const Vec2> positions) const
{
    double sum = 0.0;
    for (const Push& push : pushes_) {
        const double missing = shortfall(positions, push);
        sum += 0.5 * stiffnessOf(push) * missing * missing;
    }
    return sum;
}

void BorderPush::addSprings(std::span<const Vec2> positions, std::vector<Spring>& springs) const
{
    for (const Push& push : pushes_) {
        const double stiffness = stiffnessOf(push);
        if (const double missing = shortfall(positions, push); missing > 0.0)
            springs.push_back(push.gap.spring(border_, -stiffness * missing, stiffness));
        else if (push.work > 0.0)
            springs.push_back(push.gap.brake(border_, push.work));
    }
}

void BorderPush::addPairs(std::vector<NodePair>& pairs) const
{
    for (const Push& push : pushes_)
        push.gap.addPairs(border_, pairs);
}

} // namespace unfold3d
