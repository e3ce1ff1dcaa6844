#pragma once

#include "MeshUtils/BoxTree.h"
#include "MeshUtils/SurfaceTriangles.h"

/// Builds a bounding volume hierarchy by the surface area heuristic and puts the triangles in the
/// order of its leaves. Embree decides who lies with whom, on all threads; the tree is laid out
/// here. It has no nodes if there are no triangles, or if Embree refuses. O(n log n).
BoxTree<4> buildBoundingVolumes(SurfaceTriangles& triangles);
