#pragma once

#include "OpenSG/Attachment.h"
#include "OpenSG/ConcreteContainer.h"

#include <string>

namespace osg
{

/// The name of a node or a material.
class NameAttachment final : public ConcreteContainer<NameAttachment, Attachment>
{
public:
    static constexpr FieldMask NameFieldMask = FieldMask::bit(Attachment::NextFieldNumber);

    static FieldContainerType& getClassType();

    /// Null for a null container and for one without a name. Good until the name changes or the
    /// container goes.
    static const char* nameOf(const Ptr<AttachmentContainer>& container);
    /// An empty name takes the name away. Does nothing for null; sends no notice.
    static void rename(const Ptr<AttachmentContainer>& container, const std::string& name);

    const std::string& getName() const { return _name; }
    void setName(std::string name) { _name = std::move(name); }

private:
    friend ConcreteContainer<NameAttachment, Attachment>;
    NameAttachment() = default;
    NameAttachment(const NameAttachment&) = default;

    std::string _name;
};

} // namespace osg
