#pragma once

#include "OpenSG/BlendChunk.h"
#include "OpenSG/Color.h"
#include "OpenSG/Image.h"
#include "OpenSG/Matrix.h"
#include "OpenSG/Node.h"
#include "OpenSG/SimpleMaterial.h"
#include "OpenSG/TextureChunk.h"

/// Shows a planar projection, and holds its live transforms:
///
///     Projection Transform    the plane's place in the world, P
///       Planar Transform      the image's place on the plane, T
///         plane               the square from -1 to 1 in x and y, with the image on it
///         frame               its border, and a line along the direction of projection
///
/// so that the image covers what P T brings to that square.
///
/// The nodes belong to the application: it puts the root, getProjectionTransformNode, into its
/// scene, and that keeps the tree alive. This object and its copies, which share the nodes, count
/// no reference and are not to be used once the tree is gone. All of it belongs to the thread that
/// owns the scene graph.
class kyUVPlanarProjectionSupportGeometry
{
public:
    kyUVPlanarProjectionSupportGeometry();
    kyUVPlanarProjectionSupportGeometry(const kyUVPlanarProjectionSupportGeometry&) = default;
    kyUVPlanarProjectionSupportGeometry&
    operator=(const kyUVPlanarProjectionSupportGeometry&) = default;
    virtual ~kyUVPlanarProjectionSupportGeometry() = default;

    /// Builds the tree; called once. Until then the nodes are null.
    ///
    /// blendChunk  what the application's transparent materials share; may be null
    void init(const osg::BlendChunkPtr& blendChunk);

    /// Shows or hides the tree; shown at the start. Does nothing before init.
    void setActive(bool isActive);

    /// Of the plane, from 0 to 1, 0.2 at the start. Before init setting does nothing, and the
    /// opacity is 1.
    void setOpacity(float opacity);
    float getOpacity() const;

    /// Of the frame; before init it is kept for it.
    void setLineColor(const osg::Color3f& color);

    /// The image on the plane; null for none. Does nothing before init.
    void setMapPlaneTexture(const osg::ImagePtr& image);

    /// How far the plane stands off the projection's centre along its normal, in scene units. Only
    /// kept here; 0 at the start.
    void setPlaneDistance(float distance) { planeDistance_ = distance; }
    float getPlaneDistance() const { return planeDistance_; }

    const osg::NodePtr& getProjectionTransformNode() const { return projectionTransformNode_; }
    const osg::NodePtr& getPlanarTransformNode() const { return planarTransformNode_; }

    /// P as init left it.
    const osg::Matrix& getInitialProjectionMatrix() const { return initialProjectionMatrix_; }

private:
    void makeMaterials(const osg::BlendChunkPtr& blendChunk);
    void makeTree();

    osg::NodePtr projectionTransformNode_;
    osg::NodePtr planarTransformNode_;
    osg::NodePtr planeNode_;
    osg::NodePtr frameNode_;
    osg::TextureChunkPtr textureChunk_;
    osg::SimpleMaterialPtr planeMaterial_;
    osg::Color3f lineColor_;
    osg::SimpleMaterialPtr frameMaterial_;
    float planeDistance_ = 0;
    osg::Matrix initialProjectionMatrix_;
};
