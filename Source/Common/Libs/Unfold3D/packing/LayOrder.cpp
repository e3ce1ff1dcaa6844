#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace unfold3d
{

namespace
{

/// SplitMix64 (Steele, Lea and Flood 2014). The generators of the standard library are portable,
/// its distributions aren't.
class Random
{
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// 0 to 1.
    double uniform()
    {
        state_ += 0x9e3779b97f4a7c15U;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        z ^= z >> 31;
        return static_cast<double>(z >> 11) * 0x1p-53;
    }

private:
    std::uint64_t state_;
};

} // namespace

std::vector<int> heaviestFirst(std::span<const double> weights)
{
    std::vector<int> order(weights.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return weights[static_cast<std::size_t>(a)] > weights[static_cast<std::size_t>(b)];
    });
    return order;
}

std::vector<std::vector<double>> goodOrders(const std::vector<Piece>& pieces)
{
    std::vector<std::vector<double>> orders(4);
    for (const Piece& piece : pieces) {
        const Box2& box = piece.boxes.front();
        orders[0].push_back(box.width() * box.height());
        orders[1].push_back(piece.area);
        orders[2].push_back(std::max(box.width(), box.height()));
        orders[3].push_back(box.height());
    }
    return orders;
}

std::vector<double> mutated(std::span<const double> weights, double strength, std::uint64_t seed)
{
    Random random(seed);
    std::vector<double> result(weights.begin(), weights.end());
    for (double& weight : result)
        weight *= 1.0 + strength * (random.uniform() + random.uniform() - 1.0);
    return result;
}

} // namespace unfold3d
