#include "UVUtils/editing/IndexEdit.h"

#include "OpenSG/WritableProperty.h"

#include <cstdint>
#include <limits>

namespace
{

osg::RefPtr<osg::GeoIndices> widened(const osg::GeoIndicesPtr& indices)
{
    const auto wide = osg::GeoIndicesUI32::create();
    wide->takeValues(indices->getValues());
    return osg::RefPtr<osg::GeoIndices>(wide);
}

bool isTooNarrow(const osg::GeoIndicesPtr& indices, unsigned int vertexCount)
{
    constexpr unsigned int highestId = std::numeric_limits<std::uint16_t>::max();
    return vertexCount > highestId + 1 && osg::dcast<osg::GeoIndicesUI16>(indices);
}

} // namespace

osg::GeoIndicesPtr indicesToEdit(const osg::GeometryPtr& geometry, unsigned int vertexCount)
{
    const osg::GeoIndicesPtr indices = geometry->getIndices();
    if (!indices)
        return indices;
    geometry->setIndices(isTooNarrow(indices, vertexCount) ? widened(indices)
                                                           : osg::writable(indices));
    return geometry->getIndices();
}
