#pragma once

#include "OpenSG/FieldContainerPtr.h"
#include "OpenSG/FieldMask.h"

namespace osg
{

/// The origin of a change that a notice reports.
inline constexpr unsigned ChangeOriginCommit = 1;

/// Tells that fields of a container changed: first the container itself, which forgets what it
/// remembers of them, then the thread's change list, if there is one, then the container's
/// callbacks, at once, unless FieldContainerPtr::_ignore_change is set. One call is one notice;
/// notices are never merged. Does nothing for a null container.
void notifyChanged(const FieldContainerPtr& container, FieldMask mask);

/// The two notices that end a write to a property: the property as a whole, then the fields of the
/// geometry that hold it. In this order, and both, since listeners may watch either. A null
/// property leaves the notice of the geometry.
void notifyChanged(const FieldContainerPtr& property, const FieldContainerPtr& geometry,
                   FieldMask geometryMask);

} // namespace osg
