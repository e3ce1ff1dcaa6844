#include "scene/LayoutEdit.h"

#include "cli/ExitStatus.h"
#include "scene/SeamPlaces.h"
#include "solver/RoundingRepair.h"

#include <algorithm>
#include <string>
#include <utility>

namespace uvtool
{
namespace
{

std::uint32_t compactVertex(const SceneGeometry& scene, const SceneIslands& found,
                            std::size_t corner)
{
    return found.compactOfVertex[scene.triangles[corner]];
}

/// Lets the vertices move of the triangles for which isChosen(t).
template <class Chosen>
void letMove(const SceneGeometry& scene, const SceneIslands& found, const Chosen& isChosen,
             std::vector<char>& mayMove)
{
    mayMove.assign(found.compactVertices, 0);
    for (std::size_t t = 0; t < scene.triangleCount(); ++t)
        for (std::size_t k = 0; k < 3 && isChosen(t); ++k)
            mayMove[compactVertex(scene, found, 3 * t + k)] = 1;
}

std::vector<unsigned int> mappedVertices(const SceneGeometry& scene,
                                         const std::vector<char>& isMapped)
{
    std::vector<char> isUsed(scene.vertexCount, 0);
    for (std::size_t i = 0; i < scene.triangles.size(); ++i)
        if (isMapped[i / 3] != 0)
            isUsed[scene.triangles[i]] = 1;
    std::vector<unsigned int> vertices;
    for (unsigned int v = 0; v < isUsed.size(); ++v)
        if (isUsed[v] != 0)
            vertices.push_back(v);
    return vertices;
}

} // namespace

LayoutEdit editOfAll(const Document& document, const SceneGeometry& scene,
                     const SceneIslands& found, std::size_t slot)
{
    LayoutEdit edit;
    for (const std::int32_t island :
         sceneLayout(document, scene, found, slot, AllIslands).islandOfTriangle)
        edit.isMapped.push_back(island < 0 ? 0 : 1);
    if (std::count(edit.isMapped.begin(), edit.isMapped.end(), 0) > 0) {
        edit.operation.mode = kyUVUtils::SelectVertices;
        edit.operation.selected = mappedVertices(scene, edit.isMapped);
    }
    letMove(
        scene, found, [&edit](std::size_t t) { return edit.isMapped[t] != 0; }, edit.mayMove);
    return edit;
}

void restrictToIslands(const SceneGeometry& scene, const SceneIslands& found,
                       std::vector<unsigned int> seeds, LayoutEdit& edit)
{
    const std::vector<char> isChosen = islandsOf(scene, found, seeds);
    letMove(
        scene, found,
        [&](std::size_t t) {
            return isChosen[static_cast<std::size_t>(found.islandOfTriangle[t])] != 0;
        },
        edit.mayMove);
    edit.operation.mode = kyUVUtils::SelectIslands;
    edit.operation.selected = std::move(seeds);
}

void restrictToVertices(const SceneIslands& found, std::vector<unsigned int> vertices,
                        LayoutEdit& edit)
{
    edit.mayMove.assign(found.compactVertices, 0);
    for (const unsigned int vertex : vertices)
        edit.mayMove[found.compactOfVertex[vertex]] = 1;
    edit.operation.mode = kyUVUtils::SelectVertices;
    edit.operation.selected = std::move(vertices);
}

bool hasWork(const SceneGeometry& scene, const SceneIslands& found, const LayoutEdit& edit)
{
    for (std::size_t i = 0; i < scene.triangles.size(); ++i)
        if (edit.isMapped[i / 3] != 0 && edit.mayMove[compactVertex(scene, found, i)] != 0)
            return true;
    return false;
}

void hold(const SceneGeometry& scene, const SceneIslands& found, const SceneEdges& edges,
          StraightEdges straight, LayoutEdit& edit)
{
    edit.held = sidesAlong(edges, straight);
    for (std::vector<std::uint32_t>* const sides : {&edit.held.horizontal, &edit.held.vertical})
        std::erase_if(*sides, [&](std::uint32_t side) {
            return edit.mayMove[compactVertex(scene, found, side)] == 0 &&
                   edit.mayMove[compactVertex(scene, found, endCorner(side))] == 0;
        });
    edit.operation.straight = std::move(straight);
}

void keepWhatStays(const SceneGeometry& scene, const SceneIslands& found, LayoutEdit& edit)
{
    for (std::size_t i = 0; i < edit.after.size(); ++i) {
        if (edit.isMapped[i / 3] == 0)
            edit.after[i] = edit.before[i];
        if (edit.hasMoved(i) && edit.mayMove[compactVertex(scene, found, i)] == 0)
            throw CommandError(
                Unsound, "the result failed its check, nothing was written: vertex " +
                             std::to_string(scene.triangles[i]) + " has moved, which was to stay");
    }
}

void roundForTurnedV(const SceneGeometry& scene, const SceneIslands& found, LayoutEdit& edit)
{
    std::vector<std::uint32_t> triangles;
    std::vector<Vec2f> uvs(found.compactVertices);
    std::vector<char> isFixed(found.compactVertices, 1);
    triangles.reserve(scene.triangles.size());
    for (std::size_t i = 0; i < scene.triangles.size(); ++i) {
        triangles.push_back(compactVertex(scene, found, i));
        uvs[triangles[i]] = edit.after[i];
        if (edit.hasMoved(i))
            isFixed[triangles[i]] = 0;
    }
    const std::vector<std::int8_t> turns = turnsOf(triangles, uvs);
    std::vector<Vec2f> rounded = uvs;
    roundForTurnedV(rounded);
    for (std::size_t v = 0; v < uvs.size(); ++v)
        if (isFixed[v] == 0)
            uvs[v] = rounded[v];
    for (const std::vector<std::uint32_t>* const sides :
         {&edit.held.horizontal, &edit.held.vertical})
        for (const std::uint32_t side : *sides)
            isFixed[triangles[side]] = isFixed[triangles[endCorner(side)]] = 1;
    repairRounding(triangles, turns, true, uvs, isFixed);
    for (std::size_t i = 0; i < triangles.size(); ++i)
        if (edit.hasMoved(i))
            edit.after[i] = uvs[triangles[i]];
}

std::vector<char> changedIslands(const SceneIslands& found, const LayoutEdit& edit)
{
    std::vector<char> isChanged(found.islands.size(), 0);
    for (std::size_t i = 0; i < edit.after.size(); ++i)
        if (edit.hasMoved(i))
            isChanged[static_cast<std::size_t>(found.islandOfTriangle[i / 3])] = 1;
    return isChanged;
}

} // namespace uvtool
