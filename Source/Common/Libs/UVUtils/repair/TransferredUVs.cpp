#include "UVUtils/repair/TransferredUVs.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"
#include "OpenSG/WritableProperty.h"
#include "OpenSGUtils/kyGeoShuffle.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <utility>

void TransferredUVs::setUV(unsigned int vertex, const osg::Vec2f& uv)
{
    uvs[vertex] = uv;
    isSampled[vertex] = 1;
}

void TransferredUVs::addVertex(unsigned int source, const osg::Vec2f& uv,
                               std::vector<unsigned int> corners)
{
    sourceIds.push_back(source);
    newIds.push_back(static_cast<unsigned int>(vertexCount()));
    newUVs.push_back(uv);
    newCorners.push_back(std::move(corners));
}

void splitVertices(const osg::GeometryPtr& geometry, const TransferredUVs& transferred)
{
    if (transferred.newIds.empty())
        return;
    kyGeoShuffle::shuffleProperties(geometry, transferred.sourceIds.data(),
                                    static_cast<unsigned int>(transferred.sourceIds.size()),
                                    transferred.newIds.data(),
                                    static_cast<unsigned int>(transferred.vertexCount()), false);
    const osg::GeoIndicesPtr indices = osg::indicesToEdit(geometry, transferred.vertexCount());
    osg::writeIndices(indices, [&]<class Id>(std::span<Id> ids) {
        for (std::size_t i = 0; i < transferred.newIds.size(); ++i)
            for (const unsigned int corner : transferred.newCorners[i])
                ids[corner] = static_cast<Id>(transferred.newIds[i]);
    });
    osg::notifyChanged(indices, geometry, osg::Geometry::IndicesFieldMask);
}

void writeUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
              const TransferredUVs& transferred)
{
    const osg::GeoTexCoords2fPtr present = uvSlot(geometry, uvSet);
    const osg::RefPtr<osg::GeoTexCoords2f> property =
        present ? osg::writable(present)
                : osg::RefPtr<osg::GeoTexCoords2f>(osg::GeoTexCoords2f::create());
    property->resize(static_cast<unsigned int>(transferred.vertexCount()));
    const std::span<osg::Vec2f> values = property->values();
    for (std::size_t vertex = 0; vertex < transferred.uvs.size(); ++vertex)
        if (transferred.isSampled[vertex] != 0)
            values[vertex] = transferred.uvs[vertex];
    std::copy(transferred.newUVs.begin(), transferred.newUVs.end(),
              values.begin() + static_cast<std::ptrdiff_t>(transferred.uvs.size()));
    kyUVUtils::setTexSlot(geometry, uvSet, property.get());
}
