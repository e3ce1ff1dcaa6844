#include "OpenSG/NodeCore.h"

#include "OpenSG/Node.h"

namespace osg
{

FieldContainerType& NodeCore::getClassType()
{
    static auto& type = *new FieldContainerType(
        "NodeCore", &AttachmentContainer::getClassType(), nullptr,
        {holderField<&NodeCore::_parents>("parents", "MFNodePtr", ParentsFieldMask)});
    return type;
}

void NodeCore::accumulateMatrix(TransformationMatrix<float>& /*toWorld*/) const {}

} // namespace osg
