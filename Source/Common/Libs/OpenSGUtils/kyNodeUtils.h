#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Matrix.h"
#include "OpenSG/Node.h"
#include "OpenSGUtils/kyNodePtr.h"

#include <vector>

/// Questions about nodes and what is below them, and the moving of transform nodes.
namespace kyNodeUtils
{

/// Is the geometry, or the core of the node, a shell? False for null.
bool isShellGeometry(const osg::GeometryPtr& geometry);
bool isShellGeometry(const osg::NodePtr& node);

/// A number by which a node can be found again without keeping it alive: its container id, 0 for
/// null.
unsigned int getNodeId(const osg::NodePtr& node);
/// The node with that id; null for an id that no longer lives, or is that of no node.
osg::NodePtr getNodeFromId(unsigned int id);

/// Appends all nodes below a node, parents before children, children in their order; the node
/// itself is none of them. A null node gives nothing.
void getSubTreeNodes(const osg::NodePtr& node, std::vector<osg::NodePtr>& out);

/// Appends the nodes of the geometry that can be seen at or below some nodes, in the order of
/// `nodes` and, below each, parents before children.
///
/// A plain geometry gives its node; a shell, which has no geometry of its own, gives those of its
/// surfaces that are on a shown side. A hidden node (a traversal mask of 0) hides all that is
/// below. Null nodes give nothing, and a node below two of the given ones comes twice.
///
/// shownSides  bits of osg::SurfaceBase::Side
void getVisibleGeometryNodes(const std::vector<osg::NodePtr>& nodes, std::vector<osg::NodePtr>& out,
                             unsigned int shownSides);

/// The root of the scene graph that is shown. It isn't kept alive: none is set once it is gone, as
/// at the start and after null.
void setScenegraphRoot(const osg::NodePtr& root);
osg::NodePtr getScenegraphRoot();

/// Appends the nodes in the scene graph that have the core of a node, itself among them, in the
/// order in which they took it: those at or below the root, or all where no root is set. Nothing
/// for a null node and one without a core. Goes up from each of them to the root.
void getInstancesInScenegraph(const osg::NodePtr& node, std::vector<osg::NodePtr>& out);

// Boxes. The positions (of three floats) of each node's own core count, used by a triangle or not;
// what is below a node does not, so for a shell the caller names its surfaces. A position that is
// not finite after its transformation is passed over, and so are null nodes and those without a
// core, a geometry or positions. Linear in the positions.

/// The box of some nodes in world coordinates, from its lowest to its highest corner, and its
/// centre. All three are zero where there is no position.
void getBoundingBox(const std::vector<kyNodePtr>& nodes, osg::Pnt3f& min, osg::Pnt3f& max,
                    osg::Vec3f& center);

/// The box of some nodes as a projection sees them, and as the result its size.
///
/// matrix    from the coordinates that `inWorld` says to those of the projection
/// inWorld   true: the matrix acts on world coordinates; false: on those of each node by itself
/// min, max  left as they are where there is no position; the result is zero then
osg::Vec3f getProjectionBoundingBox(const std::vector<kyNodePtr>& nodes, const osg::Matrix& matrix,
                                    osg::Pnt3f& min, osg::Pnt3f& max, bool inWorld);

// Transform nodes. Each operation sets one field of the node's osg::Transform3D core to a value and
// reports it. A null node and one with another core are passed over. Numbers are taken as they are,
// NaN included: the matrix is not finite then until others take their place.
//
// keyFrame  the key frame that takes the value. This scene graph has no key frames: all numbers do
//           the same as NoKeyFrame.

inline constexpr int NoKeyFrame = -1;

/// isAbsolute  true: the translation becomes the vector; false: the vector is added to it
void setTransformNodeTranslation(const osg::NodePtr& node, const osg::Vec3f& translation,
                                 bool isAbsolute, int keyFrame);
/// degrees  about x, y and z; the turn about x acts first, that about z last
void setTransformNodeRotation(const osg::NodePtr& node, const osg::Vec3f& degrees, int keyFrame);
/// factors  along x, y and z
void setTransformNodeScale(const osg::NodePtr& node, const osg::Vec3f& factors, int keyFrame);

/// The points that the scale and the rotation leave in place.
///
/// keepsPlace  true: the translation changes as well, so that the node stays where it is, and is
///             reported with the pivot; false: the node moves, if it is scaled or turned
void setTransformNodeScalePivot(const osg::NodePtr& node, const osg::Vec3f& pivot, bool keepsPlace,
                                int keyFrame);
void setTransformNodeRotatePivot(const osg::NodePtr& node, const osg::Vec3f& pivot, bool keepsPlace,
                                 int keyFrame);

/// A direction in spherical coordinates: x is the azimuth in the x, y plane, 0 on +x and pi/2 on
/// +y, y the polar angle, 0 on +z and pi on -z, both in radians, and z the length. The azimuth of
/// the z axis, and both angles of the zero vector, are 0. The coordinates are to be finite.
osg::Vec3f cartesianToSpherical(float x, float y, float z);

} // namespace kyNodeUtils
