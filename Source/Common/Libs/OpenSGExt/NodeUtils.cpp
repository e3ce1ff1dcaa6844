#include "OpenSGExt/NodeUtils.h"

#include "OpenSGExt/NameAttachment.h"

namespace NodeUtils
{

const char* getName(const osg::NodePtr& node)
{
    return osg::NameAttachment::nameOf(node);
}

void setName(const osg::NodePtr& node, const std::string& name)
{
    osg::NameAttachment::rename(node, name);
}

} // namespace NodeUtils
