#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/mesh/ImportedMesh.h"
#include "Unfold3D/mesh/Islands.h"
#include "Unfold3D/packing/PackOptions.h"
#include "Unfold3D/packing/Piece.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The layout that shall be packed.
struct UVLayout
{
    const ImportedMesh& mesh;
    const Islands& islands;
    std::span<const Vec2> uvs; ///< [vertex]
    /// [island] Are edges of it held along the axes, so that no turn but the half one may be done?
    /// Empty where that is so for none.
    std::span<const char> isHeldLevel = {};
};

struct Pieces
{
    std::vector<Piece> pieces;
    /// The scale of a layout at which the islands have the size that the scaling of islands gives
    /// them.
    double naturalScale = 1.0;
};

/// Makes pieces of islands: finds their outlines, turns them first, brings them to size.
///
/// An island without area in UV or in space is scaled by the length of its edges instead, and one
/// without length as all others on average. Vertices that only left-out triangles use count for
/// nothing: their place is that of their anchor.
Pieces makePieces(const UVLayout& layout, std::span<const int> islands, const PackOptions& options,
                  const RunControl& control);

/// The outline of an island as it stands.
std::vector<OutlineEdge> standingOutline(const UVLayout& layout, int island);

} // namespace unfold3d
