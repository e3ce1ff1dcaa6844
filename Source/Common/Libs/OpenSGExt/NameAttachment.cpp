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

} // namespace osg
