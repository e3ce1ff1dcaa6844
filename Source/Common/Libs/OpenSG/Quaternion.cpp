#include "OpenSG/Quaternion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace osg
{

template <class T>
QuaternionBase<T> QuaternionBase<T>::fromAxisAngle(const Vector<T, 3>& axis, double radians)
{
    const Vector<double, 4> a(axis.x(), axis.y(), axis.z(), 0.0);
    const double length = std::hypot(a.x(), a.y(), a.z()); // neither under- nor overflows
    if (!(length >= static_cast<double>(ShortestNorm)) || !std::isfinite(length))
        return {};
    const double s = std::sin(radians / 2) / length;
    return QuaternionBase(
        QuaternionBase<double>(a.x() * s, a.y() * s, a.z() * s, std::cos(radians / 2)));
}

template <class T>
QuaternionBase<T> QuaternionBase<T>::fromEulerDegrees(const Vector<T, 3>& degrees)
{
    const auto turn = [&degrees](unsigned axis) {
        Vector<T, 3> direction;
        direction[axis] = 1;
        const double radians = static_cast<double>(degrees[axis]) * std::numbers::pi / 180;
        return fromAxisAngle(direction, radians);
    };
    return turn(2) * turn(1) * turn(0);
}

// S. W. Shepperd, "Quaternion from Rotation Matrix", Journal of Guidance and Control 1 (1978):
// the component of the largest magnitude is found first, so that the division by it is harmless.
template <class T>
QuaternionBase<T> QuaternionBase<T>::fromAxes(const Vector<T, 3>& x, const Vector<T, 3>& y,
                                              const Vector<T, 3>& z)
{
    // Four times the square of each component, from the diagonal.
    const std::array<T, 4> squares{1 + x.x() - y.y() - z.z(), 1 - x.x() + y.y() - z.z(),
                                   1 - x.x() - y.y() + z.z(), 1 + x.x() + y.y() + z.z()};
    const auto largest = std::max_element(squares.begin(), squares.end()) - squares.begin();
    const T twice = std::sqrt(squares[static_cast<std::size_t>(largest)]);
    // Four times the product of two components, from the pairs off the diagonal.
    const T xy = x.y() + y.x();
    const T yz = y.z() + z.y();
    const T zx = z.x() + x.z();
    const T wx = y.z() - z.y();
    const T wy = z.x() - x.z();
    const T wz = x.y() - y.x();
    const T f = 1 / (2 * twice);
    switch (largest) {
    case 0:
        return {twice / 2, xy * f, zx * f, wx * f};
    case 1:
        return {xy * f, twice / 2, yz * f, wy * f};
    case 2:
        return {zx * f, yz * f, twice / 2, wz * f};
    default:
        return {wx * f, wy * f, wz * f, twice / 2};
    }
}

template class QuaternionBase<float>;
template class QuaternionBase<double>;

} // namespace osg
