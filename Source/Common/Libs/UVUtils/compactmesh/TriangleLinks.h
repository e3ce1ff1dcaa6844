#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVTypes.h"

#include <optional>
#include <span>
#include <vector>

/// Finds out which vertex of a compact mesh each vertex of its surfaces is, when both have changed
/// alike: triangles are still the same triangles, corner by corner, whatever their vertices are
/// numbered now.
///
/// mesh         the mesh's geometry, with positions and 32-bit indices
/// faceMapping  [triangle, surface by surface] which triangle of the mesh it is
/// set          the slot in which mesh and surfaces agree
///
/// Returns [F id] the compact id. A vertex that no triangle uses is linked to a vertex of the mesh
/// that no triangle uses either, one to one by position and UV. Nothing is returned when surfaces
/// and mesh don't have the same triangles, or an index is out of range. Linear, but for the sorting
/// of unused vertices.
std::optional<std::vector<unsigned int>>
linkThroughTriangles(const std::vector<ActiveSurface>& surfaces, const osg::Geometry& mesh,
                     std::span<const unsigned int> faceMapping, kyUVTypes::UVSet set);
