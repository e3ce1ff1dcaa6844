#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/SparseCholesky.h"

#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace unfold3d
{

/// Solves symmetric positive (semi)definite systems with 2 by 2 blocks in half the memory that a
/// factor needs, and less time: the factor is computed in short numbers, and conjugate gradients
/// (Hestenes and Stiefel 1952) with it as their preconditioner bring back the digits.
///
/// Where stiffnesses of too many magnitudes would leave nothing of pivots in short numbers, the
/// factor is that of a slightly stiffer matrix. Where that doesn't do, it factorises in long ones,
/// and tries the short ones again when the magnitudes have come much nearer to each other.
class RefinedCholesky
{
public:
    /// Keeps the analysis by reference.
    explicit RefinedCholesky(const SymbolicCholesky& symbolic)
        : symbolic_(symbolic), memory_(std::make_shared<FactorMemory>()),
          shortFactor_(symbolic, memory_), longFactor_(symbolic, memory_)
    {}

    /// Solves in place. values [column * 2 + component], in the order of elimination. What is left
    /// of the right side, measured by the diagonal, is at most `tolerance` times what it was.
    /// Throws Stopped.
    void solve(const BlockMatrix& matrix, std::span<double> values, double tolerance,
               const RunControl& control);

private:
    bool factoriseShort(const BlockMatrix& matrix, double contrast, const RunControl& control);
    bool solveShort(const BlockMatrix& matrix, std::span<double> values, double tolerance,
                    const RunControl& control);

    const SymbolicCholesky& symbolic_;
    std::shared_ptr<FactorMemory> memory_;
    MultifrontalCholesky<float> shortFactor_;
    SparseCholesky longFactor_;
    /// Ratio of the stiffest to the softest unknown up to which short numbers may do, and up to
    /// which they may without stiffening.
    double mostContrast_ = std::numeric_limits<double>::infinity();
    double mostPlainContrast_ = std::numeric_limits<double>::infinity();
};

/// product = matrix * values, for 2 by 2 blocks.
void multiply(const SymbolicCholesky& symbolic, const BlockMatrix& matrix,
              std::span<const double> values, std::span<double> product);

} // namespace unfold3d
