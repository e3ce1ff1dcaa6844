#include "UVUtils/projection/kyUVProjectionSettingsReader.h"

#include "UVUtils/projection/SettingsKeys.h"
#include "UVUtils/projection/SettingsNumbers.h"

#include <algorithm>

namespace
{

std::string lowerCased(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return text;
}

bool boolOfText(const std::string& text)
{
    const std::string word = lowerCased(text);
    return word == "true" || (word != "false" && numberOfText(word) != 0.0);
}

} // namespace

kyUVProjectionSettingsReader::kyUVProjectionSettingsReader(const osg::NodePtr& node,
                                                           kyUVTypes::UVSet uvSet)
    : pair_(osg::ValuePair::find(node)), prefix_(SettingsKeys::prefixOf(uvSet))
{}

bool kyUVProjectionSettingsReader::readValue(const std::string& key, std::string& value) const
{
    return pair_ && pair_->get(prefix_ + key, value);
}

bool kyUVProjectionSettingsReader::hasSetting(const std::string& key) const
{
    std::string value;
    return readValue(key, value);
}

bool kyUVProjectionSettingsReader::readBool(const std::string& key, bool defaultValue) const
{
    std::string text;
    return readValue(key, text) ? boolOfText(text) : defaultValue;
}

int kyUVProjectionSettingsReader::readInt(const std::string& key, int defaultValue) const
{
    std::string text;
    return readValue(key, text) ? integerOfText(text).value_or(defaultValue) : defaultValue;
}

float kyUVProjectionSettingsReader::readFloat(const std::string& key, float defaultValue) const
{
    std::string text;
    return readValue(key, text) ? static_cast<float>(numberOfText(text)) : defaultValue;
}

double kyUVProjectionSettingsReader::readDouble(const std::string& key, double defaultValue) const
{
    std::string text;
    return readValue(key, text) ? requiredNumberOfText(text) : defaultValue;
}

osg::Vec2f kyUVProjectionSettingsReader::readVec2f(const std::string& keyX, const std::string& keyY,
                                                   const osg::Vec2f& defaultValue) const
{
    return osg::Vec2f(readFloat(keyX, defaultValue.x()), readFloat(keyY, defaultValue.y()));
}

osg::Vec3f kyUVProjectionSettingsReader::readVec3f(const std::string& keyX, const std::string& keyY,
                                                   const std::string& keyZ,
                                                   const osg::Vec3f& defaultValue) const
{
    return osg::Vec3f(readFloat(keyX, defaultValue.x()), readFloat(keyY, defaultValue.y()),
                      readFloat(keyZ, defaultValue.z()));
}

kyUVTypes::UVProjectionMode
kyUVProjectionSettingsReader::readMethod(kyUVTypes::UVProjectionMode defaultMethod) const
{
    return static_cast<kyUVTypes::UVProjectionMode>(readInt(SettingsKeys::Method, defaultMethod));
}
