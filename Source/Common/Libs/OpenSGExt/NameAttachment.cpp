#include "OpenSGExt/NameAttachment.h"

namespace osg
{

FieldContainerType& NameAttachment::getClassType()
{
    static auto& type = *new FieldContainerType(
        "NameAttachment", &Attachment::getClassType(), &createContainer,
        {valueField<&NameAttachment::_name>("name", "SFString", NameFieldMask)});
    return type;
}

const char* NameAttachment::nameOf(const Ptr<AttachmentContainer>& container)
{
    if (container == NullFC)
        return nullptr;
    const auto attachment = dcast<NameAttachment>(container->findAttachment(getClassType()));
    return attachment ? attachment->getName().c_str() : nullptr;
}

void NameAttachment::rename(const Ptr<AttachmentContainer>& container, const std::string& name)
{
    if (container == NullFC)
        return;
    // A new attachment in any case: the present one may hang on other containers too.
    container->subAttachment(container->findAttachment(getClassType()));
    if (name.empty())
        return;
    const auto attachment = create();
    attachment->setName(name);
    container->addAttachment(attachment);
}

} // namespace osg
