#include "UVUtils/repair/SeamWalker.h"

#include "UVUtils/model/IndexView.h"
#include "UVUtils/repair/EdgeCrossing.h"
#include "UVUtils/repair/TrianglesOfEdges.h"

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

namespace
{

/// How much longer than the straight line a way may be.
constexpr float lengthFactor = 1.3F;

/// A squared distance below it is none.
constexpr float arrived = 0.000001F;

/// Ways are short nearly always: room for one without asking for memory.
constexpr std::size_t usualSteps = 32;

/// A set of sides: a hash table with linear probing. Small ones ask for no memory.
class VisitedSides
{
public:
    VisitedSides() : slots_(2 * usualSteps, none) {}

    /// False if it was there before.
    bool insert(unsigned int side)
    {
        std::size_t slot = slotOf(side);
        if (slots_[slot] == side)
            return false;
        if (2 * ++count_ > slots_.size()) {
            grow();
            slot = slotOf(side);
        }
        slots_[slot] = side;
        return true;
    }

private:
    static constexpr unsigned int none = 0xFFFFFFFFU;

    /// Where a side is, or would be. There are twice as many slots as sides, a power of 2.
    std::size_t slotOf(unsigned int side) const
    {
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = (side * std::uint64_t{0x9E3779B97F4A7C15U} >> 32U) & mask;
        while (slots_[slot] != none && slots_[slot] != side)
            slot = (slot + 1) & mask;
        return slot;
    }
    void grow()
    {
        Slots before(2 * slots_.size(), none);
        before.swap(slots_);
        for (const unsigned int side : before)
            if (side != none)
                slots_[slotOf(side)] = side;
    }

    using Slots = boost::container::small_vector<unsigned int, 2 * usualSteps>;
    Slots slots_;
    std::size_t count_ = 0;
};

/// The first triangle of some that isn't this one.
int otherThan(unsigned int triangle, std::span<const unsigned int> triangles, int none)
{
    const auto other = std::find_if(triangles.begin(), triangles.end(),
                                    [triangle](unsigned int there) { return there != triangle; });
    return other == triangles.end() ? none : static_cast<int>(*other);
}

unsigned int cornerAfter(unsigned int corner)
{
    return corner == 2 ? 0 : corner + 1;
}

} // namespace

class SeamWalker::Search
{
public:
    Search(const SeamWalker& walker, const osg::Pnt3f& end, unsigned int endTriangle,
           const osg::Plane* plane, double startSquare, kyPointOnGeometry* out)
        : walker_(walker), end_(end), endTriangle_(endTriangle), plane_(plane), out_(out),
          best_(startSquare)
    {}

    /// Depth first, the sides of a triangle in their order. A way can have as many steps as there
    /// are sides, so they are kept in a list of their own and not on the stack of calls.
    ///
    /// budget  the square of how long the way may be
    bool walk(const osg::Pnt3f& from, unsigned int triangle, float budget)
    {
        enter(from, triangle, budget);
        while (!steps_.empty()) {
            Step& at = steps_.back();
            if (at.triangle == endTriangle_)
                return true;
            Outcome outcome = Outcome::Refused;
            while (outcome == Outcome::Refused && at.nextCorner < 3)
                outcome = tryEdge(at, at.nextCorner++);
            if (outcome == Outcome::Crossed)
                continue; // with the step that this added
            steps_.pop_back();
            if (best_ < static_cast<double>(arrived))
                return false; // and so for each step before, as nothing comes closer
        }
        return false;
    }

private:
    /// A triangle on the way, and where in it the way goes on.
    struct Step
    {
        osg::Pnt3f from;
        float budget;
        unsigned int triangle;
        unsigned int nextCorner; ///< of the triangle, whose side is tried next
        /// [corner] from the plane, where there is one.
        std::array<double, 3> distances;
    };

    /// What came of trying to cross a side.
    enum class Outcome : std::uint8_t
    {
        Refused, ///< the next side may do
        Crossed,
        Reached ///< it passes so near the end that nothing is to be gained behind it
    };

    /// Adds a step, filled in where it lies.
    void enter(const osg::Pnt3f& from, unsigned int triangle, float budget)
    {
        Step& step = steps_.emplace_back();
        step.from = from;
        step.budget = budget;
        step.triangle = triangle;
        step.nextCorner = 0;
        if (plane_ && triangle != endTriangle_)
            for (unsigned int k = 0; k < 3; ++k)
                step.distances[k] = plane_->distance(positionOf(triangle, k));
    }

