#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"

class CompactShellMesh;

/// Writes the UVs of a mesh to the slot of every surface that it was built from, so that vertices
/// which are one in the mesh agree on all surfaces. A surface whose slot holds no UVs gets a new
/// property, and one of another size is resized. Nothing but that slot is written; a mesh without
/// UVs in `set` writes nothing.
///
/// Notices go out for each surface and at the end for `geometry`, the core that the mesh belongs
/// to; the caller has turned the mesh's change callback off. Linear.
void copyUVsToSurfaces(const CompactShellMesh& mesh, const osg::GeometryPtr& geometry,
                       const osg::NodePtr& node, kyUVTypes::UVSet set);
