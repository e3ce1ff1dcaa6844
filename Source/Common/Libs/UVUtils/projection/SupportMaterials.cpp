#include "UVUtils/projection/SupportMaterials.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/LineChunk.h"
#include "OpenSGUtils/kyMaterials.h"

namespace SupportMaterials
{

namespace
{

osg::SimpleMaterialPtr makeUnlitMaterial(const std::string& name, const osg::Color3f& diffuse,
                                         std::initializer_list<osg::StateChunkPtr> chunks)
{
    const auto material = osg::SimpleMaterial::create();
    kyMaterials::setName(material, name);
    material->setLit(false);
    material->setDiffuse(diffuse);
    for (const osg::StateChunkPtr& chunk : chunks)
        material->addChunk(chunk, osg::SimpleMaterial::AutoSlot);
    return material;
}

void reportChanged(const osg::SimpleMaterialPtr& material)
{
    osg::notifyChanged(material, osg::FieldMask::all());
}

} // namespace

osg::SimpleMaterialPtr makePlaneMaterial(const std::string& name,
                                         std::initializer_list<osg::StateChunkPtr> chunks)
{
    const osg::SimpleMaterialPtr material = makeUnlitMaterial(name, osg::Color3f(1, 1, 1), chunks);
    material->setTransparency(0.8F);
    reportChanged(material);
    return material;
}

osg::SimpleMaterialPtr makeFrameMaterial(const std::string& name, const osg::Color3f& lineColor,
                                         const osg::BlendChunkPtr& blendChunk)
{
    const auto lines = osg::LineChunk::create();
    lines->setWidth(1);
    lines->setSmooth(true);
    const osg::SimpleMaterialPtr material = makeUnlitMaterial(name, lineColor, {lines, blendChunk});
    reportChanged(material);
    return material;
}

void setOpacity(const osg::SimpleMaterialPtr& material, float opacity)
{
    if (!material)
        return;
    material->setTransparency(1 - opacity);
    reportChanged(material);
}

float getOpacity(const osg::SimpleMaterialPtr& material)
{
    return material ? 1 - material->getTransparency() : 1.0F;
}

} // namespace SupportMaterials
