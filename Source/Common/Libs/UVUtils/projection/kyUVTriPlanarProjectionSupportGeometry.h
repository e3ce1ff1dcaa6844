#pragma once

#include "OpenSG/BlendChunk.h"
#include "OpenSG/Color.h"
#include "OpenSG/Node.h"
#include "OpenSG/SimpleMaterial.h"

/// Shows a triplanar projection, and holds its live transforms:
///
///     ProjectionTransform    the box's place in the world
///       X, Y, Z plane        the image's place on three of its sides: transforms with
///         plane              the square from -1 to 1 in x and y
///         frame              its border
///
/// The nodes belong to the application: it puts the root, getProjectionTransformNode, into its
/// scene, and that keeps the tree alive. This object and its copies, which share the nodes, count
/// no reference and are not to be used once the tree is gone. All of it belongs to the thread that
/// owns the scene graph.
class kyUVTriPlanarProjectionSupportGeometry
{
public:
    kyUVTriPlanarProjectionSupportGeometry();
    kyUVTriPlanarProjectionSupportGeometry(const kyUVTriPlanarProjectionSupportGeometry&) = default;
    kyUVTriPlanarProjectionSupportGeometry&
    operator=(const kyUVTriPlanarProjectionSupportGeometry&) = default;
    virtual ~kyUVTriPlanarProjectionSupportGeometry() = default;

    /// Builds the tree; called once. Until then the nodes are null.
    ///
    /// blendChunk  what the application's transparent materials share; may be null
    void init(const osg::BlendChunkPtr& blendChunk);

    /// Shows or hides the tree; shown at the start. Does nothing before init.
    void setActive(bool isActive);

    /// Of the planes, from 0 to 1, 0.2 at the start. Before init setting does nothing, and the
    /// opacity is 1.
    void setOpacity(float opacity);
    float getOpacity() const;

    osg::NodePtr getProjectionTransformNode() const { return projectionTransformNode_; }
    osg::NodePtr getXPlane() const { return xPlane_; }
    osg::NodePtr getYPlane() const { return yPlane_; }
    osg::NodePtr getZPlane() const { return zPlane_; }

protected:
    // What the tree is made of: new materials and nodes, each reported as changed once it is
    // finished.

    static osg::SimpleMaterialPtr createPlaneMaterial(const osg::BlendChunkPtr& blendChunk);
    osg::SimpleMaterialPtr createFrameMaterial(const osg::BlendChunkPtr& blendChunk) const;

    /// A transform with createSimplePlane and createPlaneFrame below it.
    static osg::NodePtr createPlane(const osg::SimpleMaterialPtr& planeMaterial,
                                    const osg::SimpleMaterialPtr& frameMaterial);
    static osg::NodePtr createSimplePlane(const osg::SimpleMaterialPtr& material);
    static osg::NodePtr createPlaneFrame(const osg::SimpleMaterialPtr& material);
    /// Along z, for a tree that shows its axes; this one doesn't.
    static osg::NodePtr createLine(const osg::SimpleMaterialPtr& material);

private:
    osg::NodePtr projectionTransformNode_;
    osg::NodePtr xPlane_;
    osg::NodePtr yPlane_;
    osg::NodePtr zPlane_;
    osg::SimpleMaterialPtr planeMaterial_;
    osg::Color3f lineColor_;
};
