#pragma once

#include "SolverSession.h"

#include "Unfold3D/base/IslandMesh.h"

#include <initializer_list>
#include <utility>
#include <vector>

/// Seams as the engine proposes them, and what a cut along them leaves.
namespace seams
{

/// Edges by their vertices, the lower first, ascending.
using Edges = std::vector<std::pair<int, int>>;

/// What Select answers when it is asked for seams; the test fails when that is an error, or names
/// an edge twice.
Edges proposed(const unfold3d::IslandMesh& mesh, std::initializer_list<SolverSession::Key> mode);

struct Patch
{
    int triangles = 0;
    int handles = 0;
    int borders = 0; ///< loops
    double area = 0.0;
};

/// A mesh after a cut. Also cut are edges of more than two triangles, and vertices at which several
/// fans of triangles meet.
struct CutMesh
{
    CutMesh(const unfold3d::IslandMesh& mesh, const Edges& seams);

    unfold3d::IslandMesh mesh;
    std::vector<int> patchOf;   ///< [triangle]
    std::vector<Patch> patches; ///< counted by their vertices, edges and triangles
    double seamLength = 0.0;    ///< of the seams, in diagonals of the box
};

/// The highest energy of a patch after Unfold, 4 where none is distorted. The test fails when
/// Unfold warns, or flips a triangle.
double worstEnergy(const CutMesh& cut);

} // namespace seams
