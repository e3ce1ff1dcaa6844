#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/linear/DenseKernels.h"
#include "Unfold3D/linear/SymbolicCholesky.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A symmetric matrix on an analysed graph, with a number (blockSize 1) or a 2 by 2 block for each
/// pair of nodes.
///
///   diagonal  [column][row in block][column in block]  both triangles of a block are filled
///   lower     [entry][row in block][column in block]   entries as SymbolicCholesky numbers them
struct BlockMatrix
{
    BlockMatrix(const SymbolicCholesky& symbolic, int blockSize);
    void setZero();

    int blockSize;
    std::vector<double> diagonal;
    std::vector<double> lower;
};

/// block (2 x 2) += factor * left * right'
inline void addProduct(double* block, double factor, Vec2 left, Vec2 right)
{
    const Vec2 scaled = factor * left;
    block[0] += scaled.x * right.x;
    block[1] += scaled.x * right.y;
    block[2] += scaled.y * right.x;
    block[3] += scaled.y * right.y;
}

/// Multifrontal Cholesky factorisation (Duff and Reid 1983, Liu 1992) of symmetric positive
/// (semi)definite matrices. Keeps the analysis by reference and its storage between factorisations.
///
/// One thread; the same bits on every run and machine.
class SparseCholesky
{
public:
    explicit SparseCholesky(const SymbolicCholesky& symbolic) : symbolic_(symbolic) {}

    /// Factorises; looks at `control` between fronts and throws Stopped when asked to, after which
    /// factorise() has to be called again. Returns how many pivots had to be replaced because
    /// rounding left nothing of them: 0 for a matrix that is well conditioned.
    int factorise(const BlockMatrix& matrix, const RunControl& control);

    /// Solves in place. values [column * blockSize + component], in the order of elimination.
    void solve(std::span<double> values) const;

private:
    template <int blockSize>
    int factoriseBlocks(const BlockMatrix& matrix, const RunControl& control);
    template <int blockSize>
    void solveBlocks(std::span<double> values) const;

    const SymbolicCholesky& symbolic_;
    int blockSize_ = 0;
    DenseKernels kernels_;
    std::vector<double> panels_; ///< the factor: a dense block of whole columns for each supernode
    std::vector<double> stack_;  ///< updates that wait for their parent
};

} // namespace unfold3d
