#include "OpenSG/ChangeList.h"

#include "OpenSG/FieldContainer.h"

namespace osg
{

namespace
{

thread_local ChangeList* currentChangeList = nullptr;

} // namespace

void ChangeList::addChanged(const FieldContainerPtr& container, FieldMask mask)
{
    if (container)
        _changes.push_back({container->getId(), mask});
}

ChangeList* WinThreadBase::getCurrentChangeList()
{
    return currentChangeList;
}

void WinThreadBase::setCurrentChangeList(ChangeList* list)
{
    currentChangeList = list;
}

} // namespace osg
