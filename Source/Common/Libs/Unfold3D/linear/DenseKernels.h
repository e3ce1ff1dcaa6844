#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace unfold3d
{

/// Dense arithmetic of one block of a factor, column by column with a stride of `height`.
///
/// Every entry of a result is one fixed sequence of roundings, whatever the width of the machine's
/// vectors: lanes hold different entries, sums run along one lane, nothing is fused. So the bits
/// are the same on every machine.
class DenseKernels
{
public:
    enum class Width
    {
        Baseline, ///< what every processor of the architecture has
        Wide      ///< 256-bit vectors where the processor has them
    };

    explicit DenseKernels(Width width = Width::Wide);

    /// Replaces the first `columns` columns of a symmetric block by those of its Cholesky factor.
    /// The rows from `columns` on are solved with them; the rest of the block isn't touched.
    ///
    /// panel     [height x columns]  lower triangle in, factor out; the upper triangle is ignored
    /// diagonal  [columns]           size of each pivot before anything was subtracted from it
    ///
    /// A pivot that rounding has eaten up is replaced by its diagonal, so that the unknown keeps
    /// nearly still. Returns how many were.
    int factorise(double* panel, int height, int columns, std::span<const double> diagonal);

    /// target -= left * left', lower triangle of its first `columns` columns only.
    ///
    /// left    [rows x depth, stride leftStride]
    /// target  [rows x columns, stride targetStride]
    void subtractOwnProduct(const double* left, int leftStride, int depth, double* target,
                            int targetStride, int rows, int columns);

private:
    using TileProduct = void (*)(const double* left, const double* right, int depth, double* tile);

    int factoriseRange(double* panel, int height, int begin, int end,
                       std::span<const double> diagonal);
    void pack(const double* left, int leftStride, int depth, int rows);

    TileProduct tileProduct_;
    std::vector<double> packed_;
};

} // namespace unfold3d
