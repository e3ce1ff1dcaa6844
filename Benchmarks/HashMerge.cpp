#include "HashMerge.h"

#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/UVSlot.h"

#include <array>
#include <bit>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace bench
{
namespace
{

using Corner = std::array<float, 5>;

struct CornerHash
{
    std::size_t operator()(const Corner& corner) const
    {
        std::uint64_t hash = 0;
        for (const float number : corner)
            hash = (hash ^ std::bit_cast<std::uint32_t>(number)) * 0x9E3779B97F4A7C15U;
        return hash ^ (hash >> 32U);
    }
};

} // namespace

unsigned int countDistinctCorners(const osg::GeometryPtr& geometry)
{
    const IndexView indices(geometry->getIndices());
    const auto uvs = std::as_const(*uvSlot(geometry, kyUVTypes::UVSet0)).values();
    const auto positions =
        std::as_const(*osg::dcast<osg::GeoPositions3f>(geometry->getPositions())).values();
    std::unordered_map<Corner, unsigned int, CornerHash> numbers;
    numbers.reserve(positions.size());
    for (const unsigned int id : indices.ids()) {
        const osg::Pnt3f& position = positions[id];
        numbers.try_emplace({position[0], position[1], position[2], uvs[id][0], uvs[id][1]},
                            static_cast<unsigned int>(numbers.size()));
    }
    return static_cast<unsigned int>(numbers.size());
}

} // namespace bench
