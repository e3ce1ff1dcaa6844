#include "Unfold3D/linear/RefinedCholesky.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace unfold3d
{

namespace
{

/// More rounds than this cost more than a factor in long numbers.
constexpr int maxRounds = 6;
/// Pivots that may have to be replaced, beside the motions that cost nothing: a matrix that loses
/// more has magnitudes that short numbers can't hold.
constexpr int mostReplaced = 8;
/// Added to the diagonal, as a share of it, where more are lost: enough that rounding in short
/// numbers leaves something of every pivot. Parts that are much stiffer than what holds them give
/// way to it, but hardly anything else does.
constexpr double stiffening = 3e-5;
/// What failed is tried again when the contrast has fallen by this factor.
constexpr double contrastStep = 2.0;

double product(std::span<const double> a, std::span<const double> b)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += a[i] * b[i];
    return sum;
}

/// The ratio of the largest to the least entry of the diagonal.
double contrastOf(const BlockMatrix& matrix)
{
    double least = std::numeric_limits<double>::infinity();
    double largest = 0.0;
    for (std::size_t i = 0; i < matrix.diagonal.size(); i += 4)
        for (const double own : {matrix.diagonal[i], matrix.diagonal[i + 3]}) {
            least = std::min(least, own);
            largest = std::max(largest, own);
        }
    return largest / least;
}

/// The square of a residual, by the inverse of the diagonal.
double measured(const BlockMatrix& matrix, std::span<const double> residual)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < residual.size(); ++i) {
        const double own = matrix.diagonal[2 * i + i % 2];
        if (own > 0.0)
            sum += residual[i] * residual[i] / own;
    }
    return sum;
}

} // namespace

void multiply(const SymbolicCholesky& symbolic, const BlockMatrix& matrix,
              std::span<const double> values, std::span<double> product)
{
    std::fill(product.begin(), product.end(), 0.0);
    for (std::size_t column = 0; 2 * column < values.size(); ++column) {
        const double* const own = matrix.diagonal.data() + 4 * column;
        const double x = values[2 * column];
        const double y = values[2 * column + 1];
        double sumX = own[0] * x + own[1] * y;
        double sumY = own[2] * x + own[3] * y;
        const auto end = static_cast<std::size_t>(symbolic.columnOffsets[column + 1]);
        for (auto e = static_cast<std::size_t>(symbolic.columnOffsets[column]); e < end; ++e) {
            const std::size_t row = 2 * static_cast<std::size_t>(symbolic.entryRows[e]);
            const double* const block = matrix.lower.data() + 4 * e;
            product[row] += block[0] * x + block[1] * y;
            product[row + 1] += block[2] * x + block[3] * y;
            sumX += block[0] * values[row] + block[2] * values[row + 1];
            sumY += block[1] * values[row] + block[3] * values[row + 1];
        }
        product[2 * column] += sumX;
        product[2 * column + 1] += sumY;
    }
}

void RefinedCholesky::solve(const BlockMatrix& matrix, std::span<double> values, double tolerance,
                            const RunControl& control)
{
    const double contrast = contrastOf(matrix);
    if (contrast <= mostContrast_) {
        if (factoriseShort(matrix, contrast, control) &&
            solveShort(matrix, values, tolerance, control))
            return;
        mostContrast_ = contrast / contrastStep;
    }
    longFactor_.factorise(matrix, control);
    longFactor_.solve(values);
}

/// Returns whether there is a factor that serves.
bool RefinedCholesky::factoriseShort(const BlockMatrix& matrix, double contrast,
                                     const RunControl& control)
{
    if (contrast <= mostPlainContrast_) {
        if (shortFactor_.factorise(matrix, control, mostReplaced) <= mostReplaced)
            return true;
        mostPlainContrast_ = contrast / contrastStep;
    }
    return shortFactor_.factorise(matrix, control, mostReplaced, stiffening) <= mostReplaced;
}

/// Conjugate gradients. Returns whether they came to their end; if not, nothing has changed.
bool RefinedCholesky::solveShort(const BlockMatrix& matrix, std::span<double> values,
                                 double tolerance, const RunControl& control)
{
    std::vector<double> residual(values.begin(), values.end());
    std::vector<double> solution(residual.size(), 0.0);
    std::vector<double> corrected = residual;
    std::vector<double> direction;
    std::vector<double> image(residual.size());
    const double end = tolerance * tolerance * measured(matrix, residual);
    double before = 0.0;
    for (int round = 0; round < maxRounds; ++round) {
        control.checkpoint();
        shortFactor_.solve(corrected);
        control.checkpoint();
        const double now = product(residual, corrected);
        if (round == 0) {
            direction = corrected;
        } else {
            const double share = now / before;
            for (std::size_t i = 0; i < direction.size(); ++i)
                direction[i] = corrected[i] + share * direction[i];
        }
        before = now;
        multiply(symbolic_, matrix, direction, image);
        const double curvature = product(direction, image);
        if (!(curvature > 0.0))
            return now == 0.0; // there is nothing to solve, or nothing can be trusted
        const double step = now / curvature;
        for (std::size_t i = 0; i < solution.size(); ++i) {
            solution[i] += step * direction[i];
            residual[i] -= step * image[i];
        }
        if (measured(matrix, residual) <= end) {
            std::copy(solution.begin(), solution.end(), values.begin());
            return true;
        }
        corrected = residual;
    }
    return false;
}

} // namespace unfold3d
