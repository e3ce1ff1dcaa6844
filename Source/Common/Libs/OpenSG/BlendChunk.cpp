#include "OpenSG/BlendChunk.h"

namespace osg
{

FieldContainerType& BlendChunk::getClassType()
{
    static auto& type = *new FieldContainerType(
        "BlendChunk", &StateChunk::getClassType(), &BlendChunk::createContainer,
        {valueField<&BlendChunk::_sourceFactor>("sourceFactor", "SFUInt32", SourceFactorFieldMask),
         valueField<&BlendChunk::_destinationFactor>("destinationFactor", "SFUInt32",
                                                     DestinationFactorFieldMask)});
    return type;
}

} // namespace osg
