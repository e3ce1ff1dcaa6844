#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/editing/EdgeGraph.h"
#include "UVUtils/model/Edge.h"

#include <optional>
#include <span>
#include <vector>

/// Walks from edge to edge, straight on as far as that goes.
class StraightestWalk
{
public:
    /// What it walks on. Everything outlives it.
    struct Surface
    {
        const EdgeGraph& graph;
        std::span<const osg::Pnt3f> positions; ///< [vertex]
        std::span<const osg::Vec3f> normals;   ///< [vertex] of length 1, or near 0
    };

    /// The least cosines of the angle between an edge and the next one.
    struct Limits
    {
        float cosInSurface; ///< as seen along the normal of the vertex in between
        float cosInSpace;
    };

    /// stopAtBorders  end at border vertices
    StraightestWalk(const Surface& surface, const Limits& limits, bool stopAtBorders);

    /// Goes on from an edge at its end `to` and appends the edges that follow, each with its ends
    /// in the order of the walk. Ends behind the edge that reaches a vertex where this or an
    /// earlier walk has been.
    void goOn(unsigned int from, unsigned int to, FlatEdgeList& edges);

private:
    osg::Vec3f direction(unsigned int from, unsigned int to) const;
    bool endsAt(unsigned int vertex) const;
    std::optional<unsigned int> straightestNeighbour(unsigned int from, unsigned int to) const;

    Surface surface_;
    Limits limits_;
    bool stopAtBorders_;
    std::vector<char> isVisited_; ///< [vertex]
};
