// Taking back cuts and sews of 1 to 10 000 edges on a sheet of a million triangles, and doing them
// again.
//
// Each round cuts, or cuts and sews, through the undo stack. "ratio" is the time of the undo, or of
// the redo, by that of the undoable operation in the same round. surfaces: 0 for a plain geometry
// as it stands, else a shell of as many, through its compact mesh. redo: which of the two is timed.
//
// A guard around nothing is set against (beside:) 0 a copy of the UVs of all vertices in memory, 1
// one read of them through the facade, which looks at all triangles first, 2 an edit that writes
// them all. A run of a thousand continuous edits of some vertices, which merge, is set
// against the same edits without undo; "grown_bytes" is what the memory in use grew by between the
// first edit and the last.

#include "PeakMemory.h"
#include "RatioTimer.h"
#include "SeamEdges.h"
#include "ShellMeshes.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyUVContinousChangeLazyCommand.h"
#include "UVUtils/undo/kyUVValueChangeUndoGuard.h"
#include "UndoUtils/kyUndoStack.h"

#include <numeric>
#include <vector>

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

kyUVUtils::UVArray uvsOf(const Sheet& sheet)
{
    kyUVUtils::UVArray uvs;
    kyUVUtils::getUVValues(bench::coreOf(sheet.node), sheet.node, slot, uvs);
    return uvs;
}

void guard(benchmark::State& state)
{
    const Sheet sheet(static_cast<unsigned int>(state.range(0)));
    const kyUVUtils::UVArray uvs = uvsOf(sheet);
    bench::RatioTimer timer;
    for (auto _ : state) {
        kyUVUtils::UVArray copy;
        const auto reference = [&] {
            if (state.range(1) == 0)
                copy = uvs;
            else if (state.range(1) == 1)
                copy = uvsOf(sheet);
            else
                kyUVUtils::setUVValues(bench::coreOf(sheet.node), sheet.node, slot, uvs);
            benchmark::DoNotOptimize(copy.data());
        };
        timer.run(
            state, [&] { const kyUVValueChangeUndoGuard guard({sheet.node}, slot); }, reference);
        sheet.stack.clear();
    }
    timer.report(state);
}

void mergedEdits(benchmark::State& state)
{
    constexpr int editCount = 1000;
    const Sheet sheet(static_cast<unsigned int>(state.range(0)));
    const osg::GeometryPtr core = bench::coreOf(sheet.node);
    std::vector<unsigned int> ids(static_cast<std::size_t>(state.range(1)));
    std::iota(ids.begin(), ids.end(), 0U);
    osg::GeoTmpIndexEditInterface(core, kyUVTypes::FreeVertices).assign(ids);
    const kyUVUtils::UVArray uvs(ids.size());
    const auto edit = [&] {
        kyUVUtils::setUVValues(core, sheet.node, slot, ids.data(),
                               static_cast<unsigned int>(ids.size()), uvs);
    };
    using Lazy = kyUVContinousChangeLazyCommand;
    const auto editUndoably = [&] {
        auto* command = new Lazy(core, sheet.node, slot, kyUVTypes::FreeVertices, false, nullptr);
        static_cast<Lazy*>(sheet.stack.add(command))->lazyInit();
        edit();
    };
    bench::RatioTimer timer;
    for (auto _ : state) {
        double before = 0;
        timer.run(
            state,
            [&] {
                for (int i = 0; i < editCount; ++i)
                    editUndoably();
            },
            [&] {
                for (int i = 0; i < editCount; ++i)
                    edit();
            },
            [&] {
                editUndoably();
                before = bench::usedMemoryBytes();
            });
        state.counters["grown_bytes"] = bench::usedMemoryBytes() - before;
        state.counters["steps"] = sheet.stack.count();
        sheet.stack.clear();
    }
    timer.report(state);
}

BENCHMARK(guard)
    ->ArgNames({"surfaces", "beside"})
    ->ArgsProduct({{0, 100}, {0, 1, 2}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(mergedEdits)
    ->ArgNames({"surfaces", "vertices"})
    ->ArgsProduct({{0, 100}, {1000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
