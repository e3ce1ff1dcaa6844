#include "Unfold3D/linear/DenseKernels.h"

#include "Unfold3D/linear/DenseLoops.h"

namespace unfold3d
{

namespace
{

/// Up to here plain loops over columns are quicker than packing.
constexpr int plainDepth = 3;
constexpr int plainRows = 12;

// The loops are inlined into functions that are compiled for one width of vectors each.
// NOLINTBEGIN(bugprone-macro-parentheses): attributes can't stand in parentheses.
#define KYUV_DENSE_LOOPS(name, attributes, bytes, tileColumns)                                     \
    template <class Number>                                                                        \
    struct name                                                                                    \
    {                                                                                              \
        using Loops = DenseLoops<Number, bytes, tileColumns>;                                      \
        attributes static int eliminateNarrow(Number* panel, int height, int begin, int end,       \
                                              const Number* diagonal)                              \
        {                                                                                          \
            return Loops::eliminateNarrow(panel, height, begin, end, diagonal);                    \
        }                                                                                          \
        attributes static void subtractPlainly(const Number* left, int leftStride, int depth,      \
                                               Number* target, int targetStride, int rows,         \
                                               int columns)                                        \
        {                                                                                          \
            Loops::subtractPlainly(left, leftStride, depth, target, targetStride, rows, columns);  \
        }                                                                                          \
        attributes static void subtractPass(const Number* left, int leftStride, int depth,         \
                                            Number* target, int targetStride, int rows,            \
                                            int columns, Number* packed)                           \
        {                                                                                          \
            Loops::subtractPass(left, leftStride, depth, target, targetStride, rows, columns,      \
                                packed);                                                           \
        }                                                                                          \
        attributes static void solveForward(const Number* panel, int height, int columns,          \
                                            Number* own, Number* below)                            \
        {                                                                                          \
            Loops::solveForward(panel, height, columns, own, below);                               \
        }                                                                                          \
        attributes static void solveBackward(const Number* panel, int height, int columns,         \
                                             Number* own, const Number* below)                     \
        {                                                                                          \
            Loops::solveBackward(panel, height, columns, own, below);                              \
        }                                                                                          \
        attributes static void add(const Number* values, std::size_t count, Number* sums)          \
        {                                                                                          \
            Loops::add(values, count, sums);                                                       \
        }                                                                                          \
        static constexpr DenseLoopTable<Number> table{                                             \
            eliminateNarrow, subtractPlainly, subtractPass, solveForward, solveBackward, add};     \
    };
// NOLINTEND(bugprone-macro-parentheses)

KYUV_DENSE_LOOPS(BaselineLoops, , 16, 2)
#if defined(__x86_64__)
KYUV_DENSE_LOOPS(WideLoops, [[gnu::target("avx2")]], 32, 4)
KYUV_DENSE_LOOPS(WidestLoops, [[gnu::target("avx512f")]], 64, 8)

int widestBytes()
{
    if (__builtin_cpu_supports("avx512f"))
        return 64;
    return __builtin_cpu_supports("avx2") ? 32 : 16;
}
#else
template <class Number>
using WideLoops = BaselineLoops<Number>;
template <class Number>
using WidestLoops = BaselineLoops<Number>;

int widestBytes()
{
    return 16;
}
#endif

} // namespace

template <class Number>
DenseKernels<Number>::DenseKernels(Width width) : loops_(&BaselineLoops<Number>::table)
{
    const int bytes = widestBytes();
    if (width >= Width::Wide && bytes >= 32)
        loops_ = &WideLoops<Number>::table;
    if (width >= Width::Widest && bytes >= 64)
        loops_ = &WidestLoops<Number>::table;
}

template <class Number>
void DenseKernels<Number>::subtractOwnProduct(const Number* left, int leftStride, int depth,
                                              Number* target, int targetStride, int rows,
                                              int columns)
{
    if (depth <= plainDepth || rows <= plainRows) {
        loops_->subtractPlainly(left, leftStride, depth, target, targetStride, rows, columns);
        return;
    }
    constexpr std::size_t longestStrip = 64;
    const auto packed = (static_cast<std::size_t>(rows) + longestStrip) * passDepth;
    if (packed_.size() < packed)
        packed_.resize(packed);
    for (int k = 0; k < depth; k += passDepth)
        loops_->subtractPass(left + static_cast<std::ptrdiff_t>(k) * leftStride, leftStride,
                             std::min(passDepth, depth - k), target, targetStride, rows, columns,
                             packed_.data());
}

template <class Number>
int DenseKernels<Number>::factorise(Number* panel, int height, int columns,
                                    std::span<const Number> diagonal)
{
    return factoriseRange(panel, height, 0, columns, diagonal);
}

template <class Number>
int DenseKernels<Number>::factoriseRange(Number* panel, int height, int begin, int end,
                                         std::span<const Number> diagonal)
{
    if (end - begin <= narrowPanel)
        return loops_->eliminateNarrow(panel, height, begin, end, diagonal.data());
    const int middle = begin + (end - begin + narrowPanel) / 2 / narrowPanel * narrowPanel;
    const auto column = [&](int j) { return panel + static_cast<std::ptrdiff_t>(j) * height; };
    int replaced = factoriseRange(panel, height, begin, middle, diagonal);
    subtractOwnProduct(column(begin) + middle, height, middle - begin, column(middle) + middle,
                       height, height - middle, end - middle);
    replaced += factoriseRange(panel, height, middle, end, diagonal);
    return replaced;
}

template <class Number>
void DenseKernels<Number>::solveForward(const Number* panel, int height, int columns, Number* own,
                                        Number* below) const
{
    loops_->solveForward(panel, height, columns, own, below);
}

template <class Number>
void DenseKernels<Number>::solveBackward(const Number* panel, int height, int columns, Number* own,
                                         const Number* below) const
{
    loops_->solveBackward(panel, height, columns, own, below);
}

template <class Number>
void DenseKernels<Number>::add(const Number* values, std::size_t count, Number* sums) const
{
    loops_->add(values, count, sums);
}

template class DenseKernels<double>;
template class DenseKernels<float>;

} // namespace unfold3d
