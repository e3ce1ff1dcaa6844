// The filter and the expansions follow J. R. Shewchuk, "Adaptive Precision Floating-Point
// Arithmetic and Fast Robust Geometric Predicates" (1997). Because the inputs are floats, every
// product of two coordinates is exact in a double, and the slow path needs nothing but exact sums.

#include "check/Orientation.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace uvtool
{
namespace
{

/// (3 + 16 eps) eps with eps = 2^-53: how far the rounded determinant may be off, as a share of the
/// sum of its two products (Shewchuk's bound for the first stage).
constexpr double filterBound = 3.3306690738754716e-16;

int sign(double value)
{
    return value > 0.0 ? 1 : (value < 0.0 ? -1 : 0);
}

/// A number as the exact sum of doubles that don't overlap, the smallest first.
class Expansion
{
public:
    void add(double value)
    {
        std::size_t kept = 0;
        double sum = value;
        for (std::size_t i = 0; i < _size; ++i) {
            const double total = sum + _parts[i];
            const double shareOfPart = total - sum;
            const double lost = (sum - (total - shareOfPart)) + (_parts[i] - shareOfPart);
            if (lost != 0.0)
                _parts[kept++] = lost;
            sum = total;
        }
        if (sum != 0.0)
            _parts[kept++] = sum;
        _size = kept;
    }
    /// The largest part outweighs all others together.
    int signOfSum() const { return _size == 0 ? 0 : sign(_parts[_size - 1]); }

private:
    std::array<double, 8> _parts{};
    std::size_t _size = 0;
};

int exactOrientation(double ax, double ay, double bx, double by, double cx, double cy)
{
    Expansion determinant;
    for (const double product : {ax * by, -ay * bx, bx * cy, -by * cx, cx * ay, -cy * ax})
        determinant.add(product);
    return determinant.signOfSum();
}

} // namespace

int orientation(const std::array<float, 2>& a, const std::array<float, 2>& b,
                const std::array<float, 2>& c)
{
    const double ax = a[0], ay = a[1], bx = b[0], by = b[1], cx = c[0], cy = c[1];
    const double left = (bx - ax) * (cy - ay);
    const double right = (by - ay) * (cx - ax);
    const double bound = filterBound * (std::abs(left) + std::abs(right));
    const double determinant = left - right;
    if (std::abs(determinant) > bound || bound == 0.0)
        return sign(determinant);
    return exactOrientation(ax, ay, bx, by, cx, cy);
}

} // namespace uvtool
