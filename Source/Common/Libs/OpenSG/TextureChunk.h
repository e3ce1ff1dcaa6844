#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/Image.h"
#include "OpenSG/RefPtr.h"
#include "OpenSG/StateChunk.h"

namespace osg
{

/// The picture on a surface; without an image the surface shows its plain colour.
class TextureChunk : public ConcreteContainer<TextureChunk, StateChunk>
{
public:
    static constexpr unsigned ImageFieldNumber = StateChunk::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = ImageFieldNumber + 1;
    static constexpr FieldMask ImageFieldMask = FieldMask::bit(ImageFieldNumber);

    static FieldContainerType& getClassType();

    [[nodiscard]] ImagePtr getImage() const { return _image.get(); }
    /// Counts a reference and releases what was there. Sends no notice.
    void setImage(const ImagePtr& image) { _image = image; }

private:
    friend ConcreteContainer<TextureChunk, StateChunk>;

    TextureChunk() = default;
    TextureChunk(const TextureChunk&) = default;
    ~TextureChunk() override = default;

    RefPtr<Image> _image;
};

using TextureChunkPtr = Ptr<TextureChunk>;

} // namespace osg
