#include "OpenSGExt/NodeUtils.h"

#include "OpenSGExt/NameAttachment.h"

namespace NodeUtils
{

const char* getName(const osg::NodePtr& node)
{
    if (!node)
        return nullptr;
    const auto attachment =
        osg::dcast<osg::NameAttachment>(node->findAttachment(osg::NameAttachment::getClassType()));
    return attachment ? attachment->getName().c_str() : nullptr;
}

void setName(const osg::NodePtr& node, const std::string& name)
{
    if (!node)
        return;
    // A new attachment in any case: the present one may hang on other nodes too.
    const osg::AttachmentPtr present = node->findAttachment(osg::NameAttachment::getClassType());
    node->subAttachment(present);
    if (name.empty())
        return;
    const auto attachment = osg::NameAttachment::create();
    attachment->setName(name);
    node->addAttachment(attachment);
}

} // namespace NodeUtils
