#pragma once

#include "OpenSG/Attachment.h"
#include "OpenSG/ConcreteContainer.h"

#include <string>

namespace osg
{

/// The name of a node.
class NameAttachment final : public ConcreteContainer<NameAttachment, Attachment>
{
public:
    static constexpr FieldMask NameFieldMask = FieldMask::bit(Attachment::NextFieldNumber);

    static FieldContainerType& getClassType();

    const std::string& getName() const { return _name; }
    void setName(std::string name) { _name = std::move(name); }

private:
    friend ConcreteContainer<NameAttachment, Attachment>;
    NameAttachment() = default;
    NameAttachment(const NameAttachment&) = default;

    std::string _name;
};

} // namespace osg
