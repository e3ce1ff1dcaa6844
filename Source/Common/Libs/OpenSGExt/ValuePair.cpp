#include "OpenSGExt/ValuePair.h"

namespace osg
{

FieldContainerType& ValuePair::getClassType()
{
    static auto& type = *new FieldContainerType(
        "ValuePair", &Attachment::getClassType(), &createContainer,
        {{"value", "MFString", ValueFieldMask, false, &ValuePair::writeEntries, nullptr}});
    return type;
}

void ValuePair::writeEntries(const FieldContainer& container, BinaryChecksumHandler& handler)
{
    const Entries& entries = static_cast<const ValuePair&>(container)._entries;
    detail::writeValue(handler, std::uint64_t{entries.size()});
    for (const auto& [key, value] : entries) {
        detail::writeValue(handler, key);
        detail::writeValue(handler, value);
    }
}

ValuePairPtr ValuePair::find(const Ptr<AttachmentContainer>& node)
{
    return node ? dcast<ValuePair>(node->findAttachment(getClassType())) : ValuePairPtr();
}

bool ValuePair::get(const std::string& key, std::string& value) const
{
    const auto entry = _entries.find(key);
    if (entry == _entries.end())
        return false;
    value = entry->second;
    return true;
}

void ValuePair::set(const std::string& key, const std::string& value)
{
    _entries.insert_or_assign(key, value);
}

void ValuePair::del(const std::string& key)
{
    _entries.erase(key);
}

} // namespace osg
