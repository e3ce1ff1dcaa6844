#include "Unfold3D/linear/DenseKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace unfold3d
{

namespace
{

/// A tile of the product: its accumulators fill the sixteen registers of 128 bits.
constexpr int tileRows = 8;
constexpr int tileColumns = 4;
/// Depth of one pass: a strip of 8 rows is then 8 KiB and stays in the first cache with its
/// partner.
constexpr int passDepth = 128;
/// Rows whose strips are used again for every strip of columns: 64 KiB, within the second cache.
constexpr int passRows = 64;
/// Up to here plain loops over columns are quicker than packing.
constexpr int plainDepth = 3;
constexpr int plainRows = 12;
/// Columns that are eliminated one by one; wider panels are halved and use the tiles.
constexpr int narrowPanel = 8;
/// A pivot that lost all but this share of its size holds nothing but rounding errors.
constexpr double lostPivot = 1e-14;

using Narrow [[gnu::vector_size(16)]] = double;
using Wide [[gnu::vector_size(32)]] = double;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

std::size_t at(int row, int column, int stride)
{
    return at(row) + at(column) * at(stride);
}

/// tile [8 x 4] = left [depth][8] times right [depth][8], of which the first four are used.
template <class Vector>
[[gnu::always_inline]] inline void multiplyTile(const double* left, const double* right, int depth,
                                                double* tile)
{
    constexpr int lanes = static_cast<int>(sizeof(Vector) / sizeof(double));
    constexpr int vectors = tileRows / lanes;
    Vector sum[tileColumns][vectors] = {};
    for (int k = 0; k < depth; ++k) {
        Vector column[vectors];
        for (int v = 0; v < vectors; ++v)
            std::memcpy(&column[v], left + v * lanes, sizeof(Vector));
        for (int j = 0; j < tileColumns; ++j)
            for (int v = 0; v < vectors; ++v)
                sum[j][v] += column[v] * right[j];
        left += tileRows;
        right += tileRows;
    }
    std::memcpy(tile, sum, sizeof sum);
}

void multiplyTileBaseline(const double* left, const double* right, int depth, double* tile)
{
    multiplyTile<Narrow>(left, right, depth, tile);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void multiplyTileWide(const double* left, const double* right, int depth,
                                              double* tile)
{
    multiplyTile<Wide>(left, right, depth, tile);
}

bool hasWideVectors()
{
    return __builtin_cpu_supports("avx2") != 0;
}
#else
void multiplyTileWide(const double* left, const double* right, int depth, double* tile)
{
    multiplyTile<Narrow>(left, right, depth, tile);
}

bool hasWideVectors()
{
    return false;
}
#endif

void subtractPlainly(const double* left, int leftStride, int depth, double* target,
                     int targetStride, int rows, int columns)
{
    for (int j = 0; j < columns; ++j) {
        double* const out = target + at(0, j, targetStride);
        for (int k = 0; k < depth; ++k) {
            const double* const in = left + at(0, k, leftStride);
            const double factor = in[j];
            for (int i = j; i < rows; ++i)
                out[i] -= in[i] * factor;
        }
    }
}

} // namespace

DenseKernels::DenseKernels(Width width)
    : tileProduct_(width == Width::Wide && hasWideVectors() ? multiplyTileWide
                                                            : multiplyTileBaseline)
{}

/// Strips of 8 rows one after the other, each [depth][8], the last filled up with zeros.
void DenseKernels::pack(const double* left, int leftStride, int depth, int rows)
{
    const int strips = (rows + tileRows - 1) / tileRows;
    packed_.resize(std::max(packed_.size(), at(strips) * tileRows * at(depth)));
    double* out = packed_.data();
    for (int strip = 0; strip < strips; ++strip) {
        const int first = strip * tileRows;
        const int count = std::min(tileRows, rows - first);
        for (int k = 0; k < depth; ++k, out += tileRows) {
            const double* const in = left + at(first, k, leftStride);
            if (count == tileRows) {
                std::memcpy(out, in, tileRows * sizeof(double));
            } else {
                std::copy_n(in, count, out);
                std::fill(out + count, out + tileRows, 0.0);
            }
        }
    }
}

void DenseKernels::subtractOwnProduct(const double* left, int leftStride, int depth, double* target,
                                      int targetStride, int rows, int columns)
{
    if (depth <= plainDepth || rows <= plainRows) {
        subtractPlainly(left, leftStride, depth, target, targetStride, rows, columns);
        return;
    }
    for (int k = 0; k < depth; k += passDepth) {
        const int pass = std::min(passDepth, depth - k);
        pack(left + at(0, k, leftStride), leftStride, pass, rows);
        for (int firstRow = 0; firstRow < rows; firstRow += passRows) {
            const int endRow = std::min(rows, firstRow + passRows);
            for (int j = 0; j < std::min(columns, endRow); j += tileColumns) {
                const int endColumn = std::min(columns, j + tileColumns);
                const double* const right =
                    packed_.data() + at(j / tileRows) * tileRows * at(pass) + j % tileRows;
                for (int i = std::max(firstRow, j / tileRows * tileRows); i < endRow; i += tileRows)
                {
                    alignas(32) double tile[tileRows * tileColumns];
                    tileProduct_(packed_.data() + at(i) * at(pass), right, pass, tile);
                    if (i >= endColumn && i + tileRows <= endRow) {
                        for (int c = j; c < endColumn; ++c)
                            for (int r = 0; r < tileRows; ++r)
                                target[at(i + r, c, targetStride)] -= tile[(c - j) * tileRows + r];
                        continue;
                    }
                    for (int c = j; c < endColumn; ++c)
                        for (int r = std::max(i, c); r < std::min(endRow, i + tileRows); ++r)
                            target[at(r, c, targetStride)] -= tile[(c - j) * tileRows + r - i];
                }
            }
        }
    }
}

int DenseKernels::factorise(double* panel, int height, int columns,
                            std::span<const double> diagonal)
{
    return factoriseRange(panel, height, 0, columns, diagonal);
}

int DenseKernels::factoriseRange(double* panel, int height, int begin, int end,
                                 std::span<const double> diagonal)
{
    if (end - begin > narrowPanel) {
        const int middle = begin + (end - begin + narrowPanel) / 2 / narrowPanel * narrowPanel;
        int replaced = factoriseRange(panel, height, begin, middle, diagonal);
        subtractOwnProduct(panel + at(middle, begin, height), height, middle - begin,
                           panel + at(middle, middle, height), height, height - middle,
                           end - middle);
        replaced += factoriseRange(panel, height, middle, end, diagonal);
        return replaced;
    }
    int replaced = 0;
    for (int j = begin; j < end; ++j) {
        double* const column = panel + at(0, j, height);
        double pivot = column[j];
        if (!(pivot > lostPivot * diagonal[at(j)])) {
            pivot = diagonal[at(j)] > 0.0 ? diagonal[at(j)] : 1.0;
            ++replaced;
        }
        column[j] = std::sqrt(pivot);
        const double inverse = 1.0 / column[j];
        for (int i = j + 1; i < height; ++i)
            column[i] *= inverse;
        for (int k = j + 1; k < end; ++k) {
            double* const other = panel + at(0, k, height);
            const double factor = column[k];
            for (int i = k; i < height; ++i)
                other[i] -= column[i] * factor;
        }
    }
    return replaced;
}

} // namespace unfold3d
