#pragma once

#include "Unfold3D/base/LargeBuffer.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/linear/DenseKernels.h"
#include "Unfold3D/linear/SymbolicCholesky.h"

#include <limits>
#include <memory>
#include <span>
#include <utility>
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

/// Where a factor lies. Two factorisations may share it when only one factor is needed at a time.
struct FactorMemory
{
    LargeBuffer panels;    ///< the factor: a dense block of whole columns for each supernode
    LargeBuffer stacks[2]; ///< updates that wait for their parent, of supernodes of even and odd
                           ///< depth, so that an update is never beside those it is made of
};

/// Multifrontal Cholesky factorisation (Duff and Reid 1983, Liu 1992) of symmetric positive
/// (semi)definite matrices. Keeps the analysis by reference and its storage between factorisations.
/// With float as Number, the factor takes half the memory and nearly half the time, and is good to
/// few digits.
///
/// One thread; the same bits on every run and machine.
template <class Number>
class MultifrontalCholesky
{
public:
    explicit MultifrontalCholesky(
        const SymbolicCholesky& symbolic,
        std::shared_ptr<FactorMemory> memory = std::make_shared<FactorMemory>())
        : symbolic_(symbolic), memory_(std::move(memory))
    {}

    /// Factorises; looks at `control` between fronts and throws Stopped when asked to, after which
    /// factorise() has to be called again. Returns how many pivots had to be replaced because
    /// rounding left nothing of them: 0 for a matrix that is well conditioned. Gives up once these
    /// are more than `mostReplaced`. The numbers on the diagonal are taken larger by the share
    /// `stiffening`, for a factor that only has to be near that of the matrix.
    int factorise(const BlockMatrix& matrix, const RunControl& control,
                  int mostReplaced = std::numeric_limits<int>::max(), double stiffening = 0.0);

    /// Solves in place. values [column * blockSize + component], in the order of elimination.
    void solve(std::span<double> values) const;

private:
    struct Front;
    template <int blockSize>
    int factoriseBlocks(const BlockMatrix& matrix, const RunControl& control, int mostReplaced);
    template <int blockSize>
    int eliminate(const BlockMatrix& matrix, int supernode);
    template <int blockSize>
    void addUpdate(const Number* update, std::span<const int> rows, const Front& front);
    template <int blockSize>
    void solveBlocks(std::span<Number> values) const;

    const SymbolicCholesky& symbolic_;
    int blockSize_ = 0;
    double stiffening_ = 0.0;
    DenseKernels<Number> kernels_;
    std::shared_ptr<FactorMemory> memory_;
    std::size_t stackTops_[2] = {};
    std::vector<int> waiting_;      ///< supernodes whose updates wait
    std::vector<int> placeInFront_; ///< [column]
    std::vector<Number> pivotSizes_;
    std::vector<int> places_;
};

using SparseCholesky = MultifrontalCholesky<double>;

} // namespace unfold3d
