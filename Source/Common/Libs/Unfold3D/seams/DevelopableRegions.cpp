#include "Unfold3D/seams/DevelopableRegions.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/seams/AngleDefects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Radians between the normals over which regions join, in this order.
constexpr std::array<double, 8> levels{0.002, 0.06, 0.15, 0.3, 0.5, 0.8, 1.2, 4.0};
/// A pass over all neighbours that joins less than this share of them is the last of its level.
constexpr int worthwhileShare = 50;
constexpr int maxPasses = 12;
/// Shares of a perimeter are told apart by so many steps. Alike pairs of a regular mesh then are
/// ties whatever the rounding of their positions, as simple fractions lie on no limit of a step.
constexpr double shareSteps = 97.3;

/// Radians that may be missing around one inner vertex.
constexpr double mostDefect = 0.12;
/// What a region may be strained by its curvature: of the energy of a flat disk over 4, by the
/// conformal factor. A defect in the middle of a disk costs its square by 2 pi^2; curvature spread
/// evenly, the square of its whole by 24 pi^2.
constexpr double mostStrain = 0.008;
constexpr double perSquaredDefect = 1.0 / (2.0 * std::numbers::pi * std::numbers::pi);
constexpr double perSquaredWhole = perSquaredDefect / 12.0;

struct Region
{
    double defect = 0.0;        ///< inside, summed
    double squaredDefect = 0.0; ///< inside, sum of the squares
    double perimeter = 0.0;

    double strain() const
    {
        return perSquaredDefect * squaredDefect + perSquaredWhole * defect * defect;
    }
};

/// Two regions and what they have in common: a range of the sorted edges.
struct Neighbours
{
    std::size_t begin;
    std::size_t end;
    double length;
    std::int64_t order; ///< lower first
};

class RegionGrowth
{
public:
    RegionGrowth(const SeamMesh& mesh, std::span<const char> isWanted, std::vector<char>& isSeam,
                 const RunControl& control)
        : mesh_(mesh), isSeam_(isSeam), control_(control), defects_(angleDefects(mesh)),
          sets_(mesh.triangleCount()), regions_(mesh.triangles.size()), isOpen_(mesh.isOnBorder)
    {
        for (int h = 0; h < 3 * mesh.triangleCount(); ++h)
            regions_[at(h / 3)].perimeter +=
                length(mesh.positions[at(mesh.targetOf(h))] - mesh.positions[at(mesh.originOf(h))]);
        for (int e = 0; e < mesh.edgeCount(); ++e) {
            if (isSeam[at(e)])
                for (const int v : mesh.verticesOf(e))
                    isOpen_[at(v)] = 1;
            else if (isWanted[at(mesh.trianglesOf(e)[0])])
                borders_.push_back({0, e});
        }
    }

    void run()
    {
        for (const double level : levels)
            for (int pass = 0; pass < maxPasses; ++pass)
                if (!joinNeighbours(level))
                    break;
        for (const auto& [pair, edge] : borders_) {
            const auto [left, right] = mesh_.trianglesOf(edge);
            if (sets_.find(left) != sets_.find(right))
                isSeam_[at(edge)] = 1;
        }
    }

private:
    struct BorderEdge
    {
        std::uint64_t pair; ///< the two regions, the lower one in the higher half
        int edge;
    };

    /// Joins neighbours that meet at up to this angle where their union still rolls out. False when
    /// there weren't enough of them to look again.
    bool joinNeighbours(double level)
    {
        sortBorders();
        std::vector<Neighbours> neighbours = listNeighbours(level);
        control_.checkpoint();
        std::sort(neighbours.begin(), neighbours.end(),
                  [&](const Neighbours& a, const Neighbours& b) {
                      return a.order != b.order ? a.order < b.order : a.begin < b.begin;
                  });
        std::size_t joined = 0;
        for (const Neighbours& pair : neighbours)
            joined += tryJoin(pair) ? 1 : 0;
        control_.checkpoint();
        return joined * worthwhileShare > neighbours.size();
    }

