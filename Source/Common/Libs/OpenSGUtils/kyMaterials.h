#pragma once

#include "OpenSG/Material.h"

#include <string>

/// Names of materials.
namespace kyMaterials
{

/// Null for a null material and for one without a name. Good until the name changes or the material
/// goes.
const char* getName(const osg::MaterialPtr& material);

/// An empty name takes the name away. Does nothing for a null material; sends no notice.
void setName(const osg::MaterialPtr& material, const std::string& name);

} // namespace kyMaterials
