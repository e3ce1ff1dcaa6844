#include "Unfold3D/linear/SparseCholesky.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Multiplications between two checkpoints, about: some tens of microseconds.
constexpr double workBetweenCheckpoints = 1e5;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

/// The dense matrix of one supernode while it is summed up: its columns are the panel, which stays
/// as part of the factor; the rest is the update for the parent. Both are lower triangles.
template <class Number>
struct MultifrontalCholesky<Number>::Front
{
    Number* panel;
    int height;
    int columns;
    Number* update;
    int rows;

    /// Where the entries of a column begin, such that [row] is that row of the front.
    Number* column(int j) const
    {
        if (j < columns)
            return panel + at(j) * at(height);
        return update + at(j - columns) * at(rows) - columns;
    }
    void setZero() const
    {
        for (int j = 0; j < height; ++j)
            std::fill_n(column(j) + j, height - j, Number(0));
    }
};

BlockMatrix::BlockMatrix(const SymbolicCholesky& symbolic, int size)
    : blockSize(size), diagonal(at(symbolic.size()) * at(size * size), 0.0),
      lower(symbolic.entryRows.size() * at(size * size), 0.0)
{}

void BlockMatrix::setZero()
{
    std::fill(diagonal.begin(), diagonal.end(), 0.0);
    std::fill(lower.begin(), lower.end(), 0.0);
}

namespace
{

template <int blockSize, class Front>
void addMatrixColumn(const BlockMatrix& matrix, const SymbolicCholesky& symbolic, int column,
                     std::span<const int> placeInFront, double onDiagonal, const Front& front)
{
    using Number = std::remove_pointer_t<decltype(front.panel)>;
    constexpr int square = blockSize * blockSize;
    const int place = placeInFront[at(column)] * blockSize;
    const double* const diagonal = matrix.diagonal.data() + at(column) * square;
    for (int c = 0; c < blockSize; ++c) {
        Number* const out = front.column(place + c);
        for (int r = c; r < blockSize; ++r)
            out[place + r] +=
                static_cast<Number>((r == c ? onDiagonal : 1.0) * diagonal[r * blockSize + c]);
        for (int e = symbolic.columnOffsets[at(column)]; e < symbolic.columnOffsets[at(column) + 1];
             ++e)
        {
            const double* const block = matrix.lower.data() + at(e) * square;
            Number* const rows = out + placeInFront[at(symbolic.entryRows[at(e)])] * blockSize;
            for (int r = 0; r < blockSize; ++r)
                rows[r] += static_cast<Number>(block[r * blockSize + c]);
        }
    }
}

} // namespace

template <class Number>
int MultifrontalCholesky<Number>::factorise(const BlockMatrix& matrix, const RunControl& control,
                                            int mostReplaced, double stiffening)
{
    blockSize_ = matrix.blockSize;
    stiffening_ = stiffening;
    return blockSize_ == 1 ? factoriseBlocks<1>(matrix, control, mostReplaced)
                           : factoriseBlocks<2>(matrix, control, mostReplaced);
}

template <class Number>
template <int blockSize>
int MultifrontalCholesky<Number>::factoriseBlocks(const BlockMatrix& matrix,
                                                  const RunControl& control, int mostReplaced)
{
    constexpr int square = blockSize * blockSize;
    const int count = symbolic_.supernodeCount();
    memory_->panels.template reserve<Number>(symbolic_.panelOffsets.back() * square);
    for (int odd = 0; odd < 2; ++odd) {
        memory_->stacks[odd].template reserve<Number>(symbolic_.stackPeaks[odd] * square);
        stackTops_[odd] = 0;
    }
    placeInFront_.resize(at(symbolic_.size()));
    waiting_.clear();

    int replaced = 0;
    double work = workBetweenCheckpoints;
    for (int s = 0; s < count && replaced <= mostReplaced; ++s) {
        if (work >= workBetweenCheckpoints) {
            control.checkpoint();
            work = 0.0;
        }
        const double columns = blockSize * symbolic_.columnCount(s);
        const double height = columns + blockSize * static_cast<double>(symbolic_.rowsOf(s).size());
        work += height * height * columns;
        replaced += eliminate<blockSize>(matrix, s);
    }
    return replaced;
}

