#include "Unfold3D/linear/SparseCholesky.h"

#include <algorithm>
#include <cstring>

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

/// The dense matrix of one supernode while it is summed up: its columns are the panel, which stays
/// as part of the factor; the rest is the update for the parent. Both are lower triangles.
struct Front
{
    double* panel;
    int height;
    int columns;
    double* update;
    int rows;

    /// Where the entries of a column begin, such that [row] is that row of the front.
    double* column(int j) const
    {
        if (j < columns)
            return panel + at(j) * at(height);
        return update + at(j - columns) * at(rows) - columns;
    }
};

template <int blockSize>
void addMatrixColumn(const BlockMatrix& matrix, const SymbolicCholesky& symbolic, int column,
                     std::span<const int> placeInFront, const Front& front)
{
    constexpr int square = blockSize * blockSize;
    const int place = placeInFront[at(column)] * blockSize;
    const double* const diagonal = matrix.diagonal.data() + at(column) * square;
    for (int c = 0; c < blockSize; ++c) {
        double* const out = front.column(place + c);
        for (int r = c; r < blockSize; ++r)
            out[place + r] += diagonal[r * blockSize + c];
        for (int e = symbolic.columnOffsets[at(column)]; e < symbolic.columnOffsets[at(column) + 1];
             ++e)
        {
            const double* const block = matrix.lower.data() + at(e) * square;
            double* const rows = out + placeInFront[at(symbolic.entryRows[at(e)])] * blockSize;
            for (int r = 0; r < blockSize; ++r)
                rows[r] += block[r * blockSize + c];
        }
    }
}

/// Adds the update of a child to the front of its parent.
template <int blockSize>
void addUpdate(const double* update, std::span<const int> places, const Front& front)
{
    const int count = static_cast<int>(places.size());
    const int stride = count * blockSize;
    for (int j = 0; j < count; ++j) {
        for (int c = 0; c < blockSize; ++c) {
            double* const out = front.column(places[at(j)] * blockSize + c);
            const double* const in = update + at(j * blockSize + c) * at(stride);
            for (int r = c; r < blockSize; ++r)
                out[places[at(j)] * blockSize + r] += in[j * blockSize + r];
            for (int i = j + 1; i < count; ++i)
                for (int r = 0; r < blockSize; ++r)
                    out[places[at(i)] * blockSize + r] += in[i * blockSize + r];
        }
    }
}

} // namespace

BlockMatrix::BlockMatrix(const SymbolicCholesky& symbolic, int size)
    : blockSize(size), diagonal(at(symbolic.size()) * at(size * size), 0.0),
      lower(symbolic.entryRows.size() * at(size * size), 0.0)
{}

void BlockMatrix::setZero()
{
    std::fill(diagonal.begin(), diagonal.end(), 0.0);
    std::fill(lower.begin(), lower.end(), 0.0);
}

int SparseCholesky::factorise(const BlockMatrix& matrix, const RunControl& control)
{
    blockSize_ = matrix.blockSize;
    return blockSize_ == 1 ? factoriseBlocks<1>(matrix, control)
                           : factoriseBlocks<2>(matrix, control);
}

