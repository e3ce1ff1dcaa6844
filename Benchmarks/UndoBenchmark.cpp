// Taking back cuts and sews of 1 to 10 000 edges on a sheet of a million triangles, and doing them
// again.
//
// Each round cuts, or cuts and sews, through the undo stack. "ratio" is the time of the undo, or of
// the redo, by that of the undoable operation in the same round. surfaces: 0 for a plain geometry
// as it stands, else a shell of as many, through its compact mesh. redo: which of the two is timed.

#include "RatioTimer.h"
#include "SeamEdges.h"
#include "ShellMeshes.h"

#include "UVUtils/model/kyUVUtils.h"
#include "UndoUtils/kyUndoStack.h"

namespace
{

constexpr unsigned int triangleCount = 1'000'000;
constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

/// A sheet, which only a shell's compact mesh is made for.
struct Sheet
{
    explicit Sheet(unsigned int surfaceCount)
        : node(surfaceCount == 0
                   ? bench::sheetPlain(triangleCount)
                   : bench::sheetShell(triangleCount, surfaceCount, bench::WeldedBorders))
    {
        kyUVUtils::setUseCompactMesh(false);
    }
    ~Sheet()
    {
        stack.clear();
        kyUVUtils::setUseCompactMesh(true);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    void select(unsigned int edgeCount) const
    {
        bench::selectEdges(node, bench::seamEdges(node, edgeCount));
    }
    void cut() const { kyUVUtils::cutAlongEdgesUndo({node}, slot); }
    void sew() const { kyUVUtils::sewAlongEdgesUndo({node}, slot); }
    void reset() const
    {
        while (stack.undo()) {
        }
        stack.clear();
    }

    osg::RefPtr<osg::Node> node;
    kyUndoStack& stack = kyUndoStack::get(0);
};

template <class Operation>
void timeUndoOrRedo(benchmark::State& state, bench::RatioTimer& timer, const Sheet& sheet,
                    const Operation& operation)
{
    if (state.range(2) == 0)
        timer.run(
            state, [&] { sheet.stack.undo(); }, operation);
    else
        timer.run(
            state, [&] { sheet.stack.redo(); }, operation, [&] { sheet.stack.undo(); });
}

void cut(benchmark::State& state)
{
    const Sheet sheet(static_cast<unsigned int>(state.range(1)));
    bench::RatioTimer timer;
    for (auto _ : state) {
        sheet.select(static_cast<unsigned int>(state.range(0)));
        timeUndoOrRedo(state, timer, sheet, [&] { sheet.cut(); });
        sheet.reset();
    }
    timer.report(state);
}

void sew(benchmark::State& state)
{
    const Sheet sheet(static_cast<unsigned int>(state.range(1)));
    bench::RatioTimer timer;
    for (auto _ : state) {
        sheet.select(static_cast<unsigned int>(state.range(0)));
        sheet.cut();
        sheet.select(static_cast<unsigned int>(state.range(0)));
        timeUndoOrRedo(state, timer, sheet, [&] { sheet.sew(); });
        sheet.reset();
    }
    timer.report(state);
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"edges", "surfaces", "redo"})
        ->ArgsProduct({{1, 100, 10'000}, {0, 100}, {0, 1}})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(cut)->Apply(sizes);
BENCHMARK(sew)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
