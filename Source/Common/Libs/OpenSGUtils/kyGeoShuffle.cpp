#include "OpenSGUtils/kyGeoShuffle.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/WritableProperty.h"

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

/// `rewrite` gives one property its new elements.
template <class Rewrite>
void rewriteProperties(const osg::GeometryPtr& geometry, const Rewrite& rewrite)
{
    osg::FieldMask written;
    std::vector<osg::RefPtr<osg::GeoProperty>> properties; // held, since a notice may replace them
    for (unsigned n = 0; n < osg::Geometry::VertexPropertyCount; ++n) {
        const osg::GeoPropertyPtr property = geometry->getVertexProperty(n);
        if (!property || property->getSize() == 0)
            continue;
        properties.push_back(osg::writable(property));
        rewrite(*properties.back());
        geometry->setVertexProperty(n, properties.back());
        written |= osg::Geometry::vertexPropertyFieldMask(n);
    }
    for (const auto& property : properties)
        osg::notifyChanged(property.get(), osg::FieldMask::all());
    if (written.any())
        osg::notifyChanged(geometry, written);
}

} // namespace

void shuffleProperties(const osg::GeometryPtr& geometry, const unsigned int* ids,
                       unsigned int count, const unsigned int* targets, unsigned int newCount,
                       bool rearrange)
{
    if (!geometry)
        return;
    const std::span sources(ids, count);
    if (rearrange)
        rewriteProperties(geometry, [&](osg::GeoProperty& property) { property.gather(sources); });
    else
        rewriteProperties(geometry, [&](osg::GeoProperty& property) {
            copyElements(property, sources, std::span(targets, count), newCount);
        });
}

} // namespace kyGeoShuffle
