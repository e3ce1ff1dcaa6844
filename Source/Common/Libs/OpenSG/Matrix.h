#pragma once

#include "OpenSG/Quaternion.h"
#include "OpenSG/Vector.h"

#include <array>

namespace osg
{

/// A 4x4 matrix that acts on column vectors: in A * B, B acts first, and the translation is the
/// last column. The identity at the start. Instantiated for float and double.
template <class T>
class TransformationMatrix
{
public:
    /// A determinant below this, in magnitude, counts as singular.
    static constexpr double SmallestDeterminant = 1e-30;

    TransformationMatrix() = default;
    /// From 16 numbers, row after row.
    explicit TransformationMatrix(const std::array<T, 16>& rows) : _rows(rows) {}

    /// From a matrix of the other type of number.
    template <class U>
        requires(!std::is_same_v<U, T>)
    explicit TransformationMatrix(const TransformationMatrix<U>& other)
    {
        for (unsigned i = 0; i < 16; ++i)
            _rows[i] = static_cast<T>(other(i / 4, i % 4));
    }

    static TransformationMatrix translation(const Vector<T, 3>& offset);
    static TransformationMatrix scaling(const Vector<T, 3>& factors);
    /// Of a quaternion of norm 1.
    static TransformationMatrix rotation(const QuaternionBase<T>& q);

    T& operator()(unsigned row, unsigned column) { return _rows[row * 4 + column]; }
    const T& operator()(unsigned row, unsigned column) const { return _rows[row * 4 + column]; }
    /// The upper three numbers of a column; column 3 is the translation.
    [[nodiscard]] Vector<T, 3> getColumn(unsigned column) const;

    TransformationMatrix operator*(const TransformationMatrix& first) const;
    TransformationMatrix& operator*=(const TransformationMatrix& first)
    {
        return *this = *this * first;
    }
    bool operator==(const TransformationMatrix&) const = default;

    /// The last row is ignored: nothing is divided.
    [[nodiscard]] Point<T, 3> transformPoint(const Point<T, 3>& p) const;
    /// As a point, without the translation.
    [[nodiscard]] Vector<T, 3> transformVector(const Vector<T, 3>& v) const;

    /// Of the whole 4x4, computed in double.
    [[nodiscard]] double determinant() const;
    /// The inverse, computed in double; the identity when the matrix is singular (determinant
    /// below SmallestDeterminant) or not finite.
    [[nodiscard]] TransformationMatrix inverted() const;
    /// Becomes inverted(); false if that is the identity in place of an inverse.
    bool invert();

private:
    std::array<T, 16> _rows{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

extern template class TransformationMatrix<float>;
extern template class TransformationMatrix<double>;

using Matrix = TransformationMatrix<float>;

} // namespace osg
