#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

namespace unfold3d
{

/// Columns that are eliminated as one; wider panels are halved and use the tiles.
inline constexpr int narrowPanel = 8;
/// Depth of one pass of a product.
inline constexpr int passDepth = 128;

/// The loops of DenseKernels, as one width of vectors runs them.
template <class Number>
struct DenseLoopTable
{
    int (*eliminateNarrow)(Number* panel, int height, int begin, int end, const Number* diagonal);
    void (*subtractPlainly)(const Number* left, int leftStride, int depth, Number* target,
                            int targetStride, int rows, int columns);
    void (*subtractPass)(const Number* left, int leftStride, int depth, Number* target,
                         int targetStride, int rows, int columns, Number* packed);
    void (*solveForward)(const Number* panel, int height, int columns, Number* own, Number* below);
    void (*solveBackward)(const Number* panel, int height, int columns, Number* own,
                          const Number* below);
    void (*add)(const Number* values, std::size_t count, Number* sums);
};

/// To be inlined into functions that are compiled for one width each. `bytes` is that width;
/// `tileColumns` is how many columns of a product are summed up at once, each in two vectors.
template <class Number, int bytes, int tileColumns>
struct DenseLoops
{
    using Vector [[gnu::vector_size(bytes)]] = Number;
    static constexpr int lanes = bytes / static_cast<int>(sizeof(Number));
    static constexpr int tileRows = 2 * lanes;
    /// Rows whose strips are used again for every strip of columns: within the second cache.
    static constexpr int passRows = 128;
    static_assert(passRows % tileRows == 0 && tileRows % tileColumns == 0);
    /// A pivot that lost all but this share of its size holds nothing but rounding errors.
    static constexpr Number lostPivot = 64 * std::numeric_limits<Number>::epsilon();

    [[gnu::always_inline]] static std::ptrdiff_t at(int row, int column, int stride)
    {
        return row + static_cast<std::ptrdiff_t>(column) * stride;
    }
    // Vectors go by reference: by value, they would be passed in other registers from width to
    // width.
    [[gnu::always_inline]] static void load(Vector& vector, const Number* from)
    {
        std::memcpy(&vector, from, sizeof vector);
    }
    [[gnu::always_inline]] static void store(Number* to, const Vector& vector)
    {
        std::memcpy(to, &vector, sizeof vector);
    }

    /// Strips of tileRows rows one after the other, each [depth][tileRows], the last filled up with
    /// zeros.
    [[gnu::always_inline]] static void pack(const Number* left, int leftStride, int depth, int rows,
                                            Number* out)
    {
        for (int first = 0; first < rows; first += tileRows) {
            const int count = std::min(tileRows, rows - first);
            for (int k = 0; k < depth; ++k, out += tileRows) {
                const Number* const in = left + at(first, k, leftStride);
                if (count == tileRows) {
                    std::memcpy(out, in, tileRows * sizeof(Number));
                    continue;
                }
                for (int i = 0; i < tileRows; ++i)
                    out[i] = i < count ? in[i] : Number(0);
            }
        }
    }

    /// One tile of the product of packed strips, subtracted where it lies whole in the lower
    /// triangle, else row by row.
    [[gnu::always_inline]] static void subtractTile(const Number* left, const Number* right,
                                                    int depth, Number* target, int targetStride,
                                                    int row, int column, int endRow, int endColumn)
    {
        Vector sum[tileColumns][2] = {};
        for (int k = 0; k < depth; ++k) {
            Vector upper;
            Vector lower;
            load(upper, left);
            load(lower, left + lanes);
#pragma GCC unroll 8
            for (int j = 0; j < tileColumns; ++j) {
                sum[j][0] += upper * right[j];
                sum[j][1] += lower * right[j];
            }
            left += tileRows;
            right += tileRows;
        }
        if (row + tileRows <= endRow && column + tileColumns <= endColumn &&
            column + tileColumns <= row + 1)
        {
#pragma GCC unroll 8
            for (int j = 0; j < tileColumns; ++j) {
                Number* const out = target + at(row, column + j, targetStride);
                Vector upper;
                Vector lower;
                load(upper, out);
                load(lower, out + lanes);
                store(out, upper - sum[j][0]);
                store(out + lanes, lower - sum[j][1]);
            }
            return;
        }
        Number tile[tileColumns * tileRows];
        std::memcpy(tile, sum, sizeof tile);
        for (int c = column; c < std::min(endColumn, column + tileColumns); ++c) {
            Number* const out = target + at(0, c, targetStride);
            const Number* const in = tile + (c - column) * tileRows - row;
            for (int r = std::max(row, c); r < std::min(endRow, row + tileRows); ++r)
                out[r] -= in[r];
        }
    }

    [[gnu::always_inline]] static void subtractPass(const Number* left, int leftStride, int depth,
                                                    Number* target, int targetStride, int rows,
                                                    int columns, Number* packed)
    {
        pack(left, leftStride, depth, rows, packed);
        for (int firstRow = 0; firstRow < rows; firstRow += passRows) {
            const int endRow = std::min(rows, firstRow + passRows);
            for (int j = 0; j < std::min(columns, endRow); j += tileColumns) {
                const Number* const right =
                    packed + at(0, j / tileRows, tileRows * depth) + j % tileRows;
                for (int i = std::max(firstRow, j / tileRows * tileRows); i < endRow; i += tileRows)
                    subtractTile(packed + at(0, i, depth), right, depth, target, targetStride, i, j,
                                 endRow, columns);
            }
        }
    }

