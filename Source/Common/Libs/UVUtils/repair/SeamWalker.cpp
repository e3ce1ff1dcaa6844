#include "UVUtils/repair/SeamWalker.h"

#include "UVUtils/model/IndexView.h"
#include "UVUtils/repair/TrianglesOfEdges.h"

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace
{

/// A squared distance below it is none.
constexpr float arrived = 0.000001F;

/// Ways are short nearly always: room for one without asking for memory.
constexpr std::size_t usualSteps = 32;

/// A set of sides.
class VisitedSides
{
public:
    bool contains(unsigned int side) const
    {
        const auto end = few_.begin() + static_cast<std::ptrdiff_t>(fewCount_);
        return std::find(few_.begin(), end, side) != end || many_.contains(side);
    }
    void add(unsigned int side)
    {
        if (fewCount_ < few_.size())
            few_[fewCount_++] = side;
        else
            many_.insert(side);
    }

private:
    std::array<unsigned int, usualSteps> few_;
    std::size_t fewCount_ = 0;
    std::unordered_set<unsigned int> many_;
};

std::vector<int> neighboursOfSides(std::span<const unsigned int> triangles)
{
    const TrianglesOfEdges edges = collectTrianglesOfEdges(triangles);
    std::vector<int> neighbours(triangles.size(), -1);
    for (unsigned int side = 0; side < triangles.size(); ++side) {
        const auto there = edges.at(edges.edgeOfSide[side]);
        const auto other = std::find_if(there.begin(), there.end(), [side](unsigned int triangle) {
            return triangle != side / 3;
        });
        if (other != there.end())
            neighbours[side] = static_cast<int>(*other);
    }
    return neighbours;
}

unsigned int nextCorner(unsigned int side)
{
    return side % 3 == 2 ? side - 2 : side + 1;
}

} // namespace

/// What all steps of one search share.
struct SeamWalker::Search
{
    osg::Pnt3f end;
    unsigned int endTriangle;
    const osg::Plane* plane;
    kyPointOnGeometry* out;
    double best;          ///< squared distance to the end of the closest point so far
    VisitedSides visited; ///< those that were crossed
};

/// A triangle on the way, and where in it the way goes on.
struct SeamWalker::Step
{
    osg::Pnt3f from;
    float budget; ///< the square of how far the end may be, along the way
    unsigned int triangle;
    unsigned int nextCorner = 0; ///< of the triangle, whose side is tried next
};

/// What came of trying to cross a side.
enum class SeamWalker::Outcome : int
{
    Refused, ///< the next side may do
    Crossed,
    Reached ///< it passes so near the end that nothing is to be gained behind it
};

SeamWalker::SeamWalker(const osg::GeometryPtr& geometry) : geometry_(geometry)
{
    if (const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions()))
        positions_.assign(positions->values().begin(), positions->values().end());
    const IndexView indices(geometry->getIndices());
    triangles_.assign(indices.triangles().begin(), indices.triangles().end());
    neighbours_ = neighboursOfSides(triangles_);
}

bool SeamWalker::isTriangle(int number) const
{
    return number >= 0 && static_cast<std::size_t>(number) < triangles_.size() / 3;
}

bool SeamWalker::findPath(const osg::Pnt3f& start, int startTriangle, const osg::Pnt3f& end,
                          int endTriangle, const osg::Plane* plane, kyPointOnGeometry* out) const
{
    const float square = (end - start).squareLength();
    if (!isTriangle(startTriangle) || !isTriangle(endTriangle) || !std::isfinite(square))
        return false;
    Search search{end, static_cast<unsigned int>(endTriangle), plane, out, square, {}};
    return walk(search, start, static_cast<unsigned int>(startTriangle),
                square * (lengthFactor * lengthFactor));
}

/// Depth first, the sides of a triangle in their order. A way can have as many steps as there are
/// sides, so they are kept in a list of its own and not on the stack of calls.
bool SeamWalker::walk(Search& search, const osg::Pnt3f& from, unsigned int triangle,
                      float budget) const
{
    boost::container::small_vector<Step, usualSteps> steps;
    steps.push_back({from, budget, triangle});
    while (!steps.empty()) {
        Step& at = steps.back();
        if (at.triangle == search.endTriangle)
            return true;
        Outcome outcome = Outcome::Refused;
        Step next{};
        while (outcome == Outcome::Refused && at.nextCorner < 3)
            outcome = tryEdge(search, at, 3 * at.triangle + at.nextCorner++, next);
        if (outcome == Outcome::Crossed) {
            steps.push_back(next);
            continue;
        }
        steps.pop_back();
        if (search.best < static_cast<double>(arrived))
            return false; // and so for each step before, as nothing comes closer
    }
    return false;
}

SeamWalker::Outcome SeamWalker::tryEdge(Search& search, const Step& at, unsigned int side,
                                        Step& next) const
{
    const std::optional<EdgeCrossing> crossing = crossingOf(side, at.from, search);
    if (!crossing)
        return Outcome::Refused;
    const float done = (crossing->point - at.from).squareLength();
    const float left = (crossing->point - search.end).squareLength();
    // The second is taken where the first is no number, at a way of no length.
    const float budget = std::min(at.budget - done, left * at.budget / (done + left));
    if (!(budget >= left))
        return Outcome::Refused;
    if (left < arrived) {
        if (search.out)
            *search.out = edgePoint(side, crossing->t);
        return Outcome::Reached;
    }
    if (neighbours_[side] != noTriangle && !search.visited.contains(side)) {
        search.best = std::min(search.best, static_cast<double>(left));
        search.visited.add(side);
        next = {crossing->point, budget, static_cast<unsigned int>(neighbours_[side])};
        return Outcome::Crossed;
    }
    if (static_cast<double>(left) < search.best) {
        search.best = left;
        if (search.out)
            *search.out = edgePoint(side, crossing->t);
    }
    return Outcome::Refused;
}

std::optional<EdgeCrossing> SeamWalker::crossingOf(unsigned int side, const osg::Pnt3f& from,
                                                   const Search& search) const
{
    const osg::Pnt3f& first = positions_[triangles_[side]];
    const osg::Pnt3f& second = positions_[triangles_[nextCorner(side)]];
    if (search.plane)
        return crossingWithPlane(first, second, *search.plane);
    return crossingWithLine(first, second, from, search.end);
}

kyPointOnGeometry SeamWalker::edgePoint(unsigned int side, float t) const
{
    const unsigned int triangle = side / 3;
    const unsigned int first = side % 3;
    const unsigned int second = (first + 1) % 3;
    kyPointOnGeometry point;
    point.geometry = geometry_.get();
    point.triangle = static_cast<int>(triangle);
    std::copy_n(triangles_.begin() + 3 * static_cast<std::ptrdiff_t>(triangle), 3, point.vertices);
    point.weights[first] = 1 - t;
    point.weights[second] = t;
    point.weights[3 - first - second] = 1 - (1 - t) - t;
    return point;
}
