#pragma once

#include "scene/SceneEdges.h"
#include "scene/SceneGeometry.h"
#include "scene/StraightEdges.h"
#include "solver/SolverAnswer.h"

#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/solver/OptimizeSettings.h"

#include <cstddef>
#include <vector>

namespace uvtool
{

/// What the library shall relax in a scene.
struct RelaxOperation
{
    kyUVUtils::ESelectMode mode = kyUVUtils::SelectAll;
    std::vector<unsigned int> selected; ///< vertices to relax, or one of each island to relax
    StraightEdges straight;
    kyUnfold3D::OptimizeSettings settings;
};

/// Has the library do it. Triangles, vertices and indices stay; UVs change where it was successful.
SolverAnswer runRelaxOperation(const SceneGeometry& scene, const SceneEdges& edges,
                               std::size_t slot, const RelaxOperation& operation, Console& console);

} // namespace uvtool
