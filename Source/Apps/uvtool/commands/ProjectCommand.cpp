#include "commands/Commands.h"

#include "commands/SceneWork.h"
#include "document/Format.h"
#include "document/OutputFile.h"
#include "document/Transform.h"
#include "projection/Projection.h"
#include "scene/CornerUVs.h"
#include "solver/LibraryScope.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

namespace uvtool
{
namespace
{

/// What was done to a geometry of the document.
struct Projected
{
    ProjectedCounts counts;
    CornerVertices vertices;
    std::size_t splitPolygons = 0;
};

bool hasNoArea(const DocumentGeometry& geometry, std::size_t triangle)
{
    std::array<Vec3d, 3> p;
    for (std::size_t k = 0; k < 3; ++k)
        p[k] =
            toScene(geometry.toWorld, geometry.positions.at(geometry.triangles[3 * triangle + k]));
    for (std::size_t k = 0; k < 3; ++k) {
        const std::size_t i = (k + 1) % 3;
        const std::size_t j = (k + 2) % 3;
        if ((p[1][i] - p[0][i]) * (p[2][j] - p[0][j]) != (p[1][j] - p[0][j]) * (p[2][i] - p[0][i]))
            return false;
    }
    return true;
}

/// Triangles for which the library finds no side of the box have this at all corners, and no others
/// but degenerate ones do.
bool isAtZero(std::span<const Vec2f> triangle)
{
    return std::all_of(triangle.begin(), triangle.end(), [](const Vec2f& uv) {
        return uv == Vec2f{0.0F, 0.0F};
    });
}

ProjectedCounts countTriangles(const DocumentGeometry& geometry, std::span<const Vec2f> uvs,
                               bool needAxes)
{
    ProjectedCounts counts;
    for (std::size_t t = 0; t < geometry.triangleCount(); ++t) {
        if (hasNoArea(geometry, t))
            ++counts.degenerateTriangles;
        else if (needAxes && isAtZero(uvs.subspan(3 * t, 3)))
            ++counts.trianglesWithoutAxis;
    }
    return counts;
}

Projected takeUVs(Task& task, const ProjectionScene::Surface& surface)
{
    const std::size_t slot = task.options.common.slot;
    DocumentGeometry& geometry = task.document.geometries[surface.number];
    ProjectedSurface found = projectedSurface(surface, static_cast<kyUVTypes::UVSet>(slot));
    Projected projected;
    projected.counts =
        countTriangles(geometry, found.uvs, task.report.projection->mode == "propagated");
    projected.counts.verticesBefore = surface.vertexCount;
    projected.counts.vertices = found.vertices.vertexCount;
    projected.vertices = std::move(found.vertices);
    projected.splitPolygons =
        writeCornerUVs(geometry, slot, documentCornerUVs(geometry, slot), found.uvs,
                       traitsOfFormat(task.options.output).vRunsDownward);
    return projected;
}

/// The chosen geometries on their way to projected UVs.
class ProjectWork
{
public:
    explicit ProjectWork(Task& task)
        : task_(task), projectedOfNumber_(task.document.geometries.size())
    {}

    void project()
    {
        LibraryLog log;
        const LibraryScope scope(task_.console, log);
        const ProjectionScene scene =
            makeProjectionScene(task_.document, task_.chosen, task_.options.common.shell);
        const Stopwatch watch;
        Projection projection = projectScene(scene, task_.options);
        task_.throwIfCancelled();
        seconds_ = watch.seconds();
        task_.report.projection = std::move(projection.report);
        for (const ProjectionScene::Surface& surface : scene.surfaces)
            projectedOfNumber_[surface.number] = takeUVs(task_, surface);
        texts_ = std::move(projection.texts);
    }

    /// At the vertices that the library has made, where charts part that touch in a point.
    void look()
    {
        const std::size_t slot = task_.options.common.slot;
        const auto verticesOf = [this](std::size_t number) {
            return std::move(projectedOfNumber_[number].vertices);
        };
        forEachScene(task_, verticesOf, [&](const SceneGeometry& scene, const SceneIslands& found) {
            GeometryReport entry = describe(task_.document, scene, found);
            entry.islandList.reset();
            note(scene, entry);
            task_.report.geometries.push_back(std::move(entry));
            layout_.add(sceneLayout(task_.document, scene, found, slot, AllIslands));
        });
        task_.report.check = checkDocumentLayout(layout_);
    }

    void writeFiles()
    {
        std::optional<OutputFile> settings;
        task_.stage("write", 0.15, [&] {
            if (!task_.options.project.savedFile.empty()) {
                settings.emplace(task_.options.project.savedFile);
                settings->write(fileOf(texts_));
                settings->finish();
            }
            writeDocument(task_.document, task_.options.output);
            if (settings)
                settings->commit();
        });
        task_.draw(layout_, {});
    }

private:
    /// Adds what was done to the surfaces of a scene to its entry.
    void note(const SceneGeometry& scene, GeometryReport& entry) const
    {
        entry.result = Success;
        entry.seconds = seconds_;
        entry.vertices = 0;
        entry.projected.emplace();
        for (const SceneGeometry::Surface& surface : scene.surfaces) {
            const Projected& projected = projectedOfNumber_[surface.number];
            entry.vertices +=
                distinctCorners(task_.document.geometries[surface.number]).vertexCount;
            *entry.projected += projected.counts;
            entry.splitPolygons += projected.splitPolygons;
        }
    }

    Task& task_;
    std::vector<Projected> projectedOfNumber_;
    double seconds_ = 0.0; ///< of all geometries, which the library projects in one go
    SettingsTexts texts_;
    DocumentLayout layout_; ///< of all geometries, as it stands in the document
};

void project(Task& task)
{
    task.read();
    task.probeOutputs();
    ProjectWork work(task);
    task.stage("project", 0.4, [&] { work.project(); });
    task.stage("look", 0.4, [&] { work.look(); });
    work.writeFiles();
}

} // namespace

ExitStatus runProject(const Options& options, Console& console)
{
    Task task("project", options, console);
    task.run([&] { project(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool
