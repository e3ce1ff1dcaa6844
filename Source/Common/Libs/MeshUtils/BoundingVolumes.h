#pragma once

#include "MeshUtils/BoxTree.h"
#include "MeshUtils/SurfaceTriangles.h"

/// Builds a bounding volume hierarchy by the surface area heuristic and puts the triangles in the
/// order of its leaves. O(n log n).
///
/// Ranges of triangles are split in two where bins along their longest axis promise the least cost
/// (I. Wald, "On fast Construction of SAH-based Bounding Volume Hierarchies", IEEE Symposium on
/// Interactive Ray Tracing, 2007); splits are gathered in nodes of eight, the largest range first.
BoxTree buildBoundingVolumes(SurfaceTriangles& triangles);