/// Sums up the front of a supernode, factorises its columns and leaves the update on the stack.
template <class Number>
template <int blockSize>
int MultifrontalCholesky<Number>::eliminate(const BlockMatrix& matrix, int s)
{
    constexpr int square = blockSize * blockSize;
    const int first = symbolic_.firstColumn[at(s)];
    const int columns = symbolic_.columnCount(s);
    const std::span<const int> rows = symbolic_.rowsOf(s);
    const int rowCount = static_cast<int>(rows.size());
    const std::size_t own = at(symbolic_.isOddDepth[at(s)]);
    const std::size_t below = 1 - own; // of the children
    auto* const panels = memory_->panels.template data<Number>();
    auto* const ownStack = memory_->stacks[own].template data<Number>();
    const auto* const childStack = memory_->stacks[below].template data<Number>();
    const Front front{panels + symbolic_.panelOffsets[at(s)] * square,
                      (columns + rowCount) * blockSize, columns * blockSize,
                      ownStack + stackTops_[own], rowCount * blockSize};
    front.setZero();

    for (int j = 0; j < columns; ++j)
        placeInFront_[at(first + j)] = j;
    for (int i = 0; i < rowCount; ++i)
        placeInFront_[at(rows[at(i)])] = columns + i;
    pivotSizes_.clear();
    for (int j = first; j < first + columns; ++j) {
        addMatrixColumn<blockSize>(matrix, symbolic_, j, placeInFront_, 1.0 + stiffening_, front);
        for (int c = 0; c < blockSize; ++c)
            pivotSizes_.push_back(
                static_cast<Number>(matrix.diagonal[at(j) * square + at(c * (blockSize + 1))]));
    }
    for (; !waiting_.empty() && symbolic_.parent[at(waiting_.back())] == s; waiting_.pop_back()) {
        const std::span<const int> childRows = symbolic_.rowsOf(waiting_.back());
        stackTops_[below] -= childRows.size() * childRows.size() * square;
        addUpdate<blockSize>(childStack + stackTops_[below], childRows, front);
    }

    const int replaced = kernels_.factorise(front.panel, front.height, front.columns, pivotSizes_);
    kernels_.subtractOwnProduct(front.panel + front.columns, front.height, front.columns,
                                front.update, front.rows, front.rows, front.rows);
    stackTops_[own] += at(front.rows) * at(front.rows);
    waiting_.push_back(s);
    return replaced;
}

/// Adds the update of a child to the front of its parent.
template <class Number>
template <int blockSize>
void MultifrontalCholesky<Number>::addUpdate(const Number* update, std::span<const int> rows,
                                             const Front& front)
{
    const int count = static_cast<int>(rows.size());
    const int stride = count * blockSize;
    places_.resize(rows.size());
    for (int i = 0; i < count; ++i)
        places_[at(i)] = placeInFront_[at(rows[at(i)])] * blockSize;
    for (int j = 0; j < count; ++j) {
        for (int c = 0; c < blockSize; ++c) {
            Number* const out = front.column(places_[at(j)] + c);
            const Number* const in = update + at(j * blockSize + c) * at(stride);
            for (int r = c; r < blockSize; ++r)
                out[places_[at(j)] + r] += in[j * blockSize + r];
            for (int i = j + 1; i < count; ++i)
                for (int r = 0; r < blockSize; ++r)
                    out[places_[at(i)] + r] += in[i * blockSize + r];
        }
    }
}

template <class Number>
void MultifrontalCholesky<Number>::solve(std::span<double> values) const
{
    const auto solveNumbers = [this](std::span<Number> numbers) {
        if (blockSize_ == 1)
            solveBlocks<1>(numbers);
        else
            solveBlocks<2>(numbers);
    };
    if constexpr (std::is_same_v<Number, double>) {
        solveNumbers(values);
    } else {
        // Near 1, where a short number neither overflows nor vanishes.
        double largest = 0.0;
        for (const double value : values)
            largest = std::max(largest, std::abs(value));
        if (!(largest > 0.0))
            return;
        std::vector<Number> numbers(values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            numbers[i] = static_cast<Number>(values[i] / largest);
        solveNumbers(numbers);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = largest * static_cast<double>(numbers[i]);
    }
}

template <class Number>
template <int blockSize>
void MultifrontalCholesky<Number>::solveBlocks(std::span<Number> values) const
{
    constexpr int square = blockSize * blockSize;
    const int count = symbolic_.supernodeCount();
    const auto* const panels = memory_->panels.template data<Number>();
    std::vector<Number> below;
    for (int s = 0; s < count; ++s) {
        const std::span<const int> rows = symbolic_.rowsOf(s);
        const int columns = symbolic_.columnCount(s) * blockSize;
        below.assign(rows.size() * blockSize, Number(0));
        kernels_.solveForward(panels + symbolic_.panelOffsets[at(s)] * square,
                              columns + static_cast<int>(below.size()), columns,
                              values.data() + at(symbolic_.firstColumn[at(s)]) * blockSize,
                              below.data());
        for (std::size_t i = 0; i < rows.size(); ++i)
            for (std::size_t c = 0; c < blockSize; ++c)
                values[at(rows[i]) * blockSize + c] -= below[i * blockSize + c];
    }
    for (int s = count - 1; s >= 0; --s) {
        const std::span<const int> rows = symbolic_.rowsOf(s);
        const int columns = symbolic_.columnCount(s) * blockSize;
        below.resize(rows.size() * blockSize);
        for (std::size_t i = 0; i < rows.size(); ++i)
            for (std::size_t c = 0; c < blockSize; ++c)
                below[i * blockSize + c] = values[at(rows[i]) * blockSize + c];
        kernels_.solveBackward(panels + symbolic_.panelOffsets[at(s)] * square,
                               columns + static_cast<int>(below.size()), columns,
                               values.data() + at(symbolic_.firstColumn[at(s)]) * blockSize,
                               below.data());
    }
}

template class MultifrontalCholesky<double>;
template class MultifrontalCholesky<float>;

} // namespace unfold3d
