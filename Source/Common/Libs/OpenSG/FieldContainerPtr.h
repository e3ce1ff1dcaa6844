#pragma once

#include <compare>
#include <type_traits>

namespace osg
{

class FieldContainer;

struct NullPtr
{};

/// The empty handle: every handle can be made from it and compared with it.
inline constexpr NullPtr NullFC{};

/// A handle of a container: one raw pointer.
///
/// Handles do not count references and dangle when the container goes; whoever keeps one beyond a
/// call holds a RefPtr, or calls addRef and subRef. They compare and order by address, so the order
/// is good for sets and maps, and no result may depend on it.
class FieldContainerPtr
{
public:
    /// While set, no container tells its callbacks of a change (see notifyChanged). Process wide.
    static bool _ignore_change;

    constexpr FieldContainerPtr() = default;
    constexpr FieldContainerPtr(NullPtr) {}
    explicit constexpr FieldContainerPtr(FieldContainer* container) : _container(container) {}

    constexpr FieldContainer* get() const { return _container; }
    constexpr FieldContainer* operator->() const { return _container; }
    constexpr FieldContainer& operator*() const { return *_container; }
    explicit constexpr operator bool() const { return _container != nullptr; }

    friend constexpr bool operator==(const FieldContainerPtr& a, const FieldContainerPtr& b)
    {
        return a._container == b._container;
    }
    friend constexpr std::strong_ordering operator<=>(const FieldContainerPtr& a,
                                                      const FieldContainerPtr& b)
    {
        return std::compare_three_way{}(a._container, b._container);
    }

private:
    FieldContainer* _container = nullptr;
};

/// A handle of a container of class T or derived from it. Converts to handles of T's bases by
/// itself; the other way goes through dcast.
template <class T>
class Ptr : public FieldContainerPtr
{
public:
    constexpr Ptr() = default;
    constexpr Ptr(NullPtr) {}
    explicit Ptr(T* container) : FieldContainerPtr(container) {}

    template <class U>
        requires(!std::is_same_v<U, T> && std::is_convertible_v<U*, T*>)
    Ptr(const Ptr<U>& derived) : FieldContainerPtr(derived)
    {}

    T* get() const { return static_cast<T*>(FieldContainerPtr::get()); }
    T* operator->() const { return get(); }
    T& operator*() const { return *get(); }
};

/// The handle as one of class T, NullFC when the container is of another class or the handle null.
template <class T>
Ptr<T> dcast(const FieldContainerPtr& container)
{
    return Ptr<T>(dynamic_cast<T*>(container.get()));
}

} // namespace osg
