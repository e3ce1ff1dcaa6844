#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace unfold3d
{

template <class Number>
struct DenseLoopTable;

/// Dense arithmetic of one block of a factor, column by column with a stride of `height`. Number is
/// double or float.
///
/// Every entry of a result is one fixed sequence of roundings, whatever the width of the machine's
/// vectors: lanes hold different entries, sums run along lanes of a fixed number, nothing is fused.
/// So the bits are the same on every machine.
template <class Number>
class DenseKernels
{
public:
    /// Of the vectors; where the processor has no such, the next lesser.
    enum class Width
    {
        Baseline, ///< what every processor of the architecture has
        Wide,     ///< 256 bits
        Widest    ///< 512 bits
    };

    explicit DenseKernels(Width width = Width::Widest);

    /// Replaces the first `columns` columns of a symmetric block by those of its Cholesky factor.
    /// The rows from `columns` on are solved with them; the rest of the block isn't touched.
    ///
    /// panel     [height x columns]  lower triangle in, factor out; the upper triangle is ignored
    /// diagonal  [columns]           size of each pivot before anything was subtracted from it
    ///
    /// A pivot that rounding has eaten up is replaced by its diagonal, so that the unknown keeps
    /// nearly still. Returns how many were.
    int factorise(Number* panel, int height, int columns, std::span<const Number> diagonal);

    /// target -= left * left', lower triangle of its first `columns` columns only.
    ///
    /// left    [rows x depth, stride leftStride]
    /// target  [rows x columns, stride targetStride]
    void subtractOwnProduct(const Number* left, int leftStride, int depth, Number* target,
                            int targetStride, int rows, int columns);

    /// Solves with the factor in a panel: own [columns] in place, and adds to below [height -
    /// columns] what the rows below get of it.
    void solveForward(const Number* panel, int height, int columns, Number* own,
                      Number* below) const;
    /// Solves with its transpose: own [columns] in place, with the values of the rows below known.
    void solveBackward(const Number* panel, int height, int columns, Number* own,
                       const Number* below) const;

    /// sums[i] += values[i]
    void add(const Number* values, std::size_t count, Number* sums) const;

private:
    int factoriseRange(Number* panel, int height, int begin, int end,
                       std::span<const Number> diagonal);

    const DenseLoopTable<Number>* loops_;
    std::vector<Number> packed_;
};

} // namespace unfold3d
