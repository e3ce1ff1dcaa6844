#include "OpenSG/LineChunk.h"

namespace osg
{

FieldContainerType& LineChunk::getClassType()
{
    static auto& type = *new FieldContainerType(
        "LineChunk", &StateChunk::getClassType(), &LineChunk::createContainer,
        {valueField<&LineChunk::_width>("width", "SFReal32", WidthFieldMask),
         valueField<&LineChunk::_smooth>("smooth", "SFBool", SmoothFieldMask)});
    return type;
}

} // namespace osg