    void sortBorders()
    {
        std::size_t kept = 0;
        for (BorderEdge border : borders_) {
            const auto [left, right] = mesh_.trianglesOf(border.edge);
            const auto a = static_cast<std::uint64_t>(sets_.find(left));
            const auto b = static_cast<std::uint64_t>(sets_.find(right));
            if (a == b)
                continue;
            border.pair = std::min(a, b) << 32 | std::max(a, b);
            borders_[kept++] = border;
        }
        borders_.resize(kept);
        std::sort(borders_.begin(), borders_.end(), [](const BorderEdge& a, const BorderEdge& b) {
            return a.pair != b.pair ? a.pair < b.pair : a.edge < b.edge;
        });
    }

    std::vector<Neighbours> listNeighbours(double level)
    {
        std::vector<Neighbours> neighbours;
        for (std::size_t begin = 0, end = 0; begin < borders_.size(); begin = end) {
            double sum = 0.0;
            double turned = 0.0;
            for (; end < borders_.size() && borders_[end].pair == borders_[begin].pair; ++end) {
                const auto edge = at(borders_[end].edge);
                sum += mesh_.lengths[edge];
                turned += mesh_.lengths[edge] * std::abs(mesh_.angles[edge]);
            }
            if (turned > level * sum)
                continue;
            const auto& [a, b] = regionsOf(borders_[begin].edge);
            const double perimeter = std::min(regions_[at(a)].perimeter, regions_[at(b)].perimeter);
            const double share = perimeter > 0.0 ? sum / perimeter : 1.0;
            neighbours.push_back({begin, end, sum, -std::llround(shareSteps * share)});
        }
        return neighbours;
    }

    std::array<int, 2> regionsOf(int edge)
    {
        const auto [left, right] = mesh_.trianglesOf(edge);
        return {sets_.find(left), sets_.find(right)};
    }

    bool tryJoin(const Neighbours& pair)
    {
        const auto [a, b] = regionsOf(borders_[pair.begin].edge);
        if (a == b)
            return false;
        Region both = regions_[at(a)];
        both.defect += regions_[at(b)].defect;
        both.squaredDefect += regions_[at(b)].squaredDefect;
        both.perimeter += regions_[at(b)].perimeter - 2.0 * pair.length;
        for (const int v : newInside(pair, a, b)) {
            const double defect = defects_[at(v)];
            if (std::abs(defect) > mostDefect)
                return false;
            both.defect += defect;
            both.squaredDefect += defect * defect;
        }
        if (both.strain() > mostStrain)
            return false;
        sets_.join(a, b);
        regions_[at(sets_.find(a))] = both;
        return true;
    }

    /// The vertices on the common border that come to lie inside when two regions join.
    std::vector<int> newInside(const Neighbours& pair, int a, int b)
    {
        std::vector<int> inside;
        for (std::size_t i = pair.begin; i < pair.end; ++i)
            for (const int v : mesh_.verticesOf(borders_[i].edge))
                if (!isOpen_[at(v)] && isWithin(v, a, b))
                    inside.push_back(v);
        std::sort(inside.begin(), inside.end());
        inside.erase(std::unique(inside.begin(), inside.end()), inside.end());
        return inside;
    }

    bool isWithin(int vertex, int a, int b)
    {
        for (const Spoke& spoke : mesh_.spokes[vertex])
            for (const int t : mesh_.trianglesOf(spoke.edge)) {
                const int region = sets_.find(t);
                if (region != a && region != b)
                    return false;
            }
        return true;
    }

    const SeamMesh& mesh_;
    std::vector<char>& isSeam_;
    const RunControl& control_;
    const std::vector<double> defects_;
    DisjointSets sets_;
    std::vector<Region> regions_; ///< [triangle] at the lowest triangle of the region
    std::vector<char> isOpen_;    ///< [vertex] on the border or on a seam: never inside
    std::vector<BorderEdge> borders_;
};

} // namespace

void partIntoDevelopables(const SeamMesh& mesh, std::span<const char> isWanted,
                          std::vector<char>& isSeam, const RunControl& control)
{
    RegionGrowth(mesh, isWanted, isSeam, control).run();
}

} // namespace unfold3d
