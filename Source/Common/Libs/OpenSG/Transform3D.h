#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/TransformBase.h"

namespace osg
{

/// A transform that is put together from fields:
///
///     matrix = T(translation) T(rotatePivot) R T(-rotatePivot) T(scalePivot) S T(-scalePivot)
///
/// so the scale acts first, about its pivot, then the rotation about its own, then the translation.
///
/// setMatrix keeps the matrix exactly and sets the fields to its parts, both pivots to zero
/// (see decompose). The next setter of a field composes the matrix anew from there, and what no
/// field can hold, shear, is gone then. Setters send no notice.
class Transform3D : public ConcreteContainer<Transform3D, TransformBase>
{
public:
    static constexpr unsigned TranslationFieldNumber = TransformBase::NextFieldNumber;
    static constexpr unsigned RotationFieldNumber = TranslationFieldNumber + 1;
    static constexpr unsigned ScaleFieldNumber = TranslationFieldNumber + 2;
    static constexpr unsigned RotatePivotFieldNumber = TranslationFieldNumber + 3;
    static constexpr unsigned ScalePivotFieldNumber = TranslationFieldNumber + 4;
    static constexpr unsigned NextFieldNumber = TranslationFieldNumber + 5;
    static constexpr FieldMask TranslationFieldMask = FieldMask::bit(TranslationFieldNumber);
    static constexpr FieldMask RotationFieldMask = FieldMask::bit(RotationFieldNumber);
    static constexpr FieldMask ScaleFieldMask = FieldMask::bit(ScaleFieldNumber);
    static constexpr FieldMask RotatePivotFieldMask = FieldMask::bit(RotatePivotFieldNumber);
    static constexpr FieldMask ScalePivotFieldMask = FieldMask::bit(ScalePivotFieldNumber);

    static FieldContainerType& getClassType();

    void setMatrix(const TransformationMatrix<float>& matrix) override;

    [[nodiscard]] const Vec3f& getTranslation() const { return _translation; }
    void setTranslation(const Vec3f& translation) { set(_translation, translation); }

    [[nodiscard]] const Quaternion& getRotationAsQuaternion() const { return _rotation; }
    /// Kept as given; the matrix is made from the normalised one.
    void setRotationAsQuaternion(const Quaternion& rotation) { set(_rotation, rotation); }

    /// Factors along the three axes; 0 and negative ones are allowed.
    [[nodiscard]] const Vec3f& getScale() const { return _scale; }
    void setScale(const Vec3f& scale) { set(_scale, scale); }

    /// The point that the rotation leaves in place, in the space below the node.
    [[nodiscard]] const Pnt3f& getRotatePivot() const { return _rotatePivot; }
    void setRotatePivot(const Pnt3f& pivot) { set(_rotatePivot, pivot); }

    /// The point that the scale leaves in place, in the space below the node.
    [[nodiscard]] const Pnt3f& getScalePivot() const { return _scalePivot; }
    void setScalePivot(const Pnt3f& pivot) { set(_scalePivot, pivot); }

protected:
    friend ConcreteContainer<Transform3D, TransformBase>;

    Transform3D() = default;
    Transform3D(const Transform3D&) = default;
    ~Transform3D() override = default;

private:
    template <class Value>
    void set(Value& field, const Value& value)
    {
        field = value;
        composeMatrix();
    }
    void composeMatrix();

    Vec3f _translation;
    Quaternion _rotation;
    Vec3f _scale{1, 1, 1};
    Pnt3f _rotatePivot;
    Pnt3f _scalePivot;
};

using Transform3DPtr = Ptr<Transform3D>;

} // namespace osg
