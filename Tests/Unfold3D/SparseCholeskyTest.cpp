#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/linear/DenseKernels.h"
#include "Unfold3D/linear/EliminationOrder.h"
#include "Unfold3D/linear/EliminationTree.h"
#include "Unfold3D/linear/RefinedCholesky.h"

#include <Eigen/Cholesky>
#include <Eigen/Core>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

using namespace unfold3d;

namespace
{

using Pair = std::array<int, 2>;

VertexGraph gridGraph(int width, int height)
{
    std::vector<Pair> pairs;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int v = y * width + x;
            if (x + 1 < width)
                pairs.push_back({v, v + 1});
            if (y + 1 < height)
                pairs.push_back({v, v + width});
            if (x + 1 < width && y + 1 < height)
                pairs.push_back({v, v + width + 1});
        }
    return graphOfPairs(pairs, width * height);
}

VertexGraph randomGraph(int nodes, int pairs, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> node(0, nodes - 1);
    std::vector<Pair> list(static_cast<std::size_t>(pairs));
    for (Pair& pair : list)
        pair = {node(random), node(random)};
    return graphOfPairs(list, nodes);
}

/// A matrix on the graph with random entries and a diagonal that makes it positive definite.
BlockMatrix randomMatrix(const VertexGraph& graph, const SymbolicCholesky& symbolic, int blockSize,
                         unsigned seed)
{
    std::size_t mostNeighbours = 0;
    for (int v = 0; v < graph.size(); ++v)
        mostNeighbours = std::max<std::size_t>(mostNeighbours, graph.of(v).size());
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> entry(-1.0, 1.0);
    BlockMatrix matrix(symbolic, blockSize);
    for (double& value : matrix.lower)
        value = entry(random);
    const std::size_t square = blockSize == 2 ? 4 : 1;
    for (std::size_t at = 0; at < matrix.diagonal.size(); at += square) {
        matrix.diagonal[at] = matrix.diagonal[at + square - 1] =
            1.0 + 2.0 * static_cast<double>(mostNeighbours);
        if (blockSize == 2)
            matrix.diagonal[at + 1] = matrix.diagonal[at + 2] = 0.5 * entry(random);
    }
    return matrix;
}

Eigen::MatrixXd dense(const SymbolicCholesky& symbolic, const BlockMatrix& matrix)
{
    const int b = matrix.blockSize;
    const int n = symbolic.size();
    const auto at = [b](int block, int row, int column) {
        const int place = (block * b + row) * b + column;
        return static_cast<std::size_t>(place);
    };
    Eigen::MatrixXd result = Eigen::MatrixXd::Zero(n * b, n * b);
    for (int j = 0; j < n; ++j) {
        for (int r = 0; r < b; ++r)
            for (int c = 0; c < b; ++c)
                result(j * b + r, j * b + c) = matrix.diagonal[at(j, r, c)];
        for (int e = symbolic.columnOffsets[static_cast<std::size_t>(j)];
             e < symbolic.columnOffsets[static_cast<std::size_t>(j) + 1]; ++e)
        {
            const int i = symbolic.entryRows[static_cast<std::size_t>(e)];
            for (int r = 0; r < b; ++r)
                for (int c = 0; c < b; ++c)
                    result(i * b + r, j * b + c) = result(j * b + c, i * b + r) =
                        matrix.lower[at(e, r, c)];
        }
    }
    return result;
}

void expectSolves(const VertexGraph& graph, int blockSize, unsigned seed)
{
    const SymbolicCholesky symbolic = analyse(graph, RunControl());
    const BlockMatrix matrix = randomMatrix(graph, symbolic, blockSize, seed);
    SparseCholesky cholesky(symbolic);
    RunControl control;
    EXPECT_EQ(cholesky.factorise(matrix, control), 0);

    const Eigen::MatrixXd reference = dense(symbolic, matrix);
    std::srand(seed);
    const Eigen::VectorXd right = Eigen::VectorXd::Random(reference.rows());
    std::vector<double> x(right.data(), right.data() + right.size());
    cholesky.solve(x);
    const Eigen::VectorXd expected = reference.llt().solve(right);
    for (Eigen::Index i = 0; i < expected.size(); ++i)
        ASSERT_NEAR(x[static_cast<std::size_t>(i)], expected[i], 1e-12);
    if (blockSize == 1)
        return;
    std::copy(right.begin(), right.end(), x.begin());
    RefinedCholesky(symbolic).solve(matrix, x, 1e-10, control);
    for (Eigen::Index i = 0; i < expected.size(); ++i)
        ASSERT_NEAR(x[static_cast<std::size_t>(i)], expected[i], 1e-8);
}

