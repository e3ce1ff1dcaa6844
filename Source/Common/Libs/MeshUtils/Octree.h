#pragma once

#include "MeshUtils/BoxTree.h"
#include "MeshUtils/SurfaceTriangles.h"

/// Builds an octree and puts the triangles in the order of its leaves. A cell is halved along all
/// axes until few triangles are left or the halving has gone so far that their middles are as good
/// as equal; these share one leaf then. O(n log n).
BoxTree buildOctree(SurfaceTriangles& triangles);
