#include "UVUtils/projection/kyUVTriPlanarProjectionSupportGeometry.h"

#include "OpenSGUtils/kyGeoFactory.h"
#include "UVUtils/projection/SupportMaterials.h"
#include "UVUtils/projection/SupportNodes.h"

kyUVTriPlanarProjectionSupportGeometry::kyUVTriPlanarProjectionSupportGeometry()
    : lineColor_(SupportNodes::lineColor)
{}

void kyUVTriPlanarProjectionSupportGeometry::init(const osg::BlendChunkPtr& blendChunk)
{
    planeMaterial_ = createPlaneMaterial(blendChunk);
    const osg::SimpleMaterialPtr frameMaterial = createFrameMaterial(blendChunk);
    xPlane_ = createPlane(planeMaterial_, frameMaterial);
    yPlane_ = createPlane(planeMaterial_, frameMaterial);
    zPlane_ = createPlane(planeMaterial_, frameMaterial);
    projectionTransformNode_ = SupportNodes::makeTransform(
        "kyUVEditor::TriplanarTextureProjection::ProjectionTransform", {xPlane_, yPlane_, zPlane_});
}

void kyUVTriPlanarProjectionSupportGeometry::setActive(bool isActive)
{
    SupportNodes::setActive(projectionTransformNode_, isActive);
}

void kyUVTriPlanarProjectionSupportGeometry::setOpacity(float opacity)
{
    SupportMaterials::setOpacity(planeMaterial_, opacity);
}

float kyUVTriPlanarProjectionSupportGeometry::getOpacity() const
{
    return SupportMaterials::getOpacity(planeMaterial_);
}

osg::SimpleMaterialPtr
kyUVTriPlanarProjectionSupportGeometry::createPlaneMaterial(const osg::BlendChunkPtr& blendChunk)
{
    return SupportMaterials::makePlaneMaterial(
        "kyUVEditor::TriplanarTextureProjection::planeMaterial", {blendChunk});
}

osg::SimpleMaterialPtr kyUVTriPlanarProjectionSupportGeometry::createFrameMaterial(
    const osg::BlendChunkPtr& blendChunk) const
{
    return SupportMaterials::makeFrameMaterial("kyUVEditor::TriplanarTextureProjection::FrameMat",
                                               lineColor_, blendChunk);
}

osg::NodePtr
kyUVTriPlanarProjectionSupportGeometry::createPlane(const osg::SimpleMaterialPtr& planeMaterial,
                                                    const osg::SimpleMaterialPtr& frameMaterial)
{
    return SupportNodes::makeTransform(
        "kyUVEditor::TriplanarTextureProjection::PlaneGroup",
        {createSimplePlane(planeMaterial), createPlaneFrame(frameMaterial)});
}

osg::NodePtr
kyUVTriPlanarProjectionSupportGeometry::createSimplePlane(const osg::SimpleMaterialPtr& material)
{
    return SupportNodes::makePlane(2, 2, material);
}

osg::NodePtr
kyUVTriPlanarProjectionSupportGeometry::createPlaneFrame(const osg::SimpleMaterialPtr& material)
{
    return SupportNodes::makeFrame({}, material);
}

osg::NodePtr
kyUVTriPlanarProjectionSupportGeometry::createLine(const osg::SimpleMaterialPtr& material)
{
    return SupportNodes::finish(
        kyGeoFactory::makeLine(osg::Pnt3f(0, 0, 0), osg::Pnt3f(0, 0, 500),
                               "kyUVEditor::TriplanarTextureProjection::Line", material));
}
