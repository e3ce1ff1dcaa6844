#pragma once

#include "document/Document.h"

#include <cstddef>
#include <span>
#include <vector>

namespace uvtool
{

/// Gives geometries that have no UVs in a slot some to begin with: their positions in the scene,
/// seen at a slant, in a box near 1. Corners of equal position get equal UVs. No layout to be proud
/// of, but one in which a cut can part the two sides of an edge.
///
/// numbers        of the geometries, which are seen as one; those that have UVs keep them
/// vRunsDownward  of the file to be written, see FormatTraits
///
/// Returns the numbers of those that got UVs.
std::vector<std::size_t> giveStartUVs(Document& document, std::span<const std::size_t> numbers,
                                      std::size_t slot, bool vRunsDownward);

/// Takes them from a geometry that nothing was cut in.
void takeStartUVsBack(DocumentGeometry& geometry, std::size_t slot);

} // namespace uvtool
