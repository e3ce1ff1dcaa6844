#pragma once

#include "OpenSG/FieldContainer.h"

namespace osg
{

/// One aspect of how something is drawn, such as its texture. Materials share chunks.
class StateChunk : public FieldContainer
{
public:
    static constexpr unsigned NextFieldNumber = FieldContainer::NextFieldNumber;

    static FieldContainerType& getClassType();

protected:
    StateChunk() = default;
    StateChunk(const StateChunk&) = default;
    ~StateChunk() override = default;
};

using StateChunkPtr = Ptr<StateChunk>;

} // namespace osg
