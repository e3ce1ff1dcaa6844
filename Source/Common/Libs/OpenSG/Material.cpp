#include "OpenSG/Material.h"

namespace osg
{

FieldContainerType& Material::getClassType()
{
    static auto& type = *new FieldContainerType("Material", &AttachmentContainer::getClassType(),
                                                &Material::createContainer, {});
    return type;
}

} // namespace osg
