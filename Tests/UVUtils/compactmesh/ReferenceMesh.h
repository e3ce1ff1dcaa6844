#pragma once

#include "OpenSG/Node.h"
#include "OpenSG/Vector.h"
#include "UVUtils/Meshes.h"

#include <vector>

/// The vertices of a compact mesh, welded in the plainest way: one tolerant ordered map for all
/// keys, hash tables for edges, lists of lists for groups. Slow, and right by inspection.
struct ReferenceMesh
{
    struct Vertex
    {
        Ids fIds; ///< in the order in which they were joined
        osg::Pnt3f position;
        osg::Vec2f uv;
    };

    std::vector<Vertex> vertices; ///< inner ones, then groups; not sorted
};

ReferenceMesh weldPlainly(const osg::NodePtr& node, unsigned slot);
