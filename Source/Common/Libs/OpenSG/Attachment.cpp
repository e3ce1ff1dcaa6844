#include "OpenSG/Attachment.h"

#include "OpenSG/DropHolder.h"

#include <algorithm>
#include <utility>

namespace osg
{

namespace
{

constexpr std::size_t NoEntry = static_cast<std::size_t>(-1);

} // namespace

FieldContainerType& Attachment::getClassType()
{
    static auto& type =
        *new FieldContainerType("Attachment", &FieldContainer::getClassType(), nullptr,
                                {holderField<&Attachment::_parents>(
                                    "parents", "MFAttachmentContainerPtr", ParentsFieldMask)});
    return type;
}

FieldContainerType& AttachmentContainer::getClassType()
{
    static auto& type = *new FieldContainerType(
        "AttachmentContainer", &FieldContainer::getClassType(), nullptr,
        {{"attachments", "MFAttachmentPtr", AttachmentsFieldMask, false, nullptr,
          &AttachmentContainer::appendAttachments, &AttachmentContainer::copyAttachments}});
    return type;
}

AttachmentContainer::AttachmentContainer() = default;

AttachmentContainer::AttachmentContainer(const AttachmentContainer& other) : FieldContainer(other)
{
    for (const Entry& entry : other._attachments)
        addAttachment(entry.attachment, entry.binding);
}

AttachmentContainer::~AttachmentContainer()
{
    while (!_attachments.empty())
        subAttachment(_attachments.back().attachment, _attachments.back().binding);
}

AttachmentPtr AttachmentContainer::findAttachment(const FieldContainerType& type,
                                                  unsigned binding) const
{
    const std::size_t at = findEntry(type.getGroupId(), binding);
    return at == NoEntry ? AttachmentPtr() : _attachments[at].attachment.get();
}

void AttachmentContainer::addAttachment(const AttachmentPtr& attachment, unsigned binding)
{
    if (attachment == NullFC)
        return;
    const unsigned groupId = attachment->getType().getGroupId();
    const std::size_t at = findEntry(groupId, binding);
    if (at == NoEntry) {
        _attachments.push_back({groupId, binding, RefPtr<Attachment>(attachment)});
        attachment->_parents.emplace_back(this);
        return;
    }
    RefPtr<Attachment>& place = _attachments[at].attachment;
    if (place == attachment)
        return;
    const RefPtr<Attachment> replaced = std::exchange(place, RefPtr<Attachment>(attachment));
    attachment->_parents.emplace_back(this);
    dropParent(*replaced);
}

void AttachmentContainer::subAttachment(const AttachmentPtr& attachment, unsigned binding)
{
    if (attachment == NullFC)
        return;
    const std::size_t at = findEntry(attachment->getType().getGroupId(), binding);
    if (at == NoEntry || _attachments[at].attachment != attachment)
        return;
    // Out of both lists before the release, which may destroy the attachment and run callbacks.
    const RefPtr<Attachment> removed = std::move(_attachments[at].attachment);
    _attachments.erase(_attachments.begin() + static_cast<std::ptrdiff_t>(at));
    dropParent(*removed);
}

void AttachmentContainer::dropParent(Attachment& attachment)
{
    dropHolder(attachment._parents, Ptr<AttachmentContainer>(this));
}

void AttachmentContainer::appendAttachments(const FieldContainer& container,
                                            std::vector<FieldContainerPtr>& out)
{
    for (const Entry& entry : static_cast<const AttachmentContainer&>(container)._attachments)
        out.push_back(entry.attachment.get());
}

void AttachmentContainer::copyAttachments(const FieldContainer& from, FieldContainer& copy,
                                          const FieldDescription::Replacement& replacementOf)
{
    auto& holder = static_cast<AttachmentContainer&>(copy);
    for (const Entry& entry : static_cast<const AttachmentContainer&>(from)._attachments)
        holder.addAttachment(dcast<Attachment>(replacementOf(entry.attachment)), entry.binding);
}

std::size_t AttachmentContainer::findEntry(unsigned groupId, unsigned binding) const
{
    const auto found =
        std::find_if(_attachments.begin(), _attachments.end(), [&](const Entry& entry) {
            return entry.groupId == groupId && entry.binding == binding;
        });
    return found == _attachments.end() ? NoEntry
                                       : static_cast<std::size_t>(found - _attachments.begin());
}

} // namespace osg