    Outcome tryEdge(const Step& at, unsigned int corner)
    {
        const std::optional<EdgeCrossing> crossing = crossingOf(at, corner);
        if (!crossing)
            return Outcome::Refused;
        const float done = (crossing->point - at.from).squareLength();
        const float left = (crossing->point - end_).squareLength();
        // The second is taken where the first is no number, at a way of no length.
        const float budget = std::min(at.budget - done, left * at.budget / (done + left));
        if (!(budget >= left))
            return Outcome::Refused;
        const unsigned int side = 3 * at.triangle + corner;
        if (left < arrived) {
            record(side, crossing->t);
            return Outcome::Reached;
        }
        const int neighbour = walker_.sides_[side].neighbour;
        if (neighbour != noTriangle && visited_.insert(side)) {
            best_ = std::min(best_, static_cast<double>(left));
            enter(crossing->point, static_cast<unsigned int>(neighbour), budget);
            return Outcome::Crossed;
        }
        if (static_cast<double>(left) < best_) {
            best_ = left;
            record(side, crossing->t);
        }
        return Outcome::Refused;
    }

    std::optional<EdgeCrossing> crossingOf(const Step& at, unsigned int corner) const
    {
        const unsigned int after = cornerAfter(corner);
        const osg::Pnt3f& first = positionOf(at.triangle, corner);
        const osg::Pnt3f& second = positionOf(at.triangle, after);
        if (plane_)
            return crossingWithPlane(first, second, at.distances[corner], at.distances[after]);
        return crossingWithLine(first, second, at.from, end_);
    }

    const osg::Pnt3f& positionOf(unsigned int triangle, unsigned int corner) const
    {
        return walker_.positions_[walker_.sides_[3 * triangle + corner].vertex];
    }

    /// The place on a side, in the side's own triangle, is the closest to the end so far.
    void record(unsigned int side, float t) const
    {
        if (!out_)
            return;
        const unsigned int first = side % 3;
        const unsigned int second = cornerAfter(first);
        out_->geometry = walker_.geometry_.get();
        out_->triangle = static_cast<int>(side / 3);
        for (unsigned int k = 0; k < 3; ++k)
            out_->vertices[k] = walker_.sides_[side - first + k].vertex;
        out_->weights[first] = 1 - t;
        out_->weights[second] = t;
        out_->weights[3 - first - second] = 1 - (1 - t) - t;
    }

    const SeamWalker& walker_;
    osg::Pnt3f end_;
    unsigned int endTriangle_;
    const osg::Plane* plane_;
    kyPointOnGeometry* out_;
    double best_;          ///< squared distance to the end of the closest point so far
    VisitedSides visited_; ///< those that were crossed
    boost::container::small_vector<Step, usualSteps> steps_;
};

SeamWalker::SeamWalker(const osg::GeometryPtr& geometry) : geometry_(geometry)
{
    if (const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions()))
        positions_.assign(positions->values().begin(), positions->values().end());
    const IndexView indices(geometry->getIndices());
    const std::span<const unsigned int> triangles = indices.triangles();
    const TrianglesOfEdges edges = collectTrianglesOfEdges(triangles);
    sides_.resize(triangles.size());
    for (unsigned int side = 0; side < sides_.size(); ++side)
        sides_[side] = {triangles[side],
                        otherThan(side / 3, edges.at(edges.edgeOfSide[side]), noTriangle)};
}

bool SeamWalker::findPath(const osg::Pnt3f& start, int startTriangle, const osg::Pnt3f& end,
                          int endTriangle, const osg::Plane* plane, kyPointOnGeometry* out) const
{
    const auto isTriangle = [this](int number) {
        return number >= 0 && static_cast<std::size_t>(number) < sides_.size() / 3;
    };
    if (!isTriangle(startTriangle) || !isTriangle(endTriangle))
        return false;
    const float square = (end - start).squareLength();
    if (!std::isfinite(square))
        return true;
    Search search(*this, end, static_cast<unsigned int>(endTriangle), plane, square, out);
    return search.walk(start, static_cast<unsigned int>(startTriangle),
                       square * (lengthFactor * lengthFactor));
}
