#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/StateChunk.h"

#include <cstdint>

namespace osg
{

/// How a transparent surface mixes with what is behind it:
///
///     colour = source factor * its own colour + destination factor * the colour behind
///
/// At the start its opacity and what that leaves. Setters send no notice.
class BlendChunk : public ConcreteContainer<BlendChunk, StateChunk>
{
public:
    enum Factor : std::uint32_t
    {
        Zero,
        One,
        SourceAlpha,
        OneMinusSourceAlpha
    };

    static constexpr unsigned SourceFactorFieldNumber = StateChunk::NextFieldNumber;
    static constexpr unsigned DestinationFactorFieldNumber = SourceFactorFieldNumber + 1;
    static constexpr unsigned NextFieldNumber = SourceFactorFieldNumber + 2;
    static constexpr FieldMask SourceFactorFieldMask = FieldMask::bit(SourceFactorFieldNumber);
    static constexpr FieldMask DestinationFactorFieldMask =
        FieldMask::bit(DestinationFactorFieldNumber);

    static FieldContainerType& getClassType();

    [[nodiscard]] Factor getSourceFactor() const { return _sourceFactor; }
    void setSourceFactor(Factor factor) { _sourceFactor = factor; }
    [[nodiscard]] Factor getDestinationFactor() const { return _destinationFactor; }
    void setDestinationFactor(Factor factor) { _destinationFactor = factor; }

private:
    friend ConcreteContainer<BlendChunk, StateChunk>;

    BlendChunk() = default;
    BlendChunk(const BlendChunk&) = default;
    ~BlendChunk() override = default;

    Factor _sourceFactor = SourceAlpha;
    Factor _destinationFactor = OneMinusSourceAlpha;
};

using BlendChunkPtr = Ptr<BlendChunk>;

} // namespace osg
