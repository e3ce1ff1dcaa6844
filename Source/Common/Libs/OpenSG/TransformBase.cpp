#include "OpenSG/TransformBase.h"

namespace osg
{

FieldContainerType& TransformBase::getClassType()
{
    static auto& type = *new FieldContainerType(
        "TransformBase", &NodeCore::getClassType(), nullptr,
        {valueField<&TransformBase::_matrix>("matrix", "SFMatrix", MatrixFieldMask)});
    return type;
}

void TransformBase::accumulateMatrix(TransformationMatrix<float>& toWorld) const
{
    toWorld *= _matrix;
}

} // namespace osg
