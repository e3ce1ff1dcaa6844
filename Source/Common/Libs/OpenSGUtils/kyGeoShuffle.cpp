#include "OpenSGUtils/kyGeoShuffle.h"

#include "OpenSGUtils/VertexPropertyEdit.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace kyGeoShuffle
{

namespace
{

/// Gives a property that many elements and copies some of its old ones, whatever they are: just
/// those are touched, unless the property has to grow out of its memory.
void copyElements(osg::GeoProperty& property, std::span<const unsigned int> sources,
                  std::span<const unsigned int> targets, unsigned int newCount)
{
    const std::size_t stride = property.getStride();
    const auto elementsOf = [&] { return static_cast<std::byte*>(property.getData()); };
    std::vector<std::byte> copies(stride * sources.size());
    for (std::size_t i = 0; i < sources.size(); ++i)
        if (sources[i] < property.getSize())
            std::copy_n(elementsOf() + stride * sources[i], stride, copies.data() + stride * i);
    property.resize(newCount);
    for (std::size_t i = 0; i < sources.size(); ++i)
        if (targets[i] < newCount)
            std::copy_n(copies.data() + stride * i, stride, elementsOf() + stride * targets[i]);
}

} // namespace

void shuffleProperties(const osg::GeometryPtr& geometry, const unsigned int* ids,
                       unsigned int count, const unsigned int* targets, unsigned int newCount,
                       bool rearrange)
{
    if (!geometry)
        return;
    const std::span sources(ids, count);
    const VertexPropertyEdit edit(geometry, [&](osg::GeoProperty& property) {
        if (rearrange)
            property.gather(sources);
        else
            copyElements(property, sources, std::span(targets, count), newCount);
    });
    edit.notify();
}

} // namespace kyGeoShuffle
