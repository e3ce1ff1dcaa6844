#include "OpenSG/NodeCore.h"

#include "OpenSG/Node.h"

namespace osg
{

FieldContainerType& NodeCore::getClassType()
{
    static auto& type = *new FieldContainerType(
        "NodeCore", &AttachmentContainer::getClassType(), nullptr,
        {containerField<&NodeCore::_parents>("parents", "MFNodePtr", ParentsFieldMask, true)});
    return type;
}

void NodeCore::accumulateMatrix(TransformationMatrix<float>& /*toWorld*/) const {}

} // namespace osg