template <int blockSize>
int SparseCholesky::factoriseBlocks(const BlockMatrix& matrix, const RunControl& control)
{
    constexpr int square = blockSize * blockSize;
    const int count = symbolic_.supernodeCount();
    panels_.resize(symbolic_.panelOffsets.back() * square);
    stack_.resize(symbolic_.stackPeak * square);

    std::vector<int> placeInFront(at(symbolic_.size()));
    std::vector<int> places;
    std::vector<double> pivotSizes;
    std::vector<int> waiting;
    std::size_t stackTop = 0;
    int replaced = 0;
    double work = workBetweenCheckpoints;
    for (int s = 0; s < count; ++s) {
        if (work >= workBetweenCheckpoints) {
            control.checkpoint();
            work = 0.0;
        }
        const int first = symbolic_.firstColumn[at(s)];
        const int columns = symbolic_.columnCount(s);
        const std::span<const int> rows = symbolic_.rowsOf(s);
        const int rowCount = static_cast<int>(rows.size());
        const Front front{panels_.data() + symbolic_.panelOffsets[at(s)] * square,
                          (columns + rowCount) * blockSize, columns * blockSize,
                          stack_.data() + stackTop, rowCount * blockSize};
        work += static_cast<double>(front.height) * front.height * front.columns;
        const std::size_t updateSize = at(front.rows) * at(front.rows);
        std::fill_n(front.panel, at(front.height) * at(front.columns), 0.0);
        std::fill_n(front.update, updateSize, 0.0);

        for (int j = 0; j < columns; ++j)
            placeInFront[at(first + j)] = j;
        for (int i = 0; i < rowCount; ++i)
            placeInFront[at(rows[at(i)])] = columns + i;
        pivotSizes.clear();
        for (int j = first; j < first + columns; ++j) {
            addMatrixColumn<blockSize>(matrix, symbolic_, j, placeInFront, front);
            for (int c = 0; c < blockSize; ++c)
                pivotSizes.push_back(matrix.diagonal[at(j) * square + at(c * (blockSize + 1))]);
        }
        std::size_t base = stackTop;
        for (; !waiting.empty() && symbolic_.parent[at(waiting.back())] == s; waiting.pop_back()) {
            const std::span<const int> childRows = symbolic_.rowsOf(waiting.back());
            places.resize(childRows.size());
            for (std::size_t i = 0; i < places.size(); ++i)
                places[i] = placeInFront[at(childRows[i])];
            base -= places.size() * places.size() * square;
            addUpdate<blockSize>(stack_.data() + base, places, front);
        }

        replaced += kernels_.factorise(front.panel, front.height, front.columns, pivotSizes);
        kernels_.subtractOwnProduct(front.panel + front.columns, front.height, front.columns,
                                    front.update, front.rows, front.rows, front.rows);
        if (base != stackTop)
            std::memmove(stack_.data() + base, front.update, updateSize * sizeof(double));
        stackTop = base + updateSize;
        waiting.push_back(s);
    }
    return replaced;
}

void SparseCholesky::solve(std::span<double> values) const
{
    if (blockSize_ == 1)
        solveBlocks<1>(values);
    else
        solveBlocks<2>(values);
}

template <int blockSize>
void SparseCholesky::solveBlocks(std::span<double> values) const
{
    constexpr int square = blockSize * blockSize;
    const int count = symbolic_.supernodeCount();
    std::vector<double> below;
    for (int s = 0; s < count; ++s) {
        const std::span<const int> rows = symbolic_.rowsOf(s);
        const int columns = symbolic_.columnCount(s) * blockSize;
        const int height = columns + static_cast<int>(rows.size()) * blockSize;
        const double* column = panels_.data() + symbolic_.panelOffsets[at(s)] * square;
        double* const own = values.data() + at(symbolic_.firstColumn[at(s)]) * blockSize;
        below.assign(at(height - columns), 0.0);
        for (int j = 0; j < columns; ++j, column += height) {
            const double value = own[j] /= column[j];
            for (int i = j + 1; i < columns; ++i)
                own[i] -= column[i] * value;
            for (int i = columns; i < height; ++i)
                below[at(i - columns)] += column[i] * value;
        }
        for (std::size_t i = 0; i < rows.size(); ++i)
            for (std::size_t c = 0; c < blockSize; ++c)
                values[at(rows[i]) * blockSize + c] -= below[i * blockSize + c];
    }
    for (int s = count - 1; s >= 0; --s) {
        const std::span<const int> rows = symbolic_.rowsOf(s);
        const int columns = symbolic_.columnCount(s) * blockSize;
        const int height = columns + static_cast<int>(rows.size()) * blockSize;
        const double* const panel = panels_.data() + symbolic_.panelOffsets[at(s)] * square;
        double* const own = values.data() + at(symbolic_.firstColumn[at(s)]) * blockSize;
        below.resize(at(height - columns));
        for (std::size_t i = 0; i < rows.size(); ++i)
            for (std::size_t c = 0; c < blockSize; ++c)
                below[i * blockSize + c] = values[at(rows[i]) * blockSize + c];
        for (int j = columns - 1; j >= 0; --j) {
            const double* const column = panel + at(j) * at(height);
            double value = own[j];
            for (int i = j + 1; i < columns; ++i)
                value -= column[i] * own[i];
            // Four sums side by side: one alone would wait for each addition.
            double sum[4] = {};
            int i = columns;
            for (; i + 4 <= height; i += 4)
                for (int lane = 0; lane < 4; ++lane)
                    sum[lane] += column[i + lane] * below[at(i - columns + lane)];
            for (; i < height; ++i)
                sum[0] += column[i] * below[at(i - columns)];
            own[j] = (value - ((sum[0] + sum[1]) + (sum[2] + sum[3]))) / column[j];
        }
    }
}

} // namespace unfold3d
