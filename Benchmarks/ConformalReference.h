#pragma once

#include "PatchMeshes.h"

namespace bench
{

/// A plain least-squares conformal map of an open mesh (Levy and others 2002): two far vertices are
/// pinned, the normal equations of all coordinates are solved by a simplicial factorisation in the
/// order of minimum degree. Returns three coordinates for each vertex.
///
/// It measures a machine: times of a flattening are told as multiples of it.
std::vector<double> leastSquaresConformalMap(const FlatMesh& mesh);

} // namespace bench
