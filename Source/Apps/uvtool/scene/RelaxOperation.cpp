#include "scene/RelaxOperation.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/TempIndexList.h"

namespace uvtool
{
namespace
{

void select(const SceneGeometry& scene, kyUVTypes::UVSet set, const RelaxOperation& operation)
{
    if (operation.mode == kyUVUtils::SelectIslands) {
        kyUVSelection::selectIslandsBySeeds(scene.core(), scene.node, set, operation.selected);
    } else if (operation.mode == kyUVUtils::SelectVertices) {
        osg::GeoTmpIndexEditInterface list(scene.core(), kyUVTypes::FreeVertices);
        list.setType(osg::GeoPrimitive::Points);
        list.assign(operation.selected);
        list.commit();
    }
}

void hold(const SceneGeometry& scene, const SceneEdges& edges,
          const std::vector<std::size_t>& chosen, kyUVTypes::EdgeConstraint constraint)
{
    const std::vector<unsigned int> pairs = vertexPairsOf(scene, edges, chosen);
    std::vector<Edge> held;
    held.reserve(pairs.size() / 2);
    for (std::size_t i = 0; i < pairs.size(); i += 2)
        held.emplace_back(pairs[i], pairs[i + 1]);
    kyUVUtils::setConstrainedEdges(scene.core(), scene.node, held, constraint);
}

} // namespace

SolverAnswer runRelaxOperation(const SceneGeometry& scene, const SceneEdges& edges,
                               std::size_t slot, const RelaxOperation& operation, Console& console)
{
    const auto set = static_cast<kyUVTypes::UVSet>(slot);
    SolverAnswer answer = askLibrary(console, [&] {
        select(scene, set, operation);
        hold(scene, edges, operation.straight.horizontal, kyUVTypes::Horizontal);
        hold(scene, edges, operation.straight.vertical, kyUVTypes::Vertical);
        return kyUVUtils::optimizeUVsUnfold3D(scene.core(), scene.node, set, operation.settings,
                                              operation.mode);
    });
    // That it failed, for a node that has no name here, goes without saying.
    std::erase_if(answer.log.errors, [](const std::string& line) {
        return line.starts_with("Optimizing UVs failed for node");
    });
    return answer;
}

} // namespace uvtool
