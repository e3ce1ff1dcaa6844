#pragma once

#include "OpenSG/FieldContainer.h"

#include <utility>

namespace osg
{

/// A handle that counts a reference for as long as it holds its container: the member type of a
/// field, and of whoever keeps a container beyond one call.
template <class T>
class RefPtr
{
public:
    RefPtr() = default;
    RefPtr(NullPtr) {}
    explicit RefPtr(const Ptr<T>& container) : _container(container) { acquire(); }
    RefPtr(const RefPtr& other) : _container(other._container) { acquire(); }
    RefPtr(RefPtr&& other) noexcept : _container(std::exchange(other._container, NullFC)) {}
    ~RefPtr() { release(_container); }

    RefPtr& operator=(const RefPtr& other) // NOLINT(bugprone-unhandled-self-assignment): is safe
    {
        return *this = other._container;
    }
    RefPtr& operator=(RefPtr&& other) noexcept
    {
        // Through a temporary: the release may run callbacks, which must see the new state.
        RefPtr taken(std::move(other));
        std::swap(_container, taken._container);
        return *this;
    }
    RefPtr& operator=(const Ptr<T>& container)
    {
        RefPtr taken(container);
        std::swap(_container, taken._container);
        return *this;
    }

    RefPtr& operator=(NullPtr) { return *this = Ptr<T>(); }

    const Ptr<T>& get() const { return _container; }
    T* operator->() const { return _container.get(); }
    T& operator*() const { return *_container; }
    explicit operator bool() const { return bool(_container); }

    template <class U>
        requires std::is_convertible_v<T*, U*>
    operator Ptr<U>() const
    {
        return _container;
    }
    operator FieldContainerPtr() const { return _container; }

    friend bool operator==(const RefPtr& a, const FieldContainerPtr& b)
    {
        return a._container == b;
    }
    friend bool operator==(const RefPtr& a, const RefPtr& b)
    {
        return a._container == b._container;
    }

private:
    void acquire() const
    {
        if (_container)
            _container->addRef();
    }
    static void release(const Ptr<T>& container)
    {
        if (container)
            container->subRef();
    }

    Ptr<T> _container;
};

} // namespace osg
