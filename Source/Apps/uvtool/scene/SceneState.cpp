#include "scene/SceneState.h"

#include "scene/CornerUVs.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace uvtool
{
namespace
{

SceneState::Surface stateOfSurface(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    SceneState::Surface state;
    state.indices = geometry->getIndices()->getValues();
    const osg::GeoPositionsPtr& positions = geometry->getPositions();
    for (unsigned int v = 0; v < positions->getSize(); ++v) {
        const auto p = positions->getValue(v);
        state.positions.push_back({p[0], p[1], p[2]});
    }
    for (const auto& uv : kyUVUtils::getUVValuesLocal(geometry, set))
        state.uvs.push_back({uv[0], uv[1]});
    // In a shell a missing slot reads as zeros, and an edit makes it.
    state.uvs.resize(state.positions.size());
    return state;
}

std::vector<unsigned int> listOf(const SceneGeometry& scene, kyUVTypes::TempIndexList list)
{
    const osg::GeoTmpIndexEditInterface view(scene.core(), list);
    return {view.values().begin(), view.values().end()};
}

template <std::size_t N>
bool agree(const std::vector<std::array<float, N>>& values,
           const std::vector<std::array<float, N>>& others)
{
    const auto areClose = [](const std::array<float, N>& a, const std::array<float, N>& b) {
        return std::equal(a.begin(), a.end(), b.begin(), [](float x, float y) {
            return std::abs(x - y) <= std::numeric_limits<float>::epsilon();
        });
    };
    return values.size() == others.size() &&
           std::equal(values.begin(), values.end(), others.begin(), areClose);
}

} // namespace

SceneState stateOf(const SceneGeometry& scene, std::size_t slot)
{
    SceneState state;
    const auto set = static_cast<kyUVTypes::UVSet>(slot);
    scene.forEachSurface([&](const osg::GeometryPtr& surface) {
        state.surfaces.push_back(stateOfSurface(surface, set));
    });
    state.selectedEdges = listOf(scene, kyUVTypes::SelectedEdges);
    state.selectedSeeds = listOf(scene, kyUVTypes::IslandSeeds);
    state.compactUVs = compactCornerUVs(scene, slot);
    return state;
}

std::string differenceOf(const SceneState& state, const SceneState& other)
{
    for (std::size_t i = 0; i < state.surfaces.size(); ++i) {
        const SceneState::Surface& a = state.surfaces[i];
        const SceneState::Surface& b = other.surfaces[i];
        const std::string where = " of surface " + std::to_string(i);
        if (a.indices != b.indices)
            return "the indices" + where;
        if (!agree(a.positions, b.positions))
            return "the positions" + where;
        if (!agree(a.uvs, b.uvs))
            return "the UVs" + where;
    }
    if (state.selectedEdges != other.selectedEdges || state.selectedSeeds != other.selectedSeeds)
        return "the selections";
    return state.compactUVs == other.compactUVs ? "" : "the UVs of the compact mesh";
}

} // namespace uvtool
