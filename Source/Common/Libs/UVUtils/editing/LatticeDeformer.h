#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"

#include <vector>

class CompactShellMesh;

/// The vertices that a deformer moves and where they started: what is handed out as meta data.
struct LatticeStart
{
    std::vector<unsigned int> ids; ///< of the work geometry, ascending, each once
    std::vector<osg::Vec2f> uvs;   ///< [ids]
};

/// What one geometry needs while a lattice bends its UVs; handed out as a pointer to void.
///
/// It lives across calls, so it keeps references: to the geometry, with which its mesh lives, and
/// to the UVs, which a mesh drops when it is built for another slot.
struct LatticeDeformer
{
    osg::RefPtr<osg::Geometry> geometry;
    osg::RefPtr<osg::Node> node;
    CompactShellMesh* mesh = nullptr; ///< null where the geometry itself is worked on
    osg::RefPtr<osg::Geometry> workGeometry;
    osg::RefPtr<osg::GeoTexCoords2f> uvs; ///< of the work geometry
    LatticeStart start;
};
