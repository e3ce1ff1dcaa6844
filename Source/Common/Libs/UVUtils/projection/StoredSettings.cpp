#include "UVUtils/projection/StoredSettings.h"

#include "UVUtils/projection/kyUVBaseProjectionSettings.h"
#include "UVUtils/projection/kyUVProjectionSettingsReader.h"
#include "UVUtils/projection/kyUVProjectionSettingsWriter.h"

#include <algorithm>

bool areStored(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
               const std::array<const char*, 3>& keys)
{
    const kyUVProjectionSettingsReader reader(node, uvSet);
    return std::all_of(keys.begin(), keys.end(),
                       [&](const char* key) { return reader.hasSetting(key); });
}

osg::Vec3f readVector(const kyUVProjectionSettingsReader& reader,
                      const SettingsKeys::Vec3Keys& keys, const osg::Vec3f& defaultValue)
{
    return reader.readVec3f(keys.x, keys.y, keys.z, defaultValue);
}

void writeVector(kyUVProjectionSettingsWriter& writer, const SettingsKeys::Vec2Keys& keys,
                 const osg::Vec2f& value)
{
    writer.writeFloat(keys.x, value.x());
    writer.writeFloat(keys.y, value.y());
}

void writeVector(kyUVProjectionSettingsWriter& writer, const SettingsKeys::Vec3Keys& keys,
                 const osg::Vec3f& value)
{
    writer.writeFloat(keys.x, value.x());
    writer.writeFloat(keys.y, value.y());
    writer.writeFloat(keys.z, value.z());
}

void writeAspectRatio(kyUVProjectionSettingsWriter& writer,
                      const kyUVBaseProjectionSettings& settings)
{
    writer.writeValue(SettingsKeys::KeepAspectRatio,
                      settings.getKeepAspectRatio() ? "true" : "false");
    writer.writeDouble(SettingsKeys::AspectRatio, settings.getAspectRatio());
}
