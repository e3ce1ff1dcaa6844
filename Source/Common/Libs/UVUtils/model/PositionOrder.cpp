#include "UVUtils/model/PositionOrder.h"

#include "UVUtils/model/FloatOrder.h"
#include "UVUtils/model/NearlySorted.h"
#include "UVUtils/model/RadixSort.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <numeric>

namespace
{

std::uint64_t planeKey(const osg::Pnt3f& position)
{
    return (std::uint64_t{orderedBits(position.x())} << 32U) | orderedBits(position.y());
}

struct PositionKey
{
    std::uint64_t plane;
    std::uint32_t height;
    unsigned int id;
    friend auto operator<=>(const PositionKey&, const PositionKey&) = default;
};

PositionKey keyOf(const osg::Pnt3f& position, unsigned int id)
{
    return {planeKey(position), orderedBits(position.z()), id};
}

/// Brings items that agree in x and y into the order of z.
void sortByHeight(std::span<KeyedId> items, std::span<const osg::Pnt3f> positions)
{
    for (KeyedId& item : items)
        item.key = orderedBits(positions[item.id].z());
    sortByKey(items);
}

void sortRunsByHeight(std::span<KeyedId> items, std::span<const osg::Pnt3f> positions)
{
    for (std::size_t begin = 0; begin < items.size();) {
        const std::uint64_t key = items[begin].key;
        std::size_t end = begin + 1;
        while (end < items.size() && items[end].key == key)
            ++end;
        if (end - begin > 1)
            sortByHeight(items.subspan(begin, end - begin), positions);
        begin = end;
    }
}

} // namespace

bool isBefore(const osg::Pnt3f& a, const osg::Pnt3f& b)
{
    for (unsigned int axis = 0; axis < 3; ++axis) {
        const std::uint32_t bitsA = orderedBits(a[axis]);
        const std::uint32_t bitsB = orderedBits(b[axis]);
        if (bitsA != bitsB)
            return bitsA < bitsB;
    }
    return false;
}

std::vector<unsigned int> orderByPosition(std::span<const osg::Pnt3f> positions)
{
    std::vector<unsigned int> order(positions.size());
    std::iota(order.begin(), order.end(), 0U);
    if (sortNearlySorted(order, [&](unsigned int id) { return keyOf(positions[id], id); }))
        return order;
    std::vector<KeyedId> items(positions.size());
    for (unsigned int id = 0; id < items.size(); ++id)
        items[id] = {planeKey(positions[id]), id};
    sortByKey(items);
    sortRunsByHeight(items, positions);
    std::transform(items.begin(), items.end(), order.begin(),
                   [](const KeyedId& item) { return item.id; });
    return order;
}