    [[gnu::always_inline]] static void subtractPlainly(const Number* left, int leftStride,
                                                       int depth, Number* target, int targetStride,
                                                       int rows, int columns)
    {
        for (int j = 0; j < columns; ++j) {
            Number* const out = target + at(0, j, targetStride);
            for (int k = 0; k < depth; ++k) {
                const Number* const in = left + at(0, k, leftStride);
                const Number factor = in[j];
                for (int i = j; i < rows; ++i)
                    out[i] -= in[i] * factor;
            }
        }
    }

    /// The rows below a triangle of `count` columns, solved with it: as many at a time as a vector
    /// holds, all their columns in registers.
    template <int count>
    [[gnu::always_inline]] static void solveRows(Number* panel, int height, int begin,
                                                 const Number (&inverse)[narrowPanel])
    {
        Number factor[count][count] = {};
        for (int j = 0; j < count; ++j)
            for (int k = 0; k < j; ++k)
                factor[j][k] = panel[at(begin + j, begin + k, height)];
        int i = begin + count;
        for (; i + lanes <= height; i += lanes) {
            Vector x[count];
#pragma GCC unroll 8
            for (int j = 0; j < count; ++j) {
                load(x[j], panel + at(i, begin + j, height));
#pragma GCC unroll 8
                for (int k = 0; k < j; ++k)
                    x[j] -= x[k] * factor[j][k];
                x[j] *= inverse[j];
                store(panel + at(i, begin + j, height), x[j]);
            }
        }
        for (; i < height; ++i)
            for (int j = 0; j < count; ++j) {
                Number& x = panel[at(i, begin + j, height)];
                for (int k = 0; k < j; ++k)
                    x -= panel[at(i, begin + k, height)] * factor[j][k];
                x *= inverse[j];
            }
    }

    [[gnu::always_inline]] static int eliminateNarrow(Number* panel, int height, int begin, int end,
                                                      const Number* diagonal)
    {
        int replaced = 0;
        Number inverse[narrowPanel] = {};
        for (int j = begin; j < end; ++j) {
            Number* const column = panel + at(0, j, height);
            Number pivot = column[j];
            if (!(pivot > lostPivot * diagonal[j])) {
                pivot = diagonal[j] > Number(0) ? diagonal[j] : Number(1);
                ++replaced;
            }
            column[j] = std::sqrt(pivot);
            inverse[j - begin] = Number(1) / column[j];
            for (int i = j + 1; i < end; ++i)
                column[i] *= inverse[j - begin];
            for (int k = j + 1; k < end; ++k) {
                Number* const other = panel + at(0, k, height);
                for (int i = k; i < end; ++i)
                    other[i] -= column[i] * column[k];
            }
        }
        switch (end - begin) {
        case 1:
            solveRows<1>(panel, height, begin, inverse);
            break;
        case 2:
            solveRows<2>(panel, height, begin, inverse);
            break;
        case 3:
            solveRows<3>(panel, height, begin, inverse);
            break;
        case 4:
            solveRows<4>(panel, height, begin, inverse);
            break;
        case 5:
            solveRows<5>(panel, height, begin, inverse);
            break;
        case 6:
            solveRows<6>(panel, height, begin, inverse);
            break;
        case 7:
            solveRows<7>(panel, height, begin, inverse);
            break;
        default:
            solveRows<8>(panel, height, begin, inverse);
        }
        return replaced;
    }

    [[gnu::always_inline]] static void solveForward(const Number* panel, int height, int columns,
                                                    Number* own, Number* below)
    {
        const int rows = height - columns;
        int j = 0;
        // Two columns at a time halve the passes over `below`.
        for (; j + 2 <= columns; j += 2) {
            const Number* const first = panel + at(0, j, height);
            const Number* const second = first + height;
            const Number x = own[j] /= first[j];
            const Number y = own[j + 1] = (own[j + 1] - first[j + 1] * x) / second[j + 1];
            for (int i = j + 2; i < columns; ++i)
                own[i] = own[i] - first[i] * x - second[i] * y;
            for (int i = 0; i < rows; ++i)
                below[i] = below[i] + first[columns + i] * x + second[columns + i] * y;
        }
        if (j == columns)
            return;
        const Number* const last = panel + at(0, j, height);
        const Number x = own[j] /= last[j];
        for (int i = 0; i < rows; ++i)
            below[i] += last[columns + i] * x;
    }

    [[gnu::always_inline]] static void solveBackward(const Number* panel, int height, int columns,
                                                     Number* own, const Number* below)
    {
        // Sums side by side, in a number of their own so that no width changes them: one alone
        // would wait for each addition.
        constexpr int sums = 16;
        using Sums [[gnu::vector_size(sums * sizeof(Number))]] = Number;
        const int rows = height - columns;
        for (int j = columns - 1; j >= 0; --j) {
            const Number* const column = panel + at(0, j, height);
            Sums wide = {};
            int i = 0;
            for (; i + sums <= rows; i += sums) {
                Sums factors;
                Sums values;
                std::memcpy(&factors, column + columns + i, sizeof factors);
                std::memcpy(&values, below + i, sizeof values);
                wide += factors * values;
            }
            Number sum[sums];
            std::memcpy(sum, &wide, sizeof sum);
            for (int half = sums / 2; half > 0; half /= 2)
                for (int lane = 0; lane < half; ++lane)
                    sum[lane] += sum[lane + half];
            for (; i < rows; ++i)
                sum[0] += column[columns + i] * below[i];
            for (int k = j + 1; k < columns; ++k)
                sum[0] += column[k] * own[k];
            own[j] = (own[j] - sum[0]) / column[j];
        }
    }

    [[gnu::always_inline]] static void add(const Number* values, std::size_t count, Number* sums)
    {
        for (std::size_t i = 0; i < count; ++i)
            sums[i] += values[i];
    }
};

} // namespace unfold3d
