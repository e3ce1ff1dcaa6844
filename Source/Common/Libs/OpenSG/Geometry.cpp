#include "OpenSG/Geometry.h"

#include "OpenSG/TriangleIterator.h"

namespace osg
{

FieldContainerType& Geometry::getClassType()
{
    static auto& type = *new FieldContainerType("Geometry", &GeometryBase::getClassType(),
                                                &Geometry::createContainer, {});
    return type;
}

unsigned Geometry::getCornerStride() const
{
    const std::size_t entries = getIndexMapping().size();
    return entries > 1 ? static_cast<unsigned>(entries) : 1;
}

unsigned Geometry::getCornerOffset(std::uint16_t mapBit) const
{
    const auto& mapping = getIndexMapping();
    for (unsigned offset = 0; offset < mapping.size(); ++offset)
        if (mapping[offset] & mapBit)
            return offset;
    return 0;
}

TriangleIterator Geometry::beginTriangles() const
{
    return TriangleIterator(*this);
}

TriangleIterator Geometry::endTriangles() const
{
    return {};
}

} // namespace osg
