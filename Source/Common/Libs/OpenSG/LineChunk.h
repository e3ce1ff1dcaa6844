#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/StateChunk.h"

namespace osg
{

/// How lines are drawn. Setters send no notice.
class LineChunk : public ConcreteContainer<LineChunk, StateChunk>
{
public:
    static constexpr unsigned WidthFieldNumber = StateChunk::NextFieldNumber;
    static constexpr unsigned SmoothFieldNumber = WidthFieldNumber + 1;
    static constexpr unsigned NextFieldNumber = WidthFieldNumber + 2;
    static constexpr FieldMask WidthFieldMask = FieldMask::bit(WidthFieldNumber);
    static constexpr FieldMask SmoothFieldMask = FieldMask::bit(SmoothFieldNumber);

    static FieldContainerType& getClassType();

    /// In pixels, 1 at the start.
    [[nodiscard]] float getWidth() const { return _width; }
    void setWidth(float width) { _width = width; }

    /// Whether the steps along a line are smoothed away; false at the start.
    [[nodiscard]] bool getSmooth() const { return _smooth; }
    void setSmooth(bool smooth) { _smooth = smooth; }

private:
    friend ConcreteContainer<LineChunk, StateChunk>;

    LineChunk() = default;
    LineChunk(const LineChunk&) = default;
    ~LineChunk() override = default;

    float _width = 1;
    bool _smooth = false;
};

using LineChunkPtr = Ptr<LineChunk>;

} // namespace osg
