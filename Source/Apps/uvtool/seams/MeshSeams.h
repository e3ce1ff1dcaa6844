#pragma once

#include "cli/Console.h"
#include "cli/Options.h"
#include "mesh/Survey.h"
#include "solver/SolverAnswer.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Seams that the library proposes for a mesh.
struct SeamProposal
{
    SolverAnswer answer;
    FoundSeams found;
    std::vector<std::uint32_t> sides; ///< one side of the survey's mesh along each seam
};

/// A geometry as seams are found for it: as if it had no UVs in the slot, and nothing hanging
/// together in a single vertex.
Survey surveyForSeams(const DocumentGeometry& geometry, std::size_t slot);

/// Asks the library where a mesh should be cut, and moves what it answers from the diagonals of
/// polygons to their sides. In the mode AutoSeams the kind of the surface decides between organic
/// and manufactured seams; so without a mode, but only closed islands get seams then where the
/// geometry was cut open. On anything but Success there are no seams.
///
/// survey  of the geometry, with a triangle at least
SeamProposal proposeSeams(const DocumentGeometry& geometry, const Survey& survey,
                          const SeamSearchOptions& options, Console& console);

/// Has the library cut a mesh along edges. Triangles and their order stay, the survey has the
/// vertices and islands of afterwards.
///
/// sides  of the survey's mesh, one along each edge
SolverAnswer cutMesh(const DocumentGeometry& geometry, std::span<const std::uint32_t> sides,
                     Console& console, Survey& survey);

} // namespace uvtool
