#pragma once

#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "OpenSGExt/ValuePair.h"
#include "UVUtils/model/kyUVTypes.h"

#include <string>

/// Keeps the settings of a projection as texts on a node.
///
/// Keys are given without the prefix of the slot. All numbers are written to six significant
/// digits, in the C locale, whatever that of the process. Each write is told at once, in a notice
/// of its own on the osg::ValuePair. A copy writes to the same texts; they are held.
class kyUVProjectionSettingsWriter
{
public:
    /// Hangs an osg::ValuePair on a node that has none, and tells the node so. From one that is
    /// there the key of the old scale behaviour goes. With a null node nothing is ever written.
    kyUVProjectionSettingsWriter(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    void writeValue(const std::string& key, const std::string& value);
    /// For whole numbers.
    void writeInt(const std::string& key, float value);
    void writeFloat(const std::string& key, float value);
    void writeDouble(const std::string& key, double value);

private:
    osg::RefPtr<osg::ValuePair> pair_;
    std::string prefix_;
};
