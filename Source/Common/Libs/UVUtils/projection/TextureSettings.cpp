// What kyUVTextureProjection reads from single keys.

#include "UVUtils/projection/LeastMagnitude.h"
#include "UVUtils/projection/SettingsKeys.h"
#include "UVUtils/projection/SettingsNumbers.h"
#include "UVUtils/projection/kyUVProjectionSettingsReader.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

#include <cmath>
#include <string>

namespace
{

constexpr float LeastTextureScale = 0.0001F;

float usableTextureScale(float stored)
{
    return std::isfinite(stored) ? withLeastMagnitude(stored, LeastTextureScale) : 1.0F;
}

} // namespace

kyUVTypes::UVProjectionMode kyUVTextureProjection::readMethod(const osg::NodePtr& node,
                                                              kyUVTypes::UVSet uvSet)
{
    return readMethod(kyUVProjectionSettingsReader(node, uvSet), kyUVTypes::NoProjection);
}

kyUVTypes::UVProjectionMode
kyUVTextureProjection::readMethod(const kyUVProjectionSettingsReader& reader,
                                  kyUVTypes::UVProjectionMode defaultMethod)
{
    return reader.readMethod(defaultMethod);
}

kyUVTextureProjection::LegacyFitScaleBehavior
kyUVTextureProjection::readLegacyScaleBehavior(const osg::ValuePairPtr& pair)
{
    std::string text;
    if (!pair || !pair->get(SettingsKeys::LegacyScaleBehavior, text))
        return NoLegacyFit;
    const int stored = integerOfText(text).value_or(NoLegacyFit);
    return stored == LegacyFit1 || stored == LegacyFit2
               ? static_cast<LegacyFitScaleBehavior>(stored)
               : NoLegacyFit;
}

bool kyUVTextureProjection::readKeepAspectRatio(const kyUVProjectionSettingsReader& reader,
                                                bool defaultKeep)
{
    std::string text;
    return reader.readValue(SettingsKeys::KeepAspectRatio, text) ? text == "true" : defaultKeep;
}

double kyUVTextureProjection::readAspectRatio(const kyUVProjectionSettingsReader& reader,
                                              double defaultRatio)
{
    return reader.readDouble(SettingsKeys::AspectRatio, defaultRatio);
}

osg::Vec2f kyUVTextureProjection::readTextureScale(const kyUVProjectionSettingsReader& reader,
                                                   const osg::Vec2f& defaultScale)
{
    const auto readComponent = [&](const char* key, float defaultValue) {
        return reader.hasSetting(key) ? usableTextureScale(reader.readFloat(key, defaultValue))
                                      : defaultValue;
    };
    return osg::Vec2f(readComponent(SettingsKeys::TextureScale.x, defaultScale.x()),
                      readComponent(SettingsKeys::TextureScale.y, defaultScale.y()));
}

osg::Vec2f kyUVTextureProjection::readTextureOffset(const kyUVProjectionSettingsReader& reader,
                                                    const osg::Vec2f& defaultOffset)
{
    return reader.readVec2f(SettingsKeys::TextureOffset.x, SettingsKeys::TextureOffset.y,
                            defaultOffset);
}

osg::Vec2f kyUVTextureProjection::readTextureSize(const kyUVProjectionSettingsReader& reader,
                                                  const osg::Vec2f& defaultSize)
{
    return reader.readVec2f(SettingsKeys::TextureSize.x, SettingsKeys::TextureSize.y, defaultSize);
}
