#pragma once

#include "UVUtils/compactmesh/ShellArrays.h"
#include "UVUtils/model/Buckets.h"

#include <span>
#include <vector>

/// The vertices of a compact mesh before they are sorted.
struct WeldedVertices
{
    Buckets<unsigned int> members;    ///< [vertex] the F ids that become this vertex
    std::vector<unsigned int> source; ///< [vertex] the F id whose position and UV it takes
};

/// Joins surfaces where their borders meet along an edge and agree there in position and UV.
///
/// Welding goes by edges: surfaces that touch in a point only stay apart there, three that meet
/// along one edge are not joined by it, and neither is a border that lies on the inside of
/// another surface. A vertex that is on no border of its own surface is never welded.
///
/// order  the vertices by position (orderByPosition)
///
/// Near linear, but for keys that WeldTable has to keep in a sorted container.
WeldedVertices weldSurfaces(const ShellArrays& shell, std::span<const unsigned int> order);
