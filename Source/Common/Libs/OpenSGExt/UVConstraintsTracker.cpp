#include "OpenSGExt/UVConstraintsTracker.h"

#include <memory>

UVConstraintsTracker* UVConstraintsTracker::the()
{
    static auto* tracker = new UVConstraintsTracker;
    return tracker;
}

void UVConstraintsTracker::noteChange(const osg::GeometryPtr& geometry, bool changedU,
                                      bool changedV)
{
    static const auto onDestroy = std::make_shared<osg::FieldContainer::DestroyCallback>(
        [](unsigned id) { the()->_entries.erase(id); });

    const auto [entry, isNew] = _entries.try_emplace(geometry->getId());
    // A registration can't be taken back, so there is one for as long as there is an entry.
    if (isNew)
        geometry->registerOnDestroyCallback(onDestroy);
    if (changedU)
        entry->second.u = Stamp::Outdated;
    if (changedV)
        entry->second.v = Stamp::Outdated;
}
