#include "OpenSG/TextureChunk.h"

namespace osg
{

FieldContainerType& TextureChunk::getClassType()
{
    static auto& type = *new FieldContainerType(
        "TextureChunk", &StateChunk::getClassType(), &TextureChunk::createContainer,
        {containerField<&TextureChunk::_image>("image", "SFImagePtr", ImageFieldMask)});
    return type;
}

} // namespace osg
