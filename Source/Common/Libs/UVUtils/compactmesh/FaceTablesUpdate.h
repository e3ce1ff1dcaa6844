#pragma once

#include "UVUtils/compactmesh/FaceTables.h"

/// Brings tables along after the vertices of their triangles changed: the same triangles in the
/// same surface order, of which most keep their place in each order of the tables, since a change
/// of topology leaves the greater part of a mesh as it is. The result is that of makeFaceTables,
/// for which the arguments are.
///
/// Returns false, with anything in the tables, where they are of other triangles and where too many
/// have lost their place: then making them anew is quicker. Linear in triangles plus compact ids.
bool updateFaceTables(std::span<const unsigned int> trianglesF,
                      std::span<const unsigned int> vertFToC, unsigned int compactCount,
                      FaceTables& tables);
