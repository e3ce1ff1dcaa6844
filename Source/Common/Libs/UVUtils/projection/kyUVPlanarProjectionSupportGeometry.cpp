#include "UVUtils/projection/kyUVPlanarProjectionSupportGeometry.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/TransformBase.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/projection/SupportMaterials.h"
#include "UVUtils/projection/SupportNodes.h"

#include <array>

kyUVPlanarProjectionSupportGeometry::kyUVPlanarProjectionSupportGeometry()
    : lineColor_(SupportNodes::lineColor)
{}

void kyUVPlanarProjectionSupportGeometry::init(const osg::BlendChunkPtr& blendChunk)
{
    makeMaterials(blendChunk);
    makeTree();
    kyNodeUtils::setTransformNodeTranslation(projectionTransformNode_, osg::Vec3f(0, 0, 1), true,
                                             kyNodeUtils::NoKeyFrame);
    initialProjectionMatrix_ =
        osg::coreAs<osg::TransformBase>(projectionTransformNode_)->getMatrix();
}

void kyUVPlanarProjectionSupportGeometry::makeMaterials(const osg::BlendChunkPtr& blendChunk)
{
    textureChunk_ = osg::TextureChunk::create();
    planeMaterial_ = SupportMaterials::makePlaneMaterial("kyTextureEditor::texmapmat",
                                                         {textureChunk_, blendChunk});
    frameMaterial_ =
        SupportMaterials::makeFrameMaterial("kyTextureEditor::texframemat", lineColor_, blendChunk);
}

void kyUVPlanarProjectionSupportGeometry::makeTree()
{
    // As good as endless, and still a number of which a float holds every unit.
    constexpr float lineLength = 10000000;
    const std::array direction{osg::Pnt3f(0, 0, 0), osg::Pnt3f(0, 0, -lineLength)};

    planeNode_ = SupportNodes::makePlane(2, 2, planeMaterial_);
    frameNode_ = SupportNodes::makeFrame(direction, frameMaterial_);
    planarTransformNode_ =
        SupportNodes::makeTransform("Planar Transform", {planeNode_, frameNode_});
    projectionTransformNode_ =
        SupportNodes::makeTransform("Projection Transform", {planarTransformNode_});
}

void kyUVPlanarProjectionSupportGeometry::setActive(bool isActive)
{
    SupportNodes::setActive(projectionTransformNode_, isActive);
}

void kyUVPlanarProjectionSupportGeometry::setOpacity(float opacity)
{
    SupportMaterials::setOpacity(planeMaterial_, opacity);
}

float kyUVPlanarProjectionSupportGeometry::getOpacity() const
{
    return SupportMaterials::getOpacity(planeMaterial_);
}

void kyUVPlanarProjectionSupportGeometry::setLineColor(const osg::Color3f& color)
{
    lineColor_ = color;
    if (!frameMaterial_)
        return;
    frameMaterial_->setDiffuse(color);
    osg::notifyChanged(frameMaterial_, osg::SimpleMaterial::DiffuseFieldMask);
}

void kyUVPlanarProjectionSupportGeometry::setMapPlaneTexture(const osg::ImagePtr& image)
{
    if (!textureChunk_)
        return;
    textureChunk_->setImage(image);
    osg::notifyChanged(textureChunk_, osg::TextureChunk::ImageFieldMask);
}
