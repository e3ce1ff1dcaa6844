#pragma once

#include "OpenSG/AttachmentContainer.h"

#include <vector>

namespace osg
{

/// Data that hangs on a node, a node core or a material. It can hang on several at once.
class Attachment : public FieldContainer
{
public:
    static constexpr unsigned ParentsFieldNumber = FieldContainer::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = ParentsFieldNumber + 1;
    static constexpr FieldMask ParentsFieldMask = FieldMask::bit(ParentsFieldNumber);

    static FieldContainerType& getClassType();

    /// The containers that this hangs on, in the order in which it was added to them; one that
    /// holds it under two bindings is there twice.
    [[nodiscard]] const std::vector<Ptr<AttachmentContainer>>& getParents() const
    {
        return _parents;
    }

protected:
    Attachment() = default;
    /// The copy hangs nowhere.
    Attachment(const Attachment& other) : FieldContainer(other) {}
    ~Attachment() override = default;

private:
    friend class AttachmentContainer;

    std::vector<Ptr<AttachmentContainer>> _parents;
};

} // namespace osg
