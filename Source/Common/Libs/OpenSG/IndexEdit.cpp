#include "OpenSG/IndexEdit.h"

#include "OpenSG/WritableProperty.h"

#include <cstdint>
#include <limits>

namespace osg
{

namespace
{

RefPtr<GeoIndices> widened(const GeoIndicesPtr& indices)
{
    const auto wide = GeoIndicesUI32::create();
    wide->takeValues(indices->getValues());
    return RefPtr<GeoIndices>(wide);
}

bool isTooNarrow(const GeoIndicesPtr& indices, std::size_t vertexCount)
{
    constexpr std::size_t highestId = std::numeric_limits<std::uint16_t>::max();
    return vertexCount > highestId + 1 && dcast<GeoIndicesUI16>(indices);
}

} // namespace

GeoIndicesPtr indicesToEdit(const GeometryPtr& geometry, std::size_t vertexCount)
{
    const GeoIndicesPtr indices = geometry->getIndices();
    if (!indices)
        return indices;
    geometry->setIndices(isTooNarrow(indices, vertexCount) ? widened(indices) : writable(indices));
    return geometry->getIndices();
}

} // namespace osg
