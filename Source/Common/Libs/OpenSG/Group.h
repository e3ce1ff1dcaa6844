#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/NodeCore.h"

namespace osg
{

/// The core of a node that only holds others together.
class Group : public ConcreteContainer<Group, NodeCore>
{
public:
    static constexpr unsigned NextFieldNumber = NodeCore::NextFieldNumber;

    static FieldContainerType& getClassType();

protected:
    friend ConcreteContainer<Group, NodeCore>;

    Group() = default;
    Group(const Group&) = default;
    ~Group() override = default;
};

using GroupPtr = Ptr<Group>;

} // namespace osg