TEST(SparseCholesky, SolvesLikeADenseFactorisation)
{
    for (const VertexGraph& graph :
         {gridGraph(31, 23) /* large enough to dissect */, randomGraph(150, 900, 3)})
        for (const int blockSize : {1, 2})
            expectSolves(graph, blockSize, 5);
}

RC_GTEST_PROP(SparseCholesky, SolvesOnRandomGraphs, ())
{
    const int nodes = *rc::gen::inRange(1, 60);
    const int pairs = *rc::gen::inRange(0, 150); // also none
    const auto seed = *rc::gen::arbitrary<unsigned>();
    for (const int blockSize : {1, 2})
        expectSolves(randomGraph(nodes, pairs, seed), blockSize, seed);
}

TEST(SparseCholesky, ReplacesThePivotsOfASingularMatrix)
{
    // The Laplacian of a grid: constants cost nothing.
    const VertexGraph graph = gridGraph(9, 9);
    const SymbolicCholesky symbolic = analyse(graph, RunControl());
    BlockMatrix matrix(symbolic, 1);
    std::fill(matrix.lower.begin(), matrix.lower.end(), -1.0);
    for (int v = 0; v < graph.size(); ++v)
        matrix.diagonal[static_cast<std::size_t>(symbolic.newOfOld[static_cast<std::size_t>(v)])] =
            static_cast<double>(graph.of(v).size());
    SparseCholesky cholesky(symbolic);
    RunControl control;
    EXPECT_EQ(cholesky.factorise(matrix, control), 1);
    std::vector<double> x(81, 0.0);
    x.front() = 1.0;
    x.back() = -1.0;
    const std::vector<double> right = x;
    cholesky.solve(x);
    const Eigen::Map<const Eigen::VectorXd> solution(x.data(), 81);
    const Eigen::Map<const Eigen::VectorXd> rightSide(right.data(), 81);
    EXPECT_LT((dense(symbolic, matrix) * solution - rightSide).norm(), 1e-10);
}

TEST(RefinedCholesky, SolvesWhatShortNumbersCannotHold)
{
    // Chains of stiff springs that a soft one holds each: the soft ones are lost beside them.
    constexpr int length = 40;
    for (const int chains : {1, 20}) {
        SCOPED_TRACE(chains);
        std::vector<Pair> links;
        for (int node = 1; node < chains * length; ++node)
            if (node % length != 0)
                links.push_back({node - 1, node});
        const SymbolicCholesky symbolic =
            analyse(graphOfPairs(links, chains * length), RunControl());
        BlockMatrix matrix(symbolic, 2);
        std::vector<double> x(static_cast<std::size_t>(2 * chains * length), 1.0);
        for (int node = 0; node < chains * length; ++node) {
            const auto column = [&](int of) {
                return static_cast<std::size_t>(symbolic.newOfOld[static_cast<std::size_t>(of)]);
            };
            for (const std::size_t c : {0U, 3U}) {
                double& own = matrix.diagonal[4 * column(node) + c];
                if (node % length == 0) {
                    own += 1.0;
                    continue;
                }
                own += 1e9;
                matrix.diagonal[4 * column(node - 1) + c] += 1e9;
                const int link = symbolic.entryOf(static_cast<int>(column(node - 1)),
                                                  static_cast<int>(column(node)));
                matrix.lower[4 * static_cast<std::size_t>(link) + c] = -1e9;
            }
        }
        // Pulls of 1 at each node of a chain, that one spring of stiffness 1 bears.
        RefinedCholesky(symbolic).solve(matrix, x, 1e-3, RunControl());
        for (const double value : x)
            ASSERT_NEAR(value, length, 1e-3);
    }
}

