#include "UVUtils/projection/kyUVProjectionSettingsWriter.h"

#include "OpenSG/ChangeNotice.h"
#include "UVUtils/projection/SettingsKeys.h"
#include "UVUtils/projection/SettingsNumbers.h"

namespace
{

osg::ValuePairPtr hangNewPair(const osg::NodePtr& node)
{
    const osg::ValuePairPtr pair = osg::ValuePair::create();
    node->addAttachment(pair);
    osg::notifyChanged(node, osg::Node::AttachmentsFieldMask);
    return pair;
}

osg::ValuePairPtr pairToWrite(const osg::NodePtr& node)
{
    if (!node)
        return osg::NullFC;
    const osg::ValuePairPtr present = osg::ValuePair::find(node);
    if (!present)
        return hangNewPair(node);
    present->del(SettingsKeys::LegacyScaleBehavior);
    return present;
}

} // namespace

kyUVProjectionSettingsWriter::kyUVProjectionSettingsWriter(const osg::NodePtr& node,
                                                           kyUVTypes::UVSet uvSet)
    : pair_(pairToWrite(node)), prefix_(SettingsKeys::prefixOf(uvSet))
{}

void kyUVProjectionSettingsWriter::writeValue(const std::string& key, const std::string& value)
{
    if (!pair_)
        return;
    pair_->set(prefix_ + key, value);
    osg::notifyChanged(pair_, osg::ValuePair::ValueFieldMask);
}

void kyUVProjectionSettingsWriter::writeInt(const std::string& key, float value)
{
    writeDouble(key, static_cast<double>(value));
}

void kyUVProjectionSettingsWriter::writeFloat(const std::string& key, float value)
{
    writeDouble(key, static_cast<double>(value));
}

void kyUVProjectionSettingsWriter::writeDouble(const std::string& key, double value)
{
    writeValue(key, textOfNumber(value));
}
