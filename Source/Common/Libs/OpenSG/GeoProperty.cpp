#include "OpenSG/GeoProperty.h"

#include "OpenSG/IndexSpan.h"

#include <algorithm>

namespace osg
{

namespace
{

/// The type of a role: abstract, since only its kinds store anything.
FieldContainerType& newRoleType(const char* name)
{
    return *new FieldContainerType(name, &GeoProperty::getClassType(), nullptr, {});
}

/// One more than the largest number, 0 for none. Kept in the type of the numbers, which compilers
/// take several of at a time.
template <class Id>
std::int64_t endOf(std::span<const Id> ids)
{
    Id largest = 0;
    for (const Id id : ids)
        largest = std::max(largest, id);
    return ids.empty() ? 0 : std::int64_t{largest} + 1;
}

} // namespace

FieldContainerType& GeoProperty::getClassType()
{
    static auto& type =
        *new FieldContainerType("GeoProperty", &FieldContainer::getClassType(), nullptr, {});
    return type;
}

FieldContainerType& GeoPositions::getClassType()
{
    static auto& type = newRoleType("GeoPositions");
    return type;
}

FieldContainerType& GeoNormals::getClassType()
{
    static auto& type = newRoleType("GeoNormals");
    return type;
}

FieldContainerType& GeoColors::getClassType()
{
    static auto& type = newRoleType("GeoColors");
    return type;
}

FieldContainerType& GeoTexCoords::getClassType()
{
    static auto& type = newRoleType("GeoTexCoords");
    return type;
}

FieldContainerType& GeoIndices::getClassType()
{
    static auto& type = newRoleType("GeoIndices");
    return type;
}

std::uint64_t GeoIndices::getEndOfIds() const
{
    std::int64_t end = _endOfIds.load(std::memory_order_relaxed);
    if (end == NotKnown) {
        end = withIndices(this, [](const auto ids) { return endOf(ids); });
        _endOfIds.store(end, std::memory_order_relaxed);
    }
    return static_cast<std::uint64_t>(end);
}

void GeoIndices::forgetDerived(FieldMask /*changedFields*/)
{
    _endOfIds.store(NotKnown, std::memory_order_relaxed);
}

FieldContainerType& GeoPTypes::getClassType()
{
    static auto& type = newRoleType("GeoPTypes");
    return type;
}

FieldContainerType& GeoPLengths::getClassType()
{
    static auto& type = newRoleType("GeoPLengths");
    return type;
}

} // namespace osg
