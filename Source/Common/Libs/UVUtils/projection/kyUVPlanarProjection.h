#pragma once

#include "OpenSG/Quaternion.h"
#include "OpenSG/Transform3D.h"
#include "UVUtils/projection/kyUVPlanarProjectionSettings.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

/// Maps vertices straight onto a plane.
///
/// A rectangle of TextureWidth x TextureHeight, times TextureScale, about ProjectionCenter takes
/// the image. Its normal is its local +Z, U and V run along its local x and y. TextureOffset, in
/// scene units, shifts it against these two, so that UVs grow with the offset. A vertex gets the UV
/// of the place on the plane where it falls along the normal, from either side; beyond the
/// rectangle UVs run on below 0 and above 1.
///
/// The rotation in the settings is phi, theta and rho, in degrees: phi and theta place the normal,
/// and what they mean depends on the axis that is up for the camera (kyOpenSGExt::isCameraZUp);
/// rho turns the image within the plane.
///
/// The plane stands in two transforms of the support geometry, which the user sees and moves. UVs
/// are computed from their matrices.
class kyUVPlanarProjection : public kyUVTextureProjection
{
public:
    /// Was the node projected in this way, by what is stored on it for the slot?
    static bool hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    /// What is stored on the node for the slot. Missing keys read as the start values, and a
    /// node without any as a default-constructed object.
    ///
    /// Throws std::invalid_argument or std::out_of_range when the stored aspect ratio is no number
    /// or beyond what a double holds; any other text that is no number reads as 0.
    static kyUVPlanarProjectionSettings readSettings(const osg::NodePtr& node,
                                                     kyUVTypes::UVSet uvSet);

    /// Stores settings on the node for the slot, to six digits. Slot 1 has a set of its own, the
    /// other slots share one. Does nothing for a null node.
    static void writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                              const kyUVPlanarProjectionSettings& settings);

    /// Settings with which a plane that faces the largest side of the nodes' box just covers them.
    /// The plane of the support geometry follows.
    ///
    /// imageWidth, imageHeight  of the image, in pixels: the plane takes its proportions, with the
    ///                          width of the nodes for a wide image and their height for a tall
    ///                          one. 0 for no image: the plane takes those of the nodes
    ///
    /// Start values for an empty list. Without the support geometry's transforms the same, and a
    /// warning is logged. Nodes without a vertex give a negative size, which stands for none.
    /// Linear in vertices.
    static kyUVPlanarProjectionSettings getDefaultSettings(const std::vector<osg::NodePtr>& nodes,
                                                           unsigned int imageWidth,
                                                           unsigned int imageHeight);

    /// Writes settings into two transforms: that of the plane, at its place in the world, and below
    /// it that of the image, which covers -1 to 1 in x and y there. Where width or height isn't
    /// positive both half sizes are 500, times TextureScale. ProjectionScale has no effect. Does
    /// nothing if one is null.
    static void calculateProjection(const kyUVPlanarProjectionSettings& settings,
                                    const osg::Transform3DPtr& projectionTransform,
                                    const osg::Transform3DPtr& textureTransform);

    /// Projects the nodes: stores the settings on each, and gives each vertex of its geometry, or
    /// of the surfaces of its shell, a UV in the slot. A slot of another kind is replaced.
    ///
    /// Nodes that may not be projected stay as they are. What hinders all of it is logged: an empty
    /// list, only locked nodes, no support geometry. A node without positions of three floats gets
    /// the settings only. A plane of no size, by a TextureScale of 0, counts as the identity: UVs
    /// come from places in the world then. Linear in vertices.
    static void apply(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet uvSet,
                      const kyUVPlanarProjectionSettings& settings);

    /// Gives a size the proportions of an image, width over height: a wide image keeps the width, a
    /// tall one the height. Does nothing for a ratio that isn't positive.
    static void adjustSizeToAspectRatio(osg::Vec2f& size, float aspect);

    /// Shows settings in the support geometry, without touching a geometry. Does nothing where
    /// there is none.
    static void updateManipulator(const kyUVPlanarProjectionSettings& settings);

    /// The turn of the image within the plane, R(Z, -rho).
    static osg::Quaternion get2DRotation(const kyUVPlanarProjectionSettings& settings);
    /// The rotation that carries +Z onto the normal of the plane.
    static osg::Quaternion get3DRotation(const kyUVPlanarProjectionSettings& settings);

    /// The angles of a plane with that normal, of any length, in radians.
    static void calculateProjectionRotationFromNormal(const osg::Vec3f& normal, float& phi,
                                                      float& theta);

    /// Sets the three angles to those of a plane that the user has turned.
    ///
    /// axis      the axis of the turn in the space of the plane, of any length; the image follows
    ///           an axis within the plane, to 0.01, not one that leans out of it
    /// angle     radians
    /// rotation  of the plane before the turn, its image included
    static void calculateProjectionRotation(kyUVPlanarProjectionSettings& settings,
                                            const osg::Vec3f& axis, float angle,
                                            const osg::Quaternion& rotation);

protected:
    /// Projects one node, or the surfaces of its shell.
    ///
    /// projectionMatrix, textureMatrix  of the plane and of the image on it; a singular product
    ///                                  counts as the identity
    static void apply(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                      const osg::Matrix& projectionMatrix, const osg::Matrix& textureMatrix);

    /// As get3DRotation, from phi and theta in radians.
    static osg::Quaternion calculate3DRotation(float phi, float theta);

    /// The normal after a turn about an axis in the space of the plane. An axis of 1e-6 or less is
    /// no turn. Not normalised.
    static osg::Vec3f rotatePlanarProjectionPlaneNormal(const osg::Vec3f& axis, float angle,
                                                        const osg::Quaternion& rotation);
    /// An axis in the space of the plane as a direction in the world, of length 1 unless it is
    /// shorter than 1e-6.
    static osg::Vec3f getPlanarWorldAxis(const osg::Vec3f& axis, const osg::Quaternion& rotation);
    /// The angle from one direction to another, in radians, positive counter-clockwise seen from
    /// the tip of the normal. 0 for directions that agree within 0.01 in each component, -pi for
    /// opposite ones, 0 where there is none.
    static double rotateInPlanarProjectionSpace(const osg::Vec3f& from, const osg::Vec3f& to,
                                                const osg::Vec3f& normal);
    /// ProjectionCenter with the distance of the plane added to z.
    static osg::Vec3f getLocalProjectionPlaneCenter(const kyUVPlanarProjectionSettings& settings,
                                                    float distance);
    /// Has the plane face the largest side of a box. Of sides of one size the one across x comes
    /// first, then the one across z. The angles are made for Z up, and the same for Y up.
    static void initializeOrientation(kyUVPlanarProjectionSettings& settings, const osg::Pnt3f& min,
                                      const osg::Pnt3f& max);
};
