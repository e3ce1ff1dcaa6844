#include "OpenSG/Image.h"

#include <utility>

namespace osg
{

FieldContainerType& Image::getClassType()
{
    static auto& type = *new FieldContainerType(
        "Image", &FieldContainer::getClassType(), &Image::createContainer,
        {valueField<&Image::_width>("width", "SFUInt32", WidthFieldMask),
         valueField<&Image::_height>("height", "SFUInt32", HeightFieldMask),
         valueField<&Image::_channels>("channels", "SFUInt32", ChannelsFieldMask),
         valueField<&Image::_pixels>("pixels", "MFUInt8", PixelsFieldMask)});
    return type;
}

bool Image::set(unsigned width, unsigned height, unsigned channels,
                std::vector<std::uint8_t> pixels)
{
    if (channels < 1 || channels > 4)
        return false;
    // Divided, since the product of three numbers may be too large for any of them.
    const std::uint64_t pixelCount = std::uint64_t{width} * height;
    if (pixels.size() % channels != 0 || pixels.size() / channels != pixelCount)
        return false;
    _width = width;
    _height = height;
    _channels = channels;
    _pixels = std::move(pixels);
    return true;
}

} // namespace osg
