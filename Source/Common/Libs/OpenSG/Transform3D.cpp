#include "OpenSG/Transform3D.h"

#include "OpenSG/MatrixDecomposition.h"

namespace osg
{

FieldContainerType& Transform3D::getClassType()
{
    static auto& type = *new FieldContainerType(
        "Transform3D", &TransformBase::getClassType(), &Transform3D::createContainer,
        {valueField<&Transform3D::_translation>("translation", "SFVec3f", TranslationFieldMask),
         valueField<&Transform3D::_rotation>("rotation", "SFQuaternion", RotationFieldMask),
         valueField<&Transform3D::_scale>("scale", "SFVec3f", ScaleFieldMask),
         valueField<&Transform3D::_rotatePivot>("rotatePivot", "SFPnt3f", RotatePivotFieldMask),
         valueField<&Transform3D::_scalePivot>("scalePivot", "SFPnt3f", ScalePivotFieldMask)});
    return type;
}

void Transform3D::setMatrix(const TransformationMatrix<float>& matrix)
{
    TransformBase::setMatrix(matrix);
    const TransformParts parts = decompose(matrix);
    _translation = parts.translation;
    _rotation = parts.rotation;
    _scale = parts.scale;
    _rotatePivot = Pnt3f();
    _scalePivot = Pnt3f();
}

void Transform3D::composeMatrix()
{
    // In double: a pivot far away goes in and out again, and must leave nothing behind.
    using MatrixD = TransformationMatrix<double>;
    using VectorD = Vector<double, 3>;
    const VectorD rotatePivot(_rotatePivot.subZero());
    const VectorD scalePivot(_scalePivot.subZero());
    const MatrixD matrix = MatrixD::translation(VectorD(_translation) + rotatePivot) *
                           MatrixD::rotation(QuaternionBase<double>(_rotation).normalized()) *
                           MatrixD::translation(scalePivot - rotatePivot) *
                           MatrixD::scaling(VectorD(_scale)) * MatrixD::translation(-scalePivot);
    TransformBase::setMatrix(TransformationMatrix<float>(matrix));
}

} // namespace osg
