#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/GeoPropertyRoles.h"

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

namespace osg
{

namespace detail
{

template <class To, class From>
void assignComponents(To& to, const From& from)
{
    if constexpr (std::is_arithmetic_v<To>)
        to = static_cast<To>(
            std::min<std::common_type_t<To, From>>(from, std::numeric_limits<To>::max()));
    else
        for (unsigned i = 0; i < std::min(To::Size, From::Size); ++i)
            to[i] = from[i];
}

template <class To, class From>
To convertElement(const From& from)
{
    To to{};
    if constexpr (std::is_same_v<To, Color4f> && std::is_same_v<From, Color3f>)
        to[3] = 1.0F;
    assignComponents(to, from);
    return to;
}

} // namespace detail

/// A property that stores elements of one type in a packed array. Base of the kinds in
/// GeoProperty.h; a kind supplies its class name.
template <class Kind, class Role, class StoredElement>
class GeoPropertyKind : public ConcreteContainer<Kind, Role>
{
    using Base = ConcreteContainer<Kind, Role>;

public:
    using Element = StoredElement;
    using Value = typename Role::Value;

    static FieldContainerType& getClassType();

    [[nodiscard]] unsigned getSize() const override
    {
        return static_cast<unsigned>(_elements.size());
    }
    void resize(unsigned size) override { toWrite().resize(size); }
    void clear() override { toWrite().clear(); }
    [[nodiscard]] unsigned getStride() const override { return sizeof(Element); }

    /// The packed elements. A pointer or span goes stale when the size changes.
    Element* getData() { return toWrite().data(); }
    [[nodiscard]] const Element* getData() const { return _elements.data(); }
    std::span<Element> values() { return toWrite(); }
    [[nodiscard]] std::span<const Element> values() const { return _elements; }
    /// Puts a whole array in the place of the old one, without a copy.
    void takeValues(std::vector<Element> elements) { toWrite() = std::move(elements); }
    /// Takes the whole array out, without a copy: the property is empty then.
    std::vector<Element> releaseValues() { return std::exchange(toWrite(), {}); }

    [[nodiscard]] Value getValue(unsigned i) const override;
    void setValue(const Value& value, unsigned i) override;
    void addValue(const Value& value) override;
    [[nodiscard]] std::vector<Value> getValues() const override;
    void setValues(std::span<const Value> values) override;
    void gather(std::span<const unsigned> sourceIds) override;

protected:
    GeoPropertyKind() = default;
    GeoPropertyKind(const GeoPropertyKind&) = default;
    ~GeoPropertyKind() override = default;

    [[nodiscard]] const void* getRawData() const override { return _elements.data(); }

private:
    /// The only way to the elements for everything that writes: what the role remembers of them is
    /// forgotten (by a call that is not virtual, which costs nothing where a role remembers
    /// nothing).
    std::vector<Element>& toWrite()
    {
        Role::forgetDerived(Role::ValuesFieldMask);
        return _elements;
    }

    std::vector<Element> _elements;
};

template <class Kind, class Role, class StoredElement>
FieldContainerType& GeoPropertyKind<Kind, Role, StoredElement>::getClassType()
{
    static auto& type = *new FieldContainerType(
        Kind::ClassName, &Role::getClassType(), &Base::createContainer,
        {valueField<&GeoPropertyKind::_elements>("values", "MFValues", Role::ValuesFieldMask)});
    return type;
}

template <class Kind, class Role, class StoredElement>
auto GeoPropertyKind<Kind, Role, StoredElement>::getValue(unsigned i) const -> Value
{
    return i < _elements.size() ? detail::convertElement<Value>(_elements[i]) : Value{};
}

template <class Kind, class Role, class StoredElement>
void GeoPropertyKind<Kind, Role, StoredElement>::setValue(const Value& value, unsigned i)
{
    if (i < _elements.size())
        detail::assignComponents(toWrite()[i], value);
}

template <class Kind, class Role, class StoredElement>
void GeoPropertyKind<Kind, Role, StoredElement>::addValue(const Value& value)
{
    toWrite().push_back(detail::convertElement<Element>(value));
}

template <class Kind, class Role, class StoredElement>
auto GeoPropertyKind<Kind, Role, StoredElement>::getValues() const -> std::vector<Value>
{
    if constexpr (std::is_same_v<Value, Element>)
        return _elements;
    std::vector<Value> result(_elements.size());
    std::transform(_elements.begin(), _elements.end(), result.begin(),
                   [](const Element& element) { return detail::convertElement<Value>(element); });
    return result;
}

template <class Kind, class Role, class StoredElement>
void GeoPropertyKind<Kind, Role, StoredElement>::setValues(std::span<const Value> values)
{
    std::vector<Element>& elements = toWrite();
    elements.resize(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        detail::assignComponents(elements[i], values[i]);
}

template <class Kind, class Role, class StoredElement>
void GeoPropertyKind<Kind, Role, StoredElement>::gather(std::span<const unsigned> sourceIds)
{
    std::vector<Element> gathered(sourceIds.size());
    for (std::size_t i = 0; i < sourceIds.size(); ++i)
        if (sourceIds[i] < _elements.size())
            gathered[i] = _elements[sourceIds[i]];
    toWrite() = std::move(gathered);
}

} // namespace osg
