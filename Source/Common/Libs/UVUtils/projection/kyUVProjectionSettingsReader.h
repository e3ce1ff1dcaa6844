#pragma once

#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "OpenSGExt/ValuePair.h"
#include "UVUtils/model/kyUVTypes.h"

#include <string>

/// Reads the settings of a projection from the texts that are kept on a node.
///
/// Keys are given without the prefix of the slot. A missing key reads as the default; so does every
/// key of a null node and of one without texts. Numbers are read in the C locale, whatever that of
/// the process. A copy reads from the same texts; they are held.
class kyUVProjectionSettingsReader
{
public:
    kyUVProjectionSettingsReader(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    /// Fills `value` and returns true if the key is there, else leaves `value` alone.
    bool readValue(const std::string& key, std::string& value) const;
    bool hasSetting(const std::string& key) const;

    /// "true" and "false" in letters of either case; else whether it is a number other than 0.
    bool readBool(const std::string& key, bool defaultValue) const;
    /// The default also for text that is no integer, and for one beyond the range of int.
    int readInt(const std::string& key, int defaultValue) const;
    /// 0 for text that is no number.
    float readFloat(const std::string& key, float defaultValue) const;
    /// Throws std::invalid_argument for text that is no number, and std::out_of_range for one
    /// that is too large or too small for a double.
    double readDouble(const std::string& key, double defaultValue) const;
    /// As readFloat, each component by itself.
    osg::Vec2f readVec2f(const std::string& keyX, const std::string& keyY,
                         const osg::Vec2f& defaultValue) const;
    osg::Vec3f readVec3f(const std::string& keyX, const std::string& keyY, const std::string& keyZ,
                         const osg::Vec3f& defaultValue) const;

    /// The projection that was stored; as readInt, so that a number may come back that is none.
    kyUVTypes::UVProjectionMode readMethod(kyUVTypes::UVProjectionMode defaultMethod) const;

private:
    osg::RefPtr<osg::ValuePair> pair_;
    std::string prefix_;
};
