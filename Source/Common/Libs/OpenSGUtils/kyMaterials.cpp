#include "OpenSGUtils/kyMaterials.h"

#include "OpenSGExt/NameAttachment.h"

namespace kyMaterials
{

const char* getName(const osg::MaterialPtr& material)
{
    return osg::NameAttachment::nameOf(material);
}

void setName(const osg::MaterialPtr& material, const std::string& name)
{
    osg::NameAttachment::rename(material, name);
}

} // namespace kyMaterials
