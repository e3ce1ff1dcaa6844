#include "UVUtils/undo/IndexChecksum.h"

#include "OpenSG/BinaryChecksumHandler.h"
#include "OpenSGExt/kyShellUtils.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVUtils.h"

#include <cstdint>
#include <vector>

namespace
{

/// 0 for null, and never 0 otherwise.
std::uint64_t checksumOf(const osg::GeoIndicesPtr& indices)
{
    osg::BinaryChecksumHandler handler;
    handler.write(indices);
    return handler.getValue();
}

/// The checksums of several index lists joined, and which children have none.
struct Expected
{
    std::uint64_t checksum = 0;
    std::vector<bool> isSkipped; ///< [child]
};

Expected expectedOf(const kyTopologyData& record, const osg::GeometryPtr& geometry)
{
    if (!kyUVUtils::useCMesh(geometry))
        return {geometry ? checksumOf(record.indices.get()) : 0, {}};
    Expected expected;
    for (const auto& indices : record.childIndices) {
        expected.isSkipped.push_back(!indices);
        expected.checksum ^= checksumOf(indices.get());
    }
    return expected;
}

std::uint64_t currentChecksum(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              const std::vector<bool>& isSkipped)
{
    if (!geometry)
        return 0;
    if (!kyShellUtils::isShell(geometry))
        return checksumOf(geometry->getIndices());
    std::uint64_t checksum = 0;
    for (const ActiveSurface& surface : activeSurfaces(node))
        if (surface.childIndex >= isSkipped.size() || !isSkipped[surface.childIndex])
            checksum ^= checksumOf(surface.geometry->getIndices());
    return checksum;
}

} // namespace

bool hasIndicesOf(const kyTopologyData& record, const osg::GeometryPtr& geometry,
                  const osg::NodePtr& node)
{
    const Expected expected = expectedOf(record, geometry);
    return expected.checksum == currentChecksum(geometry, node, expected.isSkipped);
}
