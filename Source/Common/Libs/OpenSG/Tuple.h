#pragma once

#include <concepts>
#include <type_traits>

namespace osg
{

/// N components of type T and nothing else, so that an array of tuples is an array of T. Zero at
/// the start. The storage of Vector, Point and the colours.
template <class T, unsigned N>
class Tuple
{
public:
    using Component = T;
    static constexpr unsigned Size = N;

    constexpr Tuple() = default;
    template <class... Components>
        requires(sizeof...(Components) == N && (std::convertible_to<Components, T> && ...))
    explicit constexpr Tuple(Components... components) : _components{static_cast<T>(components)...}
    {}

    /// From a tuple of another component type, component by component.
    template <class U>
        requires(!std::is_same_v<U, T> && std::is_convertible_v<U, T>)
    explicit constexpr Tuple(const Tuple<U, N>& other)
    {
        for (unsigned i = 0; i < N; ++i)
            _components[i] = static_cast<T>(other[i]);
    }

    constexpr T& operator[](unsigned i) { return _components[i]; }
    constexpr const T& operator[](unsigned i) const { return _components[i]; }
    constexpr T* getValues() { return _components; }
    constexpr const T* getValues() const { return _components; }

    /// Exact, component by component.
    friend constexpr bool operator==(const Tuple&, const Tuple&) = default;

private:
    T _components[N] = {};
};

} // namespace osg
