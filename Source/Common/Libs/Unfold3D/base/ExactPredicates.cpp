#include "Unfold3D/base/ExactPredicates.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

// The filter and the expansion arithmetic are those of J. R. Shewchuk, "Adaptive Precision
// Floating-Point Arithmetic and Fast Robust Geometric Predicates" (1997), without the stages
// between: what the filter can't decide is rare here and goes to the full expansion at once.

namespace unfold3d
{

namespace
{

/// An exact sum of doubles that don't overlap, smallest first.
class Expansion
{
public:
    /// Adds a * b, exactly.
    void addProduct(double a, double b)
    {
        const double high = a * b;
        add(std::fma(a, b, -high));
        add(high);
    }
    int sign() const
    {
        // The last component that isn't zero is larger than the sum of all before it.
        for (std::size_t i = size_; i-- > 0;)
            if (terms_[i] != 0.0)
                return terms_[i] > 0.0 ? 1 : -1;
        return 0;
    }

private:
    void add(double value)
    {
        for (std::size_t i = 0; i < size_; ++i) {
            const double sum = value + terms_[i];
            const double part = sum - value;
            terms_[i] = (value - (sum - part)) + (terms_[i] - part);
            value = sum;
        }
        terms_[size_++] = value;
    }

    std::array<double, 12> terms_{};
    std::size_t size_ = 0;
};

int signOf(double value)
{
    return (value > 0.0) - (value < 0.0);
}

} // namespace

int orient2d(Vec2 a, Vec2 b, Vec2 c)
{
    constexpr double unit = std::numeric_limits<double>::epsilon() / 2;
    constexpr double errorBound = (3.0 + 16.0 * unit) * unit;

    const double left = (a.x - c.x) * (b.y - c.y);
    const double right = (a.y - c.y) * (b.x - c.x);
    const double det = left - right;
    if (std::abs(det) > errorBound * (std::abs(left) + std::abs(right)))
        return signOf(det);

    Expansion exact; // a x b + b x c + c x a
    exact.addProduct(a.x, b.y);
    exact.addProduct(-a.y, b.x);
    exact.addProduct(b.x, c.y);
    exact.addProduct(-b.y, c.x);
    exact.addProduct(c.x, a.y);
    exact.addProduct(-c.y, a.x);
    return exact.sign();
}

} // namespace unfold3d
