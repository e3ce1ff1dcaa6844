#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGUtils/kyNodeUtils.h"

namespace kyNodeUtils
{

namespace
{

template <class Value>
using Setter = void (osg::Transform3D::*)(const Value&);

template <class Value>
void setField(const osg::NodePtr& node, Setter<Value> setter, const Value& value,
              osg::FieldMask mask)
{
    const osg::Transform3DPtr transform = osg::coreAs<osg::Transform3D>(node);
    if (!transform)
        return;
    (transform.get()->*setter)(value);
    osg::notifyChanged(transform, mask);
}

/// A pivot only moves what is transformed, so the translation alone can make up for it.
void setPivot(const osg::NodePtr& node, Setter<osg::Pnt3f> setter, const osg::Vec3f& pivot,
              bool keepsPlace, osg::FieldMask mask)
{
    const osg::Transform3DPtr transform = osg::coreAs<osg::Transform3D>(node);
    if (!transform)
        return;
    const osg::Vec3f before = transform->getMatrix().getColumn(3);
    (transform.get()->*setter)(osg::Pnt3f(pivot));
    if (keepsPlace) {
        const osg::Vec3f moved = transform->getMatrix().getColumn(3) - before;
        transform->setTranslation(transform->getTranslation() - moved);
        mask |= osg::Transform3D::TranslationFieldMask;
    }
    osg::notifyChanged(transform, mask);
}

} // namespace

void setTransformNodeTranslation(const osg::NodePtr& node, const osg::Vec3f& translation,
                                 bool isAbsolute, int /*keyFrame*/)
{
    const osg::Transform3DPtr transform = osg::coreAs<osg::Transform3D>(node);
    const bool isAdded = transform && !isAbsolute;
    setField(node, &osg::Transform3D::setTranslation,
             isAdded ? transform->getTranslation() + translation : translation,
             osg::Transform3D::TranslationFieldMask);
}

void setTransformNodeRotation(const osg::NodePtr& node, const osg::Vec3f& degrees, int /*keyFrame*/)
{
    setField(node, &osg::Transform3D::setRotationAsQuaternion,
             osg::Quaternion::fromEulerDegrees(degrees), osg::Transform3D::RotationFieldMask);
}

void setTransformNodeScale(const osg::NodePtr& node, const osg::Vec3f& factors, int /*keyFrame*/)
{
    setField(node, &osg::Transform3D::setScale, factors, osg::Transform3D::ScaleFieldMask);
}

void setTransformNodeScalePivot(const osg::NodePtr& node, const osg::Vec3f& pivot, bool keepsPlace,
                                int /*keyFrame*/)
{
    setPivot(node, &osg::Transform3D::setScalePivot, pivot, keepsPlace,
             osg::Transform3D::ScalePivotFieldMask);
}

void setTransformNodeRotatePivot(const osg::NodePtr& node, const osg::Vec3f& pivot, bool keepsPlace,
                                 int /*keyFrame*/)
{
    setPivot(node, &osg::Transform3D::setRotatePivot, pivot, keepsPlace,
             osg::Transform3D::RotatePivotFieldMask);
}

} // namespace kyNodeUtils
