#pragma once

#include "OpenSG/BlendChunk.h"
#include "OpenSG/Node.h"
#include "OpenSG/SimpleMaterial.h"

#include <array>

class kyUVCylindricalProjectionSettings;

/// Shows a cylindrical projection, and holds its live transforms:
///
///     3D transform              the cylinder's place in the world
///       group
///         cylinder              of radius 1 around y, from -0.5 to 0.5
///         two limit planes      transforms that swing about the axis to the image's left and right
///           plane               edge; they reach from the axis to the side
///
///     2D transform              the image's place on the side, a node by itself
///
/// The nodes belong to the application: it puts both roots into its scene, and that keeps the trees
/// alive. This object and its copies, which share the nodes, count no reference and are not to be
/// used once the trees are gone. All of it belongs to the thread that owns the scene graph.
class kyUVCylindricalProjectionSupportGeometry
{
public:
    kyUVCylindricalProjectionSupportGeometry() = default;
    kyUVCylindricalProjectionSupportGeometry(const kyUVCylindricalProjectionSupportGeometry&) =
        default;
    kyUVCylindricalProjectionSupportGeometry&
    operator=(const kyUVCylindricalProjectionSupportGeometry&) = default;
    virtual ~kyUVCylindricalProjectionSupportGeometry() = default;

    /// Builds the trees; called once. Until then the nodes are null.
    ///
    /// blendChunk  what the application's transparent materials share; may be null
    void init(const osg::BlendChunkPtr& blendChunk);

    /// Shows or hides the cylinder; hidden at the start. Does nothing before init.
    void setActive(bool isActive);

    /// Of the cylinder and the limit planes, from 0 to 1, 0.2 at the start. Does nothing before
    /// init.
    void setOpacity(float opacity);

    /// Turns the limit planes to the edges of an image that goes so many degrees around the
    /// cylinder, with its middle on +z. Does nothing before init.
    void setProjectionUAngle(double angle);

    /// Brings the trees to some settings; no geometry changes. Does nothing before init.
    void applySettings(const kyUVCylindricalProjectionSettings& settings);

    const osg::NodePtr& getCylindricTransform3D() const { return transform3D_; }
    const osg::NodePtr& getCylindricTransform2D() const { return transform2D_; }

private:
    osg::NodePtr makeLimitPlane() const;

    osg::NodePtr groupNode_;
    osg::NodePtr cylinderNode_;
    osg::NodePtr transform3D_;
    osg::NodePtr transform2D_;
    std::array<osg::NodePtr, 2> limitPlanes_; ///< at the left and at the right edge
    osg::SimpleMaterialPtr material_;
};
