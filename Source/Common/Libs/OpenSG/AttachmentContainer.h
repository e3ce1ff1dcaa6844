#pragma once

#include "OpenSG/RefPtr.h"

#include <vector>

namespace osg
{

class Attachment;
using AttachmentPtr = Ptr<Attachment>;

/// A container that others can hang data on: the base of nodes, node cores and materials.
///
/// An attachment is found under the group of its type (FieldContainerType::getGroupId) and a
/// number, its binding, so that several of one group can hang on one container. None of the
/// operations sends a notice; callers do, with AttachmentsFieldMask.
class AttachmentContainer : public FieldContainer
{
public:
    static constexpr unsigned AttachmentsFieldNumber = FieldContainer::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = AttachmentsFieldNumber + 1;
    static constexpr FieldMask AttachmentsFieldMask = FieldMask::bit(AttachmentsFieldNumber);

    static FieldContainerType& getClassType();

    /// The attachment of the group of that type; NullFC if there is none.
    [[nodiscard]] AttachmentPtr findAttachment(const FieldContainerType& type,
                                               unsigned binding = 0) const;
    /// Counts a reference. Another attachment of the same group and binding is replaced and
    /// released. Does nothing for null and for one that hangs here already.
    void addAttachment(const AttachmentPtr& attachment, unsigned binding = 0);
    /// Does nothing if that very attachment does not hang here under the binding.
    void subAttachment(const AttachmentPtr& attachment, unsigned binding = 0);

protected:
    AttachmentContainer();
    /// The copy shares the attachments.
    AttachmentContainer(const AttachmentContainer& other);
    ~AttachmentContainer() override;

private:
    struct Entry
    {
        unsigned groupId;
        unsigned binding;
        RefPtr<Attachment> attachment;
    };

    static void appendAttachments(const FieldContainer& container,
                                  std::vector<FieldContainerPtr>& out);
    static void copyAttachments(const FieldContainer& from, FieldContainer& copy,
                                const FieldDescription::Replacement& replacementOf);
    [[nodiscard]] std::size_t findEntry(unsigned groupId, unsigned binding) const;
    /// Makes an attachment forget one time that it hangs on this.
    void dropParent(Attachment& attachment);

    std::vector<Entry> _attachments; ///< in order of being added; at most one for a key
};

} // namespace osg
