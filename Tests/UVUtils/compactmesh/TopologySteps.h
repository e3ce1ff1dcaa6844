#pragma once

#include "OpenSG/Node.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <vector>

/// Changes of topology done to a compact mesh and its surfaces alike, as a cut does them, and what
/// the tests compare before and after. The node's core is a shell, its UVs are in slot 0, and no
/// two of its triangles have the same corners.
namespace steps
{

/// Has no triangle of the mesh the same corners as another?
bool areTrianglesDistinct(const osg::NodePtr& shell);

/// Lifts some triangles off the rest: vertices between lifted and other triangles are split, so are
/// those where triangles met in a point, and the lifted ones move along u by `shift`.
///
/// isLifted  [triangle, active surface by active surface]
void lift(const osg::NodePtr& shell, const std::vector<bool>& isLifted, float shift,
          kyTopologyBridge& bridge);

/// Numbers the vertices of one surface in reverse; the mesh stays as it is.
void reverseVertices(const osg::NodePtr& shell, const ActiveSurface& surface,
                     kyTopologyBridge& bridge);

/// What the surfaces hold, and the mesh.
struct State
{
    std::vector<std::vector<osg::Pnt3f>> positions; ///< [surface], the mesh at the end
    std::vector<std::vector<osg::Vec3f>> normals;
    std::vector<UVs> uvs;
    std::vector<UVs> secondUVs;
    std::vector<Ids> indices;
    Ids compactIdOfVertex;
    std::vector<Ids> verticesOfCompactId; ///< ascending: a build leaves them in another order
    bool operator==(const State&) const = default;
};
State stateOf(const osg::NodePtr& shell);

/// Checks that a mesh is the same as one built from its surfaces now, up to the order of compact
/// vertices at equal positions, and that translation goes there and back.
void expectSameAsFreshBuild(const osg::NodePtr& shell);

} // namespace steps
