#include "OpenSG/Matrix.h"

#include <cmath>

namespace osg
{

namespace
{

/// The 2x2 minors of the upper and of the lower two rows, from which the determinant and all
/// cofactors of a 4x4 matrix follow (Laplace expansion by complementary minors).
struct PairMinors
{
    /// Columns 01, 02, 03, 12, 13, 23.
    double upper[6];
    double lower[6];

    template <class T>
    explicit PairMinors(const TransformationMatrix<T>& m)
    {
        constexpr unsigned Columns[6][2] = {{0, 1}, {0, 2}, {0, 3}, {1, 2}, {1, 3}, {2, 3}};
        const auto minor = [&m](unsigned row, const unsigned(&c)[2]) {
            return static_cast<double>(m(row, c[0])) * static_cast<double>(m(row + 1, c[1])) -
                   static_cast<double>(m(row, c[1])) * static_cast<double>(m(row + 1, c[0]));
        };
        for (unsigned i = 0; i < 6; ++i) {
            upper[i] = minor(0, Columns[i]);
            lower[i] = minor(2, Columns[i]);
        }
    }

    [[nodiscard]] double determinant() const
    {
        return upper[0] * lower[5] - upper[1] * lower[4] + upper[2] * lower[3] +
               upper[3] * lower[2] - upper[4] * lower[1] + upper[5] * lower[0];
    }
};

} // namespace

template <class T>
TransformationMatrix<T> TransformationMatrix<T>::translation(const Vector<T, 3>& offset)
{
    TransformationMatrix m;
    for (unsigned row = 0; row < 3; ++row)
        m(row, 3) = offset[row];
    return m;
}

template <class T>
TransformationMatrix<T> TransformationMatrix<T>::scaling(const Vector<T, 3>& factors)
{
    TransformationMatrix m;
    for (unsigned i = 0; i < 3; ++i)
        m(i, i) = factors[i];
    return m;
}

template <class T>
TransformationMatrix<T> TransformationMatrix<T>::rotation(const QuaternionBase<T>& q)
{
    const T x = q.x();
    const T y = q.y();
    const T z = q.z();
    const T w = q.w();
    return TransformationMatrix({1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y),
                                 0, 2 * (x * y + w * z), 1 - 2 * (x * x + z * z),
                                 2 * (y * z - w * x), 0, 2 * (x * z - w * y), 2 * (y * z + w * x),
                                 1 - 2 * (x * x + y * y), 0, 0, 0, 0, 1});
}

template <class T>
Vector<T, 3> TransformationMatrix<T>::getColumn(unsigned column) const
{
    return Vector<T, 3>((*this)(0, column), (*this)(1, column), (*this)(2, column));
}

template <class T>
TransformationMatrix<T> TransformationMatrix<T>::operator*(const TransformationMatrix& first) const
{
    TransformationMatrix product;
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column) {
            T sum = 0;
            for (unsigned i = 0; i < 4; ++i)
                sum += (*this)(row, i) * first(i, column);
            product(row, column) = sum;
        }
    return product;
}

template <class T>
Point<T, 3> TransformationMatrix<T>::transformPoint(const Point<T, 3>& p) const
{
    return Point<T, 3>(transformVector(p.subZero()) + getColumn(3));
}

template <class T>
Vector<T, 3> TransformationMatrix<T>::transformVector(const Vector<T, 3>& v) const
{
    Vector<T, 3> result;
    for (unsigned row = 0; row < 3; ++row)
        result[row] = (*this)(row, 0) * v[0] + (*this)(row, 1) * v[1] + (*this)(row, 2) * v[2];
    return result;
}

template <class T>
double TransformationMatrix<T>::determinant() const
{
    return PairMinors(*this).determinant();
}

template <class T>
TransformationMatrix<T> TransformationMatrix<T>::inverted() const
{
    TransformationMatrix result = *this;
    result.invert();
    return result;
}

template <class T>
bool TransformationMatrix<T>::invert()
{
    const PairMinors minors(*this);
    const double determinant = minors.determinant();
    if (!std::isfinite(determinant) || std::abs(determinant) < SmallestDeterminant) {
        *this = TransformationMatrix();
        return false;
    }
    const auto m = [this](unsigned row, unsigned column) {
        return static_cast<double>((*this)(row, column));
    };
    const auto& s = minors.upper;
    const auto& c = minors.lower;
    const std::array<double, 16> adjugate{m(1, 1) * c[5] - m(1, 2) * c[4] + m(1, 3) * c[3],
                                          -m(0, 1) * c[5] + m(0, 2) * c[4] - m(0, 3) * c[3],
                                          m(3, 1) * s[5] - m(3, 2) * s[4] + m(3, 3) * s[3],
                                          -m(2, 1) * s[5] + m(2, 2) * s[4] - m(2, 3) * s[3],
                                          -m(1, 0) * c[5] + m(1, 2) * c[2] - m(1, 3) * c[1],
                                          m(0, 0) * c[5] - m(0, 2) * c[2] + m(0, 3) * c[1],
                                          -m(3, 0) * s[5] + m(3, 2) * s[2] - m(3, 3) * s[1],
                                          m(2, 0) * s[5] - m(2, 2) * s[2] + m(2, 3) * s[1],
                                          m(1, 0) * c[4] - m(1, 1) * c[2] + m(1, 3) * c[0],
                                          -m(0, 0) * c[4] + m(0, 1) * c[2] - m(0, 3) * c[0],
                                          m(3, 0) * s[4] - m(3, 1) * s[2] + m(3, 3) * s[0],
                                          -m(2, 0) * s[4] + m(2, 1) * s[2] - m(2, 3) * s[0],
                                          -m(1, 0) * c[3] + m(1, 1) * c[1] - m(1, 2) * c[0],
                                          m(0, 0) * c[3] - m(0, 1) * c[1] + m(0, 2) * c[0],
                                          -m(3, 0) * s[3] + m(3, 1) * s[1] - m(3, 2) * s[0],
                                          m(2, 0) * s[3] - m(2, 1) * s[1] + m(2, 2) * s[0]};
    for (unsigned i = 0; i < 16; ++i)
        _rows[i] = static_cast<T>(adjugate[i] / determinant);
    return true;
}

template class TransformationMatrix<float>;
template class TransformationMatrix<double>;

} // namespace osg
