#pragma once

#include "OpenSG/BlendChunk.h"
#include "OpenSG/SimpleMaterial.h"

#include <initializer_list>
#include <string>

/// The materials of what shows a projection. None is lit, each has a name, and their chunks stand
/// in osg::SimpleMaterial::AutoSlot; null chunks are left out.
namespace SupportMaterials
{

/// White, of which a fifth covers what is behind.
osg::SimpleMaterialPtr makePlaneMaterial(const std::string& name,
                                         std::initializer_list<osg::StateChunkPtr> chunks);

/// Thin smooth lines of one colour.
osg::SimpleMaterialPtr makeFrameMaterial(const std::string& name, const osg::Color3f& lineColor,
                                         const osg::BlendChunkPtr& blendChunk);

/// 1 covers, 0 is invisible. Without a material setting does nothing, and the opacity is 1. A set
/// value is reported as a change of the whole material.
void setOpacity(const osg::SimpleMaterialPtr& material, float opacity);
float getOpacity(const osg::SimpleMaterialPtr& material);

} // namespace SupportMaterials
