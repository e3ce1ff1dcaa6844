#pragma once

#include "OpenSG/Matrix.h"
#include "OpenSG/Quaternion.h"
#include "UVUtils/projection/kyUVTextureProjection.h"
#include "UVUtils/projection/kyUVTriplanarProjectionSettings.h"

#include <QSizeF>

namespace triplanar
{
struct BoxView;
}

/// Projects triangles from the six sides of a box.
///
/// The box stands at Center, turned by Rotation3D. Each side has an axis, the direction in which it
/// looks, and carries the image as it is seen from outside, in the space of the box:
///
///     axis  looks along  serves normals  U runs along  V runs along  components
///      0        +X             -X             -Y            +Z            x
///      1        +Y             -Y             +X            +Z            y
///      2        +Z             -Z             -X            +Y            z
///      3        -X             +X             +Y            +Z            x
///      4        -Y             +Y             -X            +Z            y
///      5        -Z             +Z             +X            +Y            z
///
/// The image is of size Width by Height about the middle of the side, RepeatU and RepeatV times
/// smaller. It is shifted by OffsetU, on axes 0 to 2 against U and on axes 3 to 5 along it, and by
/// OffsetV against V. About its own middle it is turned by Rotation2D, clockwise as it is seen on
/// axes 0 to 2, the other way on axes 3 to 5. Opposite sides share a component of each. Beyond the
/// image UVs run on. Where it has no width or no height, UVs are (x + 1) / 2 and (y + 1) / 2 of the
/// world.
///
/// Every triangle belongs to one side. In mode DominantAxis it is the one that the triangle faces
/// most, axis 5 for a triangle without area. In mode PropagatedAxis triangles that turn to just one
/// side by less than 60 degrees belong to it, and from them waves spread over those that turn to
/// several, all together and evenly, so that charts are larger and their borders smoother. In this
/// mode a triangle of less than 5e-7 square units in the world has no direction: it belongs to no
/// side, and its corners have the UV (0, 0). Small meshes are to be scaled up for it.
///
/// A node whose world matrix mirrors is seen from inside: its triangles take the opposite sides.
/// What belongs to a position that isn't finite may be any side and any UV.
class kyUVTriplanarProjection : public kyUVTextureProjection
{
public:
    using kyUVTextureProjection::calculateProjectionSize;

    /// Was the node projected in this way, by what is stored on it for the slot?
    static bool hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    /// What is stored on the node for the slot. Missing keys and text that is no number
    /// read as 0, a repeat as the least that it can be; a null node gives a default-constructed
    /// object.
    static kyUVTriplanarProjectionSettings readSettings(const osg::NodePtr& node,
                                                        kyUVTypes::UVSet uvSet);

    /// Settings with the box about the nodes' middle and an image as high as the nodes in y or z,
    /// whichever is more. Without a node the image has no size.
    ///
    /// imageWidth, imageHeight  of the image, in pixels, for its proportions; square if one is 0
    static kyUVTriplanarProjectionSettings
    getDefaultSettings(const std::vector<osg::NodePtr>& nodes, unsigned int imageWidth,
                       unsigned int imageHeight);
    /// The size of that image for a box of nodes.
    static QSizeF calculateProjectionSize(const osg::Pnt3f& min, const osg::Pnt3f& max,
                                          unsigned int imageWidth, unsigned int imageHeight);

    /// Projects the nodes: stores the settings on each, and writes the UVs of its geometry, or of
    /// the surfaces of its shell. What was in the slot is replaced, a slot of another kind too.
    ///
    /// The geometry has triangles of single indices afterwards. Vertices are split where sides
    /// meet, and joined where all their properties are equal, also if they were apart before; then
    /// kyTopologyRepair runs once. The order of the triangles stays, ids of vertices change.
    ///
    /// Nodes that may not be projected stay as they are, and so do those with vertex animation,
    /// which are logged, as an empty list is and one of locked nodes only. A node without positions
    /// of three floats or without indices gets the settings only. A kyStackedProgress "triplanar"
    /// runs, of which each node of the list is a part; when it is cancelled, the node in hand is
    /// the last. Linear in triangles, but for the sorting of the edges at one place.
    static void apply(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet uvSet,
                      const kyUVTriplanarProjectionSettings& settings);
    /// With default-constructed settings.
    static void apply(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet uvSet);

protected:
    /// Stores settings on the node for the slot, to six digits. Slot 1 has a set of its own, the
    /// other slots share one. Does nothing for a null node.
    static void writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                              const kyUVTriplanarProjectionSettings& settings);

private:
    static void applyTriPlanarProjection(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                         const kyUVTriplanarProjectionSettings& settings);
    /// From the world to the box and its images. Also moves the support geometry there.
    static triplanar::BoxView viewOfWorld(const kyUVTriplanarProjectionSettings& settings);
    /// Parts the triangles of a geometry and gives them UVs.
    static void writeUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                         kyUVTriplanarProjectionSettings::Mode mode,
                         const triplanar::BoxView& view);

    /// From the space of the box to the world. Also moves the box of the support geometry there.
    static osg::Matrix calculateProjectionMatrix(const kyUVTriplanarProjectionSettings& settings);
    /// From the image on a side of the box, which covers x and y from -1 to 1, to the space of the
    /// box. Also moves the plane of the support geometry there, if the axis has one.
    static osg::Matrix calculateTextureTransform(int axis,
                                                 const kyUVTriplanarProjectionSettings& settings);

    static osg::Quaternion getRotation3D(const kyUVTriplanarProjectionSettings& settings);
    static osg::Vec3f getCenter(const kyUVTriplanarProjectionSettings& settings);
    static osg::Vec2f getRepeat(int axis, const kyUVTriplanarProjectionSettings& settings);
    static osg::Vec2f getOffset(int axis, const kyUVTriplanarProjectionSettings& settings);
    static osg::Quaternion getRotation2D(int axis, const kyUVTriplanarProjectionSettings& settings);

    static void updateSupportGeometryProjection(const osg::Matrix& matrix);
    static void updateSupportGeometryTextureTransform(int axis, const osg::Matrix& matrix);
    /// Of axes 0, 1 and 2; null for the others and without a support geometry.
    static osg::NodePtr getSupportGeometryPlane(int axis);
};
