#pragma once

#include "OpenSG/ConcreteContainer.h"

#include <cstdint>
#include <span>
#include <vector>

namespace osg
{

/// A picture of 8 bits a channel. Rows run from the bottom up, as v does, pixels from left to
/// right.
class Image : public ConcreteContainer<Image, FieldContainer>
{
public:
    static constexpr unsigned WidthFieldNumber = FieldContainer::NextFieldNumber;
    static constexpr unsigned HeightFieldNumber = WidthFieldNumber + 1;
    static constexpr unsigned ChannelsFieldNumber = WidthFieldNumber + 2;
    static constexpr unsigned PixelsFieldNumber = WidthFieldNumber + 3;
    static constexpr unsigned NextFieldNumber = WidthFieldNumber + 4;
    static constexpr FieldMask WidthFieldMask = FieldMask::bit(WidthFieldNumber);
    static constexpr FieldMask HeightFieldMask = FieldMask::bit(HeightFieldNumber);
    static constexpr FieldMask ChannelsFieldMask = FieldMask::bit(ChannelsFieldNumber);
    static constexpr FieldMask PixelsFieldMask = FieldMask::bit(PixelsFieldNumber);

    static FieldContainerType& getClassType();

    [[nodiscard]] unsigned getWidth() const { return _width; }
    [[nodiscard]] unsigned getHeight() const { return _height; }
    /// 1 grey, 2 grey and opacity, 3 red, green and blue, 4 these and opacity; 0 at the start.
    [[nodiscard]] unsigned getChannels() const { return _channels; }
    /// The channels of a pixel side by side, the pixels of a row, row after row.
    [[nodiscard]] std::span<const std::uint8_t> getPixels() const { return _pixels; }

    /// False, and nothing changes, unless there are 1 to 4 channels and width * height * channels
    /// bytes. Sends no notice.
    bool set(unsigned width, unsigned height, unsigned channels, std::vector<std::uint8_t> pixels);

private:
    friend ConcreteContainer<Image, FieldContainer>;

    Image() = default;
    Image(const Image&) = default;
    ~Image() override = default;

    unsigned _width = 0;
    unsigned _height = 0;
    unsigned _channels = 0;
    std::vector<std::uint8_t> _pixels;
};

using ImagePtr = Ptr<Image>;

} // namespace osg
