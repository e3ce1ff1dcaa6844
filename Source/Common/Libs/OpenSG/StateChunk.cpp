#include "OpenSG/StateChunk.h"

namespace osg
{

FieldContainerType& StateChunk::getClassType()
{
    static auto& type =
        *new FieldContainerType("StateChunk", &FieldContainer::getClassType(), nullptr, {});
    return type;
}

} // namespace osg
