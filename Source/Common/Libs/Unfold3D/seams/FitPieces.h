#pragma once

#include "Unfold3D/seams/PatchLayout.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>

namespace unfold3d
{

/// Adds the triangles of a piece to a list, laid, turned and moved but not bent, where the edges
/// along which it is sewn to another piece fit best. Corners on those edges come to lie close to
/// each other, but apart.
///
/// edges   [i]  between triangles of both pieces
/// centre       stays where it is
/// whole        gets the triangles of `arm`, behind those that it has
void addFitted(const SeamMesh& mesh, std::span<const int> edges, const PatchLayout& centre,
               const PatchLayout& arm, PatchLayout& whole);

/// Brings the triangles of a piece, with their corners, into ascending order.
void sortTriangles(PatchLayout& piece);

} // namespace unfold3d
