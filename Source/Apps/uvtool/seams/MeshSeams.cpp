#include "seams/MeshSeams.h"

#include "document/Box3.h"
#include "mesh/CornerVertices.h"
#include "mesh/SolverFrame.h"
#include "mesh/VertexFans.h"
#include "scene/SeamOperation.h"
#include "seams/PolygonSeams.h"
#include "seams/SeamSet.h"
#include "seams/SurfaceKind.h"
#include "solver/SolverGeometry.h"

#include "OpenSG/IndexSpan.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/solver/SeamSettings.h"

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

/// Meshes of a survey are welded, and parted where they have to be: a compact mesh would weld them
/// once more.
class PlainGeometryScope
{
public:
    PlainGeometryScope() : before_(kyUVUtils::getUseCompactMesh())
    {
        kyUVUtils::setUseCompactMesh(false);
    }
    ~PlainGeometryScope() { kyUVUtils::setUseCompactMesh(before_); }
    PlainGeometryScope(const PlainGeometryScope&) = delete;
    PlainGeometryScope& operator=(const PlainGeometryScope&) = delete;

private:
    bool before_;
};

SceneGeometry sceneOf(const SolverMesh& mesh, std::span<const Vec3f> positions)
{
    SceneGeometry scene;
    scene.node = osg::Node::create();
    scene.node->setCore(makeGeometry({positions, mesh.triangles, {}}, 0));
    return scene;
}

kyUVTypes::SeamMode modeFor(SeamChoice choice, const SolverMesh& mesh,
                            std::span<const Vec3f> positions)
{
    switch (choice) {
    case OrganicSeams:
        return kyUVTypes::Organic;
    case ManufacturedSeams:
        return kyUVTypes::Manufactured;
    case BakingSeams:
        return kyUVTypes::Baking;
    case NoSeams:
    case AutoSeams:
        break;
    }
    return isHardSurface(mesh.triangles, positions) ? kyUVTypes::Manufactured : kyUVTypes::Organic;
}

kyUnfold3D::SeamSettings settingsOf(const SeamSearchOptions& options, kyUVTypes::SeamMode mode)
{
    kyUnfold3D::SeamSettings settings;
    settings.setMode(mode);
    settings.setOrganicUsePipesCutter(options.pipes);
    if (options.amount)
        settings.setOrganicSegAmount(*options.amount);
    if (options.angle) {
        settings.setManufacturedAngle(*options.angle);
        settings.setBakingAngle(*options.angle);
    }
    if (options.minPatchArea)
        settings.setManufacturedAreaRatio(*options.minPatchArea);
    if (options.minPatchPolygons)
        settings.setBakingSizeOfMinPatch(*options.minPatchPolygons);
    return settings;
}

void clearOpenIslands(const Survey& survey, SeamSet& seams)
{
    for (std::size_t e = 0; e < seams.edgeCount(); ++e)
        if (!survey.isClosed(seams.sides(e).front() / 3))
            seams.mark(e, false);
}

std::vector<std::uint32_t> polygonsOf(const DocumentGeometry& geometry, const SolverMesh& mesh)
{
    std::vector<std::uint32_t> polygons;
    polygons.reserve(mesh.triangleCount());
    for (const std::uint32_t triangle : mesh.sourceTriangle)
        polygons.push_back(geometry.polygonOfTriangle[triangle]);
    return polygons;
}

double distance(const Vec3f& a, const Vec3f& b)
{
    return std::hypot(double{b[0]} - a[0], double{b[1]} - a[1], double{b[2]} - a[2]);
}

double boxDiagonal(std::span<const Vec3f> points)
{
    Box3<float> box;
    for (const Vec3f& point : points)
        box.add(point);
    return box.diagonal();
}

void takeSeams(const SeamSet& seams, std::span<const Vec3f> positions, SeamProposal& proposal)
{
    double length = 0.0;
    for (std::size_t e = 0; e < seams.edgeCount(); ++e) {
        if (!seams.isSeam(e))
            continue;
        proposal.sides.push_back(seams.sides(e).front());
        length += distance(positions[seams.ends(e)[0]], positions[seams.ends(e)[1]]);
    }
    proposal.found.edges = proposal.sides.size();
    const double diagonal = boxDiagonal(positions);
    proposal.found.length = diagonal > 0.0 ? length / diagonal : 0.0;
}

} // namespace

Survey surveyForSeams(const DocumentGeometry& geometry, std::size_t slot)
{
    Survey survey = surveyGeometry(geometry, slot, RegardlessOfUVs);
    SolverMesh& mesh = survey.mesh;
    std::size_t vertexCount = mesh.vertexCount();
    separateVertexFans(mesh.triangles, vertexCount);
    nameCorners(geometry, vertexCount, mesh);
    survey.islands = findIslands(mesh.triangles, vertexCount);
    return survey;
}

SeamProposal proposeSeams(const DocumentGeometry& geometry, const Survey& survey,
                          const SeamSearchOptions& options, Console& console)
{
    const SolverMesh& mesh = survey.mesh;
    const std::vector<Vec3f> positions =
        intoFrame(scenePositionsOfCorners(geometry, mesh.cornerOfVertex)).points;
    const SeamChoice choice = options.choice.value_or(AutoSeams);
    SeamProposal proposal;
    proposal.found.mode = modeFor(choice, mesh, positions);
    proposal.found.isModeChosen = choice == AutoSeams;
    const SceneGeometry scene = sceneOf(mesh, positions);
    const PlainGeometryScope plain;
    FlatEdgeList edges;
    proposal.answer = askLibrary(console, [&] {
        return kyUVUtils::seamUVsUnfold3D(scene.core(), scene.node, kyUVTypes::UVSet0,
                                          settingsOf(options, proposal.found.mode), edges);
    });
    if (proposal.answer.outcome != Success)
        return proposal;
    SeamSet seams(mesh.triangles, mesh.vertexCount());
    seams.markPairs(edges);
    if (!options.choice && isCutOpen(geometry))
        clearOpenIslands(survey, seams);
    moveSeamsOffDiagonals(mesh.triangles, polygonsOf(geometry, mesh), positions, seams);
    takeSeams(seams, positions, proposal);
    return proposal;
}

SolverAnswer cutMesh(const DocumentGeometry& geometry, std::span<const std::uint32_t> sides,
                     Console& console, Survey& survey)
{
    SolverMesh& mesh = survey.mesh;
    const SceneGeometry scene =
        sceneOf(mesh, intoFrame(scenePositionsOfCorners(geometry, mesh.cornerOfVertex)).points);
    SeamOperation cut;
    cut.kind = SeamOperation::CutEdges;
    for (const std::uint32_t side : sides) {
        cut.edges.push_back(mesh.triangles[side]);
        cut.edges.push_back(mesh.triangles[endCorner(side)]);
    }
    const PlainGeometryScope plain;
    SolverAnswer answer = askLibrary(console, [&] {
        runSeamOperation(scene, 0, cut);
        return kyUVTypes::Success;
    });
    if (answer.outcome != Success)
        return answer;
    mesh.triangles = scene.core()->getIndices()->getValues();
    nameCorners(geometry, scene.core()->getPositions()->getSize(), mesh);
    survey.islands = findIslands(mesh.triangles, mesh.vertexCount());
    return answer;
}

} // namespace uvtool
