// How a compact mesh follows a change of topology that was done to it and to its surfaces.

#include "OpenSG/ChangeNotice.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/ShellArrays.h"
#include "UVUtils/compactmesh/VertexLinks.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <utility>

namespace
{

using Ids = std::vector<unsigned int>;

/// The F ids of each compact id, ascending.
Buckets<unsigned int> listFIds(const Ids& vertFToC, std::size_t compactCount)
{
    return {compactCount, [&](const auto& add) {
                for (unsigned int f = 0; f < vertFToC.size(); ++f)
                    add(vertFToC[f], f);
            }};
}

void writeSoleLength(const osg::GeoPLengthsPtr& lengths, unsigned int indexCount)
{
    if (!lengths || lengths->getSize() != 1)
        return;
    lengths->setValue(indexCount, 0);
    osg::notifyChanged(lengths, osg::FieldMask::all());
}

} // namespace

void CompactShellMesh::mapChanged(const osg::GeometryPtr& /*geometry*/, const osg::NodePtr& node,
                                  TopologyOpOutData* out)
{
    sortVertBuffCompactGeom(out);
    const auto positions = osg::dcast<osg::GeoPositions3f>(compactGeometry_->getPositions());
    const auto indices = osg::dcast<osg::GeoIndicesUI32>(compactGeometry_->getIndices());
    if (!positions || !indices || positions->getSize() == 0 || indices->getSize() == 0)
        return;

    const std::vector<ActiveSurface> surfaces = usableSurfaces(node);
    const Ids trianglesF = gatherTriangles(surfaces);
    auto links =
        linkThroughTriangles(trianglesF, vertexCountOf(surfaces), std::as_const(*indices).values(),
                             positions->getSize(), faceMapping_);
    if (!links) {
        // The surfaces are others than those that the tables tell of. The caller goes on with this
        // mesh, so it is built here, and by the next getCMesh again, which watches the surfaces.
        initStates(surfaces, slot_);
        touch();
        return;
    }
    vertFToC_ = std::move(links->vertFToC);
    linkLooseVertices(surfaces, *compactGeometry_, slot_, vertFToC_);
    vertCToF_ = listFIds(vertFToC_, positions->getSize());

    if (out)
        *out->prevFaceMapping = faceMapping_;
    // A torn vertex is one of the several that the mesh's triangles name: these are of no use then.
    indices->takeValues(
        sortAndBuildFaceMappings(trianglesF, links->isTorn ? Ids() : indices->releaseValues()));
    if (out)
        *out->nextFaceMapping = faceMapping_;

    osg::notifyChanged(indices, osg::FieldMask::all());
    writeSoleLength(compactGeometry_->getLengths(), indices->getSize());
    osg::notifyChanged(compactGeometry_.get(), osg::FieldMask::all());
    if (out)
        *out->nextIndices = indices->clone();
}

void CompactShellMesh::applySavedMapping(const kyTopologyData* data)
{
    if (data)
        faceMapping_ = data->faceMapping;
}
