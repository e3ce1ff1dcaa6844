#pragma once

#include "OpenSG/Vector.h"

#include <span>
#include <vector>

/// A vertex at which a path may stand for a picked one: that itself, or a twin across a seam.
struct PathCandidate
{
    unsigned int vertex;
    unsigned int island;
};

/// Between which vertices a path may run.
struct PathEnds
{
    unsigned int start;
    unsigned int target;
};

/// What the search for candidates looks at, of one geometry.
struct SeamTwins
{
    std::span<const osg::Pnt3f> positions;        ///< [vertex]
    std::span<const unsigned int> borderVertices; ///< ascending
    std::span<const unsigned int> islandOfVertex; ///< [vertex]
};

/// The candidates of a picked vertex, ascending by island, one an island: of a vertex inside the
/// borders it alone, else the border vertices within the weld tolerance of it. In its own island
/// the picked vertex stands for itself, in others the lowest of several.
///
/// Linear in border vertices.
std::vector<PathCandidate> findPathCandidates(unsigned int picked, const SeamTwins& twins);

/// The ends between which a path from one picked vertex to another may run: these two where they
/// are of one island, else the candidates in each island in which both have one, ascending by
/// island. No edge joins two islands, so there are no other ways.
std::vector<PathEnds> findPathEnds(unsigned int from, unsigned int to, const SeamTwins& twins);
