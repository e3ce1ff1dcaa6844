#pragma once

#include "OpenSG/FieldContainerPtr.h"
#include "OpenSG/FieldContainerType.h"
#include "OpenSG/FieldMask.h"

#include <functional>
#include <memory>
#include <vector>

namespace osg
{

/// The base of everything in the scene graph: an object with an id, a type with described fields,
/// a reference count, and callbacks for change and destruction.
///
/// Life. A container is made by the static create() of its class with count 0. A field that holds
/// it counts one reference, and so does whoever keeps it beyond a call. The last subRef destroys
/// it, in this order: its id stops resolving, its destroy callbacks run, its fields are released.
///
/// Change. Nothing that writes sends a notice by itself: after an edit the writer calls
/// notifyChanged (ChangeNotice.h).
///
/// Threads. Containers belong to the thread of the scene graph; other threads may read the packed
/// data of properties while nobody writes.
class FieldContainer
{
public:
    /// Receives the container's id, the fields that changed, and where the change came from.
    using ChangedCallback = std::function<void(unsigned, FieldMask, unsigned)>;
    /// Receives the id, which no longer resolves.
    using DestroyCallback = std::function<void(unsigned)>;

    /// The number of the first field of a derived class.
    static constexpr unsigned NextFieldNumber = 0;

    FieldContainer& operator=(const FieldContainer&) = delete;

    static FieldContainerType& getClassType();
    [[nodiscard]] virtual const FieldContainerType& getType() const = 0;

    /// Never 0 and never used again by another container.
    [[nodiscard]] unsigned getId() const { return _id; }

    void addRef() { ++_refCount; }
    /// Takes one reference back; at 0 or below the container is destroyed. On a fresh container
    /// (count 0) this is the way to throw it away.
    void subRef();
    [[nodiscard]] int getRefCount() const { return _refCount; }

    /// Each registration is called once for each change, in the order of registration; there is no
    /// way to take one back. A callback may register further ones; they hear of the next change.
    /// Empty functions are ignored. Callbacks must not throw.
    void registerChangedCallback(std::shared_ptr<ChangedCallback> callback);
    /// Each registration is called once, when the container is destroyed.
    void registerOnDestroyCallback(std::shared_ptr<DestroyCallback> callback);

    /// Tells the changed callbacks, at once. Writers go through notifyChanged instead.
    virtual void changed(FieldMask mask, unsigned origin);

    /// Drops what the container remembers about the content of fields that somebody wrote to.
    /// notifyChanged and changed call it before anybody hears of the change, and notifyChanged also
    /// when nobody is to hear.
    virtual void forgetDerived(FieldMask /*changedFields*/) {}

    /// A new container of the same class with count 0 and the same content. Containers in its
    /// fields are shared and counted; callbacks, the place in the graph (parents, children) and
    /// temporary lists are not taken over.
    [[nodiscard]] virtual FieldContainerPtr shallowCopy() const = 0;

protected:
    FieldContainer();
    FieldContainer(const FieldContainer&);
    virtual ~FieldContainer();

private:
    void destroy();

    unsigned _id;
    int _refCount = 0;
    bool _dying = false;
    std::vector<std::shared_ptr<ChangedCallback>> _changedCallbacks;
    std::vector<std::shared_ptr<DestroyCallback>> _destroyCallbacks;
};

} // namespace osg
