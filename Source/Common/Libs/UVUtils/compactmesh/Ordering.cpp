// The canonical orders of a compact mesh: vertices by position, triangles by compact ids.

#include "OpenSG/ChangeNotice.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/FaceTables.h"
#include "UVUtils/model/PositionOrder.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <algorithm>

namespace
{

std::vector<unsigned int> inverseOf(const std::vector<unsigned int>& order)
{
    std::vector<unsigned int> inverse(order.size());
    for (unsigned int i = 0; i < order.size(); ++i)
        inverse[order[i]] = i;
    return inverse;
}

/// Moves recorded shuffles to the new numbers of the vertices, so that they stay true.
void renumberShuffles(TopologyOpOutData& out, const std::vector<unsigned int>& order,
                      const std::vector<unsigned int>& newIdOf)
{
    std::vector<unsigned int> next(out.nextShuffle->size());
    for (std::size_t i = 0; i < next.size(); ++i)
        next[i] = (*out.nextShuffle)[order[i]];
    *out.nextShuffle = std::move(next);
    for (unsigned int& vertex : *out.prevShuffle)
        vertex = newIdOf[vertex];
}

} // namespace

void CompactShellMesh::sortVertBuffCompactGeom(TopologyOpOutData* out)
{
    const auto positions = osg::dcast<osg::GeoPositions3f>(compactGeometry_->getPositions());
    const auto indices = osg::dcast<osg::GeoIndicesUI32>(compactGeometry_->getIndices());
    if (!positions || !indices || positions->getSize() == 0 || indices->getSize() == 0)
        return;

    const auto uvs = uvSlot(*compactGeometry_, slot_);
    // A sew leaves the vertices in order, and then there is nothing to move.
    if (!std::is_sorted(positions->values().begin(), positions->values().end(), isBefore)) {
        const std::vector<unsigned int> order = orderByPosition(positions->values());
        const std::vector<unsigned int> newIdOf = inverseOf(order);
        positions->gather(order);
        if (uvs)
            uvs->gather(order);
        for (unsigned int& vertex : indices->values())
            vertex = newIdOf[vertex];
        if (out)
            renumberShuffles(*out, order, newIdOf);
    }
    osg::notifyChanged(positions, osg::FieldMask::all());
    if (uvs)
        osg::notifyChanged(uvs, osg::FieldMask::all());
    osg::notifyChanged(indices, compactGeometry_, osg::FieldMask::all()); // vertices moved too
}

std::vector<unsigned int>
CompactShellMesh::sortAndBuildFaceMappings(const std::vector<unsigned int>& trianglesF,
                                           std::vector<unsigned int> formerOrder)
{
    FaceTables tables =
        makeFaceTables(trianglesF, vertFToC_, static_cast<unsigned int>(vertCToF_.size()),
                       {.facesF = std::move(facesF_),
                        .facesC = std::move(formerOrder),
                        .facesSortedF = std::move(facesSortedF_),
                        .faceOrder012 = std::move(faceOrder012_),
                        .faceOrder02 = std::move(faceOrder02_),
                        .faceOrder12 = std::move(faceOrder12_),
                        .faceMapping = std::move(faceMapping_),
                        .lowestBegin = std::move(lowestBegin_),
                        .middleBegin = std::move(middleBegin_)});
    facesF_ = std::move(tables.facesF);
    facesSortedF_ = std::move(tables.facesSortedF);
    faceOrder012_ = std::move(tables.faceOrder012);
    faceOrder02_ = std::move(tables.faceOrder02);
    faceOrder12_ = std::move(tables.faceOrder12);
    lowestBegin_ = std::move(tables.lowestBegin);
    middleBegin_ = std::move(tables.middleBegin);
    faceMapping_ = std::move(tables.faceMapping);
    return std::move(tables.facesC);
}
