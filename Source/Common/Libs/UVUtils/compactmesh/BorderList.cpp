// The border list of kyUVUtils: made from the triangles, and only when they have changed.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/BorderDirtyStates.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/BorderEdges.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <optional>

namespace
{

/// The borders of a compact mesh in F ids, one pair for each: the lower id first, ascending.
FlatEdgeList borderEdgesOf(const CompactShellMesh& mesh)
{
    const FlatEdgeList borders = borderEdges(mesh.getGeomPtr()->getIndices());
    FlatEdgeList pairs;
    mesh.mapEdgesCToF(borders.data(), static_cast<unsigned int>(borders.size()), pairs);
    std::vector<Edge> edges = edgesOf(pairs);
    std::sort(edges.begin(), edges.end());
    return flatListOf(edges);
}

/// Nothing where there should be a mesh and is none.
std::optional<FlatEdgeList> borderEdgesOf(const osg::GeometryPtr& geometry,
                                          const osg::NodePtr& node, kyUVTypes::UVSet set)
{
    if (!kyUVUtils::useCMesh(geometry))
        return borderEdges(geometry->getIndices());
    if (const CompactShellMesh* mesh = CompactShellMesh::getCMesh(geometry, node, set))
        return borderEdgesOf(*mesh);
    return std::nullopt;
}

} // namespace

bool kyUVUtils::getBorderDirty(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                               kyUVTypes::UVSet set)
{
    const BorderDirtyStates::Ptr states = BorderDirtyStates::find(geometry, node, set);
    return states && states->isDirty(set);
}

void kyUVUtils::setBorderClean(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                               kyUVTypes::UVSet set)
{
    if (const BorderDirtyStates::Ptr states = BorderDirtyStates::find(geometry, node, set))
        states->clean(set);
}

void kyUVUtils::makeBorderEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                kyUVTypes::UVSet set)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    const std::optional<FlatEdgeList> borders = borderEdgesOf(geometry, node, set);
    if (!borders)
        return;
    osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::BorderEdges);
    if (list.isNull())
        list.setType(osg::GeoPrimitive::Lines);
    list.assign(*borders);
}

void kyUVUtils::updateBorderEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                  kyUVTypes::UVSet set)
{
    if (!getBorderDirty(geometry, node, set) &&
        !osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::BorderEdges).isNull())
        return;
    makeBorderEdges(geometry, node, set);
    // Clean also where no list could be made. Asked for anew: making the list can have built the
    // mesh, which has made the record dirty again.
    setBorderClean(geometry, node, set);
}
