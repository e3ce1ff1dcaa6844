#pragma once

#include "OpenSG/Node.h"
#include "UVUtils/projection/SettingsKeys.h"

#include <array>

class kyUVBaseProjectionSettings;
class kyUVProjectionSettingsReader;
class kyUVProjectionSettingsWriter;

// Several keys at once: what the projections share in the reading and writing of their settings.

/// Are all three keys there?
bool areStored(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
               const std::array<const char*, 3>& keys);

osg::Vec3f readVector(const kyUVProjectionSettingsReader& reader,
                      const SettingsKeys::Vec3Keys& keys, const osg::Vec3f& defaultValue);

// These write the components in their order.

void writeVector(kyUVProjectionSettingsWriter& writer, const SettingsKeys::Vec2Keys& keys,
                 const osg::Vec2f& value);
void writeVector(kyUVProjectionSettingsWriter& writer, const SettingsKeys::Vec3Keys& keys,
                 const osg::Vec3f& value);

/// KeepAspectRatio, then AspectRatio.
void writeAspectRatio(kyUVProjectionSettingsWriter& writer,
                      const kyUVBaseProjectionSettings& settings);
