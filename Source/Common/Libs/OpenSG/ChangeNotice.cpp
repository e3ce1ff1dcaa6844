#include "OpenSG/ChangeNotice.h"

#include "OpenSG/ChangeList.h"
#include "OpenSG/FieldContainer.h"

namespace osg
{

void notifyChanged(const FieldContainerPtr& container, FieldMask mask)
{
    if (container == NullFC)
        return;
    container->forgetDerived(mask);
    if (ChangeList* list = WinThreadBase::getCurrentChangeList())
        list->addChanged(container, mask);
    if (!FieldContainerPtr::_ignore_change)
        container->changed(mask, ChangeOriginCommit);
}

void notifyChanged(const FieldContainerPtr& property, const FieldContainerPtr& geometry,
                   FieldMask geometryMask)
{
    notifyChanged(property, FieldMask::all());
    notifyChanged(geometry, geometryMask);
}

} // namespace osg
