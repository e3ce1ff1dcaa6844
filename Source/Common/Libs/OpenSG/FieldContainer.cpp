#include "OpenSG/FieldContainer.h"

#include "OpenSG/FieldContainerFactory.h"

#include <utility>

namespace osg
{

bool FieldContainerPtr::_ignore_change = false;

FieldContainerType& FieldContainer::getClassType()
{
    static auto& type = *new FieldContainerType("FieldContainer", nullptr, nullptr, {});
    return type;
}

FieldContainer::FieldContainer() : _id(FieldContainerFactory::the()->enter(*this)) {}

FieldContainer::FieldContainer(const FieldContainer&) : FieldContainer() {}

FieldContainer::~FieldContainer()
{
    // destroy has done this already, unless the constructor of a derived class has thrown.
    FieldContainerFactory::the()->leave(_id);
}

void FieldContainer::subRef()
{
    // A destroy callback may count a reference and give it back: that must not destroy twice.
    if (--_refCount <= 0 && !_dying)
        destroy();
}

void FieldContainer::registerChangedCallback(std::shared_ptr<ChangedCallback> callback)
{
    if (callback && *callback)
        _changedCallbacks.push_back(std::move(callback));
}

void FieldContainer::registerOnDestroyCallback(std::shared_ptr<DestroyCallback> callback)
{
    if (callback && *callback)
        _destroyCallbacks.push_back(std::move(callback));
}

void FieldContainer::changed(FieldMask mask, unsigned origin)
{
    forgetDerived(mask);
    // A copy: a callback may register more, or drop the last reference to this container.
    const auto callbacks = _changedCallbacks;
    const unsigned id = _id;
    for (const auto& callback : callbacks)
        (*callback)(id, mask, origin);
}

void FieldContainer::destroy()
{
    _dying = true;
    FieldContainerFactory::the()->leave(_id);
    const auto callbacks = std::move(_destroyCallbacks);
    for (const auto& callback : callbacks)
        (*callback)(_id);
    delete this;
}

} // namespace osg
