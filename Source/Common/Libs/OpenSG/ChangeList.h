#pragma once

#include "OpenSG/FieldContainerPtr.h"
#include "OpenSG/FieldMask.h"

#include <vector>

namespace osg
{

/// A record of what changed, in order, for whoever brings another copy of the scene up to date.
class ChangeList
{
public:
    struct Change
    {
        unsigned id; ///< of the container, which may be gone by the time the list is read
        FieldMask mask;
    };

    /// Does nothing for a null container.
    void addChanged(const FieldContainerPtr& container, FieldMask mask);
    [[nodiscard]] const std::vector<Change>& getChanged() const { return _changes; }
    void clear() { _changes.clear(); }

private:
    std::vector<Change> _changes;
};

/// What a thread keeps for the scene graph.
class WinThreadBase
{
public:
    /// The list that this thread's changes go to; null unless one was set.
    static ChangeList* getCurrentChangeList();
    /// Sets the list of this thread, null for none. It stays the caller's and must outlive its use.
    static void setCurrentChangeList(ChangeList* list);
};

} // namespace osg