TEST(SymbolicCholesky, CountsTheEntriesOfTheFactor)
{
    for (const VertexGraph& graph : {gridGraph(12, 10), randomGraph(90, 300, 8)}) {
        const int n = graph.size();
        const OrderedGraph ordered = followElimination(graph, minimumDegreeOrder(graph));
        // Elimination done naively: the neighbours above a column all meet afterwards.
        Eigen::MatrixXi filled = Eigen::MatrixXi::Zero(n, n);
        for (int j = 0; j < n; ++j)
            for (const int i : ordered.graph.of(j))
                filled(i, j) = 1;
        for (int j = 0; j < n; ++j) {
            int count = 1;
            int parent = -1;
            for (int i = n - 1; i > j; --i) {
                if (filled(i, j) == 0)
                    continue;
                ++count;
                parent = i;
                for (int k = j + 1; k < n; ++k)
                    if (k != i && filled(k, j) != 0)
                        filled(i, k) = 1;
            }
            ASSERT_EQ(ordered.tree.count[static_cast<std::size_t>(j)], count);
            ASSERT_EQ(ordered.tree.parent[static_cast<std::size_t>(j)], parent);
        }
    }
}

TEST(SymbolicCholesky, OrdersSaveWorkAndAreTheSameEveryTime)
{
    // The larger one is parted before it is dissected.
    for (const int side : {60, 150}) {
        const VertexGraph graph = gridGraph(side, side);
        std::vector<int> rowByRow(static_cast<std::size_t>(graph.size()));
        std::iota(rowByRow.begin(), rowByRow.end(), 0);
        const double plain = followElimination(graph, rowByRow).tree.operations();
        const std::vector<int> dissected = dissectionOrder(graph, RunControl());
        for (const auto& order : {minimumDegreeOrder(graph), dissected}) {
            std::vector<int> sorted = order;
            std::sort(sorted.begin(), sorted.end());
            EXPECT_EQ(sorted, rowByRow);
            EXPECT_LT(followElimination(graph, order).tree.operations(), 30.0 / side * plain);
        }
        EXPECT_EQ(dissected, dissectionOrder(graph, RunControl()));
    }
}

template <class Number>
void expectSameBitsOfAllWidths()
{
    std::mt19937 random(11);
    std::uniform_real_distribution<Number> entry(-1, 1);
    for (const auto& [height, columns] : {std::pair{203, 151}, {40, 6}, {9, 9}, {300, 17}}) {
        std::vector<Number> panel(static_cast<std::size_t>(height * columns));
        std::generate(panel.begin(), panel.end(), [&] { return entry(random); });
        for (int j = 0; j < columns; ++j)
            panel[static_cast<std::size_t>(j * height + j)] = 100;
        const std::vector<Number> diagonal(static_cast<std::size_t>(columns), 100);
        std::vector<std::vector<Number>> results;
        using Kernels = DenseKernels<Number>;
        for (const auto width :
             {Kernels::Width::Baseline, Kernels::Width::Wide, Kernels::Width::Widest})
        {
            Kernels kernels(width);
            std::vector<Number>& result = results.emplace_back(panel);
            EXPECT_EQ(kernels.factorise(result.data(), height, columns, diagonal), 0);
            std::vector<Number> x(static_cast<std::size_t>(height), 1);
            Number* const below = x.data() + columns;
            kernels.solveForward(result.data(), height, columns, x.data(), below);
            kernels.solveBackward(result.data(), height, columns, x.data(), below);
            result.insert(result.end(), x.begin(), x.end());
            EXPECT_EQ(result, results.front());
        }
    }
}

TEST(DenseKernels, AllVectorWidthsGiveTheSameBits)
{
    expectSameBitsOfAllWidths<double>();
    expectSameBitsOfAllWidths<float>();
}

} // namespace
