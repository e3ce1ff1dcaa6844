#pragma once

#include "OpenSG/GeoPropertyBase.h"
#include "OpenSG/RefPtr.h"

namespace osg
{

/// A property that may be rewritten for the sake of one geometry that holds it: the given one if
/// nobody else holds it, else a copy, which the caller puts in its place. Not for null.
template <class Property>
RefPtr<Property> writable(const Ptr<Property>& property)
{
    if (property->getRefCount() <= 1)
        return RefPtr<Property>(property);
    return RefPtr<Property>(dcast<Property>(property->shallowCopy()));
}

} // namespace osg
