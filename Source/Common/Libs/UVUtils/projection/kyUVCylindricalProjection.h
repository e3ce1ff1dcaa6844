#pragma once

#include "UVUtils/projection/kyUVCylindricalProjectionSettings.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

/// Wraps an image around a cylinder.
///
/// The cylinder's own space has the axis along y, from -0.5 to 0.5, and the radius 1:
/// ProjectionScale is (radius, height, radius), ProjectionRotation turns about x first and about z
/// last. The image spans ProjectionUAngle about local +z, U towards local +x, and the height of the
/// cylinder in V; CylindricRotation2D turns it about its middle. Beyond the image UVs run on.
///
/// Triangles across the seam at the back, opposite to +z, stay in one piece: vertices there part.
///
/// The cylinder stands in two transforms of the support geometry, which the user sees and moves.
/// UVs are computed from their matrices.
class kyUVCylindricalProjection : public kyUVTextureProjection
{
public:
    /// Was the node projected in this way, by what is stored on it for the slot?
    static bool hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    /// What is stored on the node for the slot. Missing keys read as the start values; the
    /// size, offset and scale of the texture are not stored and always have these.
    ///
    /// Throws std::invalid_argument or std::out_of_range when the stored aspect ratio is no number
    /// or beyond what a double holds; any other text that is no number reads as 0.
    static kyUVCylindricalProjectionSettings readSettings(const osg::NodePtr& node,
                                                          kyUVTypes::UVSet uvSet);

    /// Stores settings on the node for the slot, to six digits. Slot 1 has a set of its own, the
    /// other slots share one. Does nothing for a null node.
    static void writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                              const kyUVCylindricalProjectionSettings& settings);

    /// Settings with which the cylinder just encloses the nodes' box, from end to end along its
    /// axis and in the wider of the two directions across, and spans 180 degrees.
    ///
    /// imageWidth, imageHeight  of the image, in pixels; not 0, they become the texture's size and
    ///                          the span follows from the proportions
    ///
    /// Start values for an empty list. Linear in vertices.
    static kyUVCylindricalProjectionSettings
    getDefaultSettings(const std::vector<osg::NodePtr>& nodes, unsigned int imageWidth,
                       unsigned int imageHeight);

    /// Sets ProjectionScale and ProjectionCenter to the nodes' box, whose size is taken along the
    /// axes of the cylinder as ProjectionRotation turns it. With Z up for the camera they become
    /// (radius, height, radius), with Y up (radius, radius, height): a cylinder still to be turned.
    static void getScaleAndCenterFromGeometry(const std::vector<osg::NodePtr>& nodes,
                                              kyUVCylindricalProjectionSettings& settings);

    /// Sets ProjectionUAngle so that the image keeps its AspectRatio on a cylinder of radius x and
    /// height y of ProjectionScale. An image that would go around more than once goes around once,
    /// and the height shrinks.
    static void applyScalePreservingAspectRatio(kyUVCylindricalProjectionSettings& settings);

    /// Projects the nodes: stores the settings on each, and wraps the image around its geometry, or
    /// around the surfaces of its shell. UVs in the slot are written over; those beyond three for
    /// each triangle stay. A slot of another kind is replaced.
    ///
    /// The geometry has triangles of single indices afterwards, and vertices that are equal in all
    /// are one; ids of vertices change, the order of the triangles stays.
    ///
    /// Nodes that may not be projected stay as they are. What hinders all of it is logged: an empty
    /// list, only locked nodes, no support geometry. A node without positions of three floats gets
    /// the settings only. Linear in triangles.
    static void apply(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet uvSet,
                      const kyUVCylindricalProjectionSettings& settings);

protected:
    /// Projects one node, or the surfaces of its shell.
    ///
    /// matrix3D  from the cylinder's own space to the world; a singular one counts as the identity
    /// matrix2D  turns the image, which covers 0 to 1 in x and y
    /// angle     that the image spans, in degrees
    static void apply(const osg::NodePtr& node, kyUVTypes::UVSet uvSet, const osg::Matrix& matrix3D,
                      const osg::Matrix& matrix2D, float angle);
};
