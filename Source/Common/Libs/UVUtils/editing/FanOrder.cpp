#include "UVUtils/editing/FanOrder.h"

#include <algorithm>

namespace
{

constexpr unsigned int noCorner = 0xFFFFFFFF;

} // namespace

void FanOrder::sort(std::span<CutCorner> ring)
{
    begin(ring);
    for (std::size_t seed = ring.size(); seed-- > 0;) {
        if (!isLeft_[seed])
            continue;
        isLeft_[seed] = false;
        back_.assign(1, ring[seed]);
        front_.clear();
        growChain(ring);
        ordered_.insert(ordered_.end(), front_.rbegin(), front_.rend());
        ordered_.insert(ordered_.end(), back_.begin(), back_.end());
    }
    std::copy(ordered_.begin(), ordered_.end(), ring.begin());
}

void FanOrder::begin(std::span<const CutCorner> ring)
{
    isLeft_.assign(ring.size(), true);
    ordered_.clear();
    rays_.clear();
    for (unsigned int corner = 0; corner < ring.size(); ++corner) {
        rays_.push_back({ring[corner].first, corner});
        rays_.push_back({ring[corner].second, corner});
    }
    std::sort(rays_.begin(), rays_.end());
    skip_.assign(rays_.size(), 0);
}

/// Sweeps over the corners that are left until a whole sweep lays none.
void FanOrder::growChain(std::span<CutCorner> ring)
{
    unsigned int left = back_.front().first;
    unsigned int right = back_.front().second;
    bool hasGrown = false;
    for (unsigned int next = 0;;) {
        const unsigned int found = std::min(findLeft(left, next), findLeft(right, next));
        if (found == noCorner) {
            if (!hasGrown)
                return;
            next = 0;
            hasGrown = false;
            continue;
        }
        CutCorner& corner = ring[found];
        if (corner.first == left || corner.second == right)
            std::swap(corner.first, corner.second);
        if (corner.first == right) {
            back_.push_back(corner);
            right = corner.second;
        } else {
            front_.push_back(corner);
            left = corner.first;
        }
        isLeft_[found] = false;
        next = found + 1;
        hasGrown = true;
    }
}

/// The first corner left, from a given one on, with an edge to `farEnd`.
unsigned int FanOrder::findLeft(unsigned int farEnd, unsigned int corner)
{
    const auto from = std::lower_bound(rays_.begin(), rays_.end(), Ray{farEnd, corner});
    const std::size_t ray = nextLeft(static_cast<std::size_t>(from - rays_.begin()));
    return ray < rays_.size() && rays_[ray].farEnd == farEnd ? rays_[ray].corner : noCorner;
}

std::size_t FanOrder::nextLeft(std::size_t ray)
{
    const auto behind = [&](std::size_t taken) { return std::max(skip_[taken], taken + 1); };
    std::size_t end = ray;
    while (end < rays_.size() && !isLeft_[rays_[end].corner])
        end = behind(end);
    while (ray < end) {
        const std::size_t next = behind(ray);
        skip_[ray] = end;
        ray = next;
    }
    return end;
}
