#include "commands/Commands.h"

#include "cli/TransferArguments.h"
#include "commands/SceneWork.h"
#include "document/Format.h"
#include "scene/CornerUVs.h"
#include "scene/TransferOperation.h"
#include "scene/TransferSource.h"
#include "solver/LibraryScope.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace uvtool
{
namespace
{

/// What was done to a geometry of the document, or to a shell.
struct Transferred
{
    std::vector<TransferCounts> counts; ///< [slot of those that were carried over]
    std::size_t splitPolygons = 0;
    double seconds = 0.0;
};

/// UVs of the target on their way into its file.
struct CornerValues
{
    std::vector<Vec2f> before;
    std::vector<Vec2f> after;
    std::size_t keptTriangles = 0;

    void keep(std::size_t triangle)
    {
        for (std::size_t i = 3 * triangle; i < 3 * triangle + 3; ++i)
            before[i] = after[i] = {};
        ++keptTriangles;
    }
};

std::vector<Vec2f> valuesBefore(const Document& document, const SceneGeometry& scene,
                                std::size_t slot)
{
    std::vector<Vec2f> before;
    before.reserve(scene.triangles.size());
    for (const SceneGeometry::Surface& surface : scene.surfaces) {
        if (!surface.fault.empty())
            continue;
        const std::vector<Vec2f> own = documentCornerUVs(document.geometries[surface.number], slot);
        before.insert(before.end(), own.begin(), own.end());
    }
    return before;
}

/// Each value is one of the source or a mean of some, so there is nothing beyond these.
void throwUnlessWithin(const UVBox& bounds, std::span<const Vec2f> values)
{
    for (std::size_t k = 0; k < 2; ++k) {
        const float rounding =
            1e-5F * std::max({1.0F, std::abs(bounds.lo[k]), std::abs(bounds.hi[k])});
        for (const Vec2f& uv : values)
            if (!(uv[k] >= bounds.lo[k] - rounding && uv[k] <= bounds.hi[k] + rounding))
                throw CommandError(Unsound, "the result failed its check, nothing was written: a "
                                            "UV of the target lies outside of the source's");
    }
}

class TransferWork
{
public:
    explicit TransferWork(Task& task) : task_(task) {}

    void readSource()
    {
        const TransferOptions& options = task_.options.transfer;
        task_.stage("read", 0.05, [&] {
            Document document = readDocument(options.source);
            const std::vector<std::size_t> numbers =
                chooseGeometries(document, options.geometry, "--source-geometry");
            source_.emplace(std::move(document), numbers);
        });
        for (const std::string& warning : source_->document().warnings)
            task_.console.warning(options.source.string() + ": " + warning);
        task_.report.transfer = {options.source.string(),   nameOf(options.method),
                                 source_->numbers().size(), source_->triangleCount(),
                                 source_->size(),           {}};
        for (const std::size_t slot : options.slots)
            throwUnlessMapped(slot);
    }

    void transfer()
    {
        LibraryLog log;
        const LibraryScope scope(task_.console, log);
        frame_ =
            transferFrame(source_->document(), source_->numbers(), task_.document, task_.chosen);
        for (const std::size_t slot : task_.options.transfer.slots)
            transferSlot(slot, log);
    }

    void look()
    {
        const TransferOptions& options = task_.options.transfer;
        for (const std::size_t slot : options.slots) {
            lookAtSource(slot);
            std::size_t i = 0;
            forEachScene(task_, slot, [&](const SceneGeometry& scene, const SceneIslands& found) {
                note(scene, found, slot, transferred_[i++]);
            });
        }
        for (std::size_t i = 0; i < transferred_.size(); ++i) {
            task_.report.geometries[i].transfers = transferred_[i].counts;
            task_.report.geometries[i].splitPolygons = transferred_[i].splitPolygons;
            task_.report.geometries[i].seconds = transferred_[i].seconds;
        }
        task_.report.check = checkDocumentLayout(layout_);
    }

    void writeFiles()
    {
        task_.stage("write", 0.1, [&] { writeDocument(task_.document, task_.options.output); });
        task_.draw(layout_, {});
    }

private:
    void throwUnlessMapped(std::size_t slot) const
    {
        if (source_->boundsOf(slot).isEmpty())
            throw CommandError(Failed, task_.report.transfer->source +
                                           ": nothing to transfer, there are no UVs in slot " +
                                           std::to_string(slot));
    }

    void transferSlot(std::size_t slot, const LibraryLog& log)
    {
        std::size_t next = 0;
        const auto transferTo = [&](std::span<const std::size_t> numbers, bool isShell) {
            task_.throwIfCancelled();
            const Stopwatch watch;
            const SceneGeometry target =
                makeTransferTarget(task_.document, numbers, slot, isShell, frame_);
            if (next == transferred_.size())
                transferred_.emplace_back();
            Transferred& done = transferred_[next++];
            carryOverTo(slot, target, log, done);
            done.seconds += watch.seconds();
        };
        if (task_.options.common.shell) {
            transferTo(task_.chosen, true);
            return;
        }
        for (const std::size_t& number : task_.chosen)
            transferTo(std::span(&number, 1), false);
    }

    void carryOverTo(std::size_t slot, const SceneGeometry& target, const LibraryLog& log,
                     Transferred& done)
    {
        TransferCounts& counts = done.counts.emplace_back();
        counts.slot = slot;
        const auto [part, nearest] = partFor(target, counts);
        counts.distance = std::ldexp(nearest.distance, -frame_.exponent());
        carryOver(part->operationFor(slot, task_.options.transfer.method), target, log);
        target.forEachSurface([&counts](const osg::GeometryPtr& surface) {
            counts.newVertices += surface->getPositions()->getSize();
        });
        counts.newVertices -= target.vertexCount;
        write(slot, *part, target, nearest, done);
    }

    /// The one of its name, if it lies on that, for others may touch both; else the whole source.
    std::pair<SourcePart*, NearestTriangles> partFor(const SceneGeometry& target,
                                                     TransferCounts& counts)
    {
        if (const std::optional<std::size_t> namesake = namesakeOf(target)) {
            SourcePart& part = source_->single(*namesake, frame_);
            NearestTriangles nearest = part.nearestTo(target);
            if (part.isNear(nearest)) {
                counts.sourceGeometry = *namesake;
                return {&part, std::move(nearest)};
            }
        }
        SourcePart& whole = source_->whole(frame_);
        return {&whole, whole.nearestTo(target)};
    }

    std::optional<std::size_t> namesakeOf(const SceneGeometry& target) const
    {
        if (target.isShell || task_.options.transfer.isByPlace)
            return std::nullopt;
        return source_->namesakeOf(task_.document, target.surfaces.front().number);
    }

    /// operation  null where there is nothing to carry over
    void carryOver(TransferOperation* operation, const SceneGeometry& target, const LibraryLog& log)
    {
        const double share =
            1.0 / static_cast<double>(task_.options.transfer.slots.size() *
                                      (task_.options.common.shell ? 1 : task_.chosen.size()));
        const auto advance = [&](float part) {
            task_.advance(share * static_cast<double>(part));
            task_.throwIfCancelled();
        };
        if (operation == nullptr)
            advance(1.0F);
        else if (!operation->writeTo(target, advance))
            throw CommandError(Failed, task_.report.input + ": the library can't write geometry " +
                                           std::to_string(target.surfaces.front().number) +
                                           (log.errors.empty() ? "" : ": " + log.errors.back()));
    }

    void write(std::size_t slot, const SourcePart& part, const SceneGeometry& target,
               const NearestTriangles& nearest, Transferred& done)
    {
        CornerValues values{valuesBefore(task_.document, target, slot),
                            surfaceCornerUVs(target, slot)};
        const UVBox bounds = source_->boundsOf(slot);
        for (std::size_t t = 0; t < target.triangleCount(); ++t) {
            if (part.isMapped(nearest.triangles[t], slot))
                throwUnlessWithin(bounds, std::span(values.after).subspan(3 * t, 3));
            else
                values.keep(t);
        }
        done.counts.back().trianglesWithoutUVs = values.keptTriangles;
        done.splitPolygons +=
            writeCornerUVs(task_.document, target, slot, values.before, values.after,
                           traitsOfFormat(task_.options.output).vRunsDownward);
    }

    void lookAtSource(std::size_t slot)
    {
        const Document& document = source_->document();
        const std::vector<std::size_t>& numbers = source_->numbers();
        const SceneGeometry scene = numbers.size() > 1
                                        ? makeShellScene(document, numbers, slot)
                                        : makePlainScene(document, numbers.front(), slot);
        const SceneIslands found = findSceneIslands(document, scene, slot, task_.console);
        std::size_t unmapped = 0;
        for (const auto& [number, triangle] : scene.sourceOfTriangle)
            unmapped += document.geometries[number].isMapped(triangle, slot) ? 0U : 1U;
        task_.report.transfer->slots.push_back(
            {slot, found.islands.size(), found.borderEdges, unmapped});
    }

    /// Adds what has become of a slot, for the first one to a new entry of the report.
    void note(const SceneGeometry& scene, const SceneIslands& found, std::size_t slot,
              Transferred& done)
    {
        const auto counts =
            std::find_if(done.counts.begin(), done.counts.end(),
                         [slot](const TransferCounts& c) { return c.slot == slot; });
        counts->islands = found.islands.size();
        counts->borderEdges = found.borderEdges;
        if (slot != task_.options.common.slot)
            return;
        GeometryReport entry = describe(task_.document, scene, found);
        entry.islandList.reset();
        entry.result = Success;
        task_.report.geometries.push_back(std::move(entry));
        layout_.add(sceneLayout(task_.document, scene, found, slot, AllIslands));
    }

    Task& task_;
    std::optional<TransferSource> source_;
    SolverFrame frame_{{}};
    std::vector<Transferred> transferred_; ///< [scene of the target]
    DocumentLayout layout_;                ///< of the first slot, as it stands in the document
};

void transfer(Task& task)
{
    task.read();
    TransferWork work(task);
    work.readSource();
    task.probeOutputs();
    task.stage("transfer", 0.5, [&] { work.transfer(); });
    task.stage("look", 0.3, [&] { work.look(); });
    work.writeFiles();
}

} // namespace

ExitStatus runTransfer(const Options& options, Console& console)
{
    Task task("transfer", options, console);
    task.run([&] { transfer(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool
