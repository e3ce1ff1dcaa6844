#include "OpenSGUtils/kyGeoShuffle.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/WritableProperty.h"

#include <numeric>
#include <span>
#include <vector>

namespace kyGeoShuffle
{

namespace
{

/// The copying form as a rearranging one: the old vertex of each new one.
std::vector<unsigned int> sourceOfVertex(std::span<const unsigned int> ids,
                                         std::span<const unsigned int> targets,
                                         unsigned int newCount)
{
    std::vector<unsigned int> sources(newCount);
    std::iota(sources.begin(), sources.end(), 0U);
    for (std::size_t i = 0; i < ids.size(); ++i)
        if (targets[i] < newCount)
            sources[targets[i]] = ids[i];
    return sources;
}

void gatherProperties(const osg::GeometryPtr& geometry, std::span<const unsigned int> sources)
{
    osg::FieldMask written;
    std::vector<osg::RefPtr<osg::GeoProperty>> properties; // held, since a notice may replace them
    for (unsigned n = 0; n < osg::Geometry::VertexPropertyCount; ++n) {
        const osg::GeoPropertyPtr property = geometry->getVertexProperty(n);
        if (!property || property->getSize() == 0)
            continue;
        properties.push_back(osg::writable(property));
        properties.back()->gather(sources);
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
        gatherProperties(geometry, sources);
    else
        gatherProperties(geometry, sourceOfVertex(sources, std::span(targets, count), newCount));
}

} // namespace kyGeoShuffle
