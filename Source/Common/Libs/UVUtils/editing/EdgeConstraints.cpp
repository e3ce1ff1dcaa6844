// The edges of kyUVUtils that an unfold holds straight: where they are kept, and the lists that
// show them.
//
// Each geometry keeps its own edges in its own vertex ids, on a shell each surface; the edges that
// a caller sees of a shell are put together from those and dealt out to them.

#include "OpenSG/CoreAs.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGExt/UVConstraintsTracker.h"
#include "OpenSGExt/kyShellUtils.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <map>

namespace
{

using kyUVTypes::EdgeConstraint;

EdgeConstraint otherThan(EdgeConstraint constraint)
{
    return constraint == kyUVTypes::Horizontal ? kyUVTypes::Vertical : kyUVTypes::Horizontal;
}

osg::GeoTmpIndexEditInterface listOf(const osg::GeometryPtr& geometry, EdgeConstraint constraint)
{
    return {geometry, constraint == kyUVTypes::Horizontal ? kyUVTypes::HorizontalEdges
                                                          : kyUVTypes::VerticalEdges};
}

/// None where the node's core is no shell.
std::vector<ActiveSurface> surfacesOfShell(const osg::NodePtr& node)
{
    const auto core = osg::coreAs<osg::Geometry>(node);
    return kyShellUtils::isShell(core) ? activeSurfaces(node) : std::vector<ActiveSurface>();
}

/// [surface] Its edges, in its own ids. Edges between two surfaces drop out.
std::vector<std::vector<Edge>> dealEdges(const std::vector<Edge>& edges,
                                         const std::vector<ActiveSurface>& surfaces)
{
    std::vector<std::vector<Edge>> edgesOfSurface(surfaces.size());
    for (const Edge& edge : edges) {
        const ActiveSurface* const surface = surfaceOfEdge(edge, surfaces);
        if (!surface)
            continue;
        edgesOfSurface[static_cast<std::size_t>(surface - surfaces.data())].emplace_back(
            edge.first - surface->firstId, edge.second - surface->firstId);
    }
    return edgesOfSurface;
}

/// The other edges, in their order.
std::vector<Edge> without(std::vector<Edge> edges, std::vector<Edge> removed)
{
    std::sort(removed.begin(), removed.end());
    std::erase_if(edges, [&](const Edge& edge) {
        return std::binary_search(removed.begin(), removed.end(), edge);
    });
    return edges;
}

} // namespace

std::vector<Edge> kyUVUtils::getEdges(const unsigned int* pairs, unsigned int count)
{
    return pairs ? edgesOf(std::span(pairs, count)) : std::vector<Edge>();
}

std::vector<Edge> kyUVUtils::getConstrainedEdges(const osg::GeometryPtr& geometry,
                                                 EdgeConstraint constraint)
{
    const FlatEdgeList pairs = getUVConstraints(geometry, static_cast<unsigned int>(constraint));
    return getEdges(pairs.data(), sizeOf(pairs));
}

std::vector<Edge> kyUVUtils::getConstrainedEdges(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node,
                                                 EdgeConstraint constraint)
{
    if (!isValidGeometry(geometry, node, false))
        return {};
    if (!kyShellUtils::isShell(geometry))
        return getConstrainedEdges(geometry, constraint);
    std::vector<Edge> edges;
    for (const ActiveSurface& surface : surfacesOfShell(node))
        for (const Edge& edge : getConstrainedEdges(surface.geometry, constraint))
            edges.emplace_back(surface.firstId + edge.first, surface.firstId + edge.second);
    return edges;
}

bool kyUVUtils::setConstrainedEdges(const osg::GeometryPtr& geometry,
                                    const std::vector<Edge>& edges, EdgeConstraint constraint)
{
    setUVConstraints(geometry, static_cast<unsigned int>(constraint), flatListOf(edges));
    return geometry != osg::NullFC;
}

bool kyUVUtils::setConstrainedEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                    const std::vector<Edge>& edges, EdgeConstraint constraint)
{
    if (!isValidGeometry(geometry, node, false))
        return false;
    if (!kyShellUtils::isShell(geometry))
        return setConstrainedEdges(geometry, edges, constraint);
    const std::vector<ActiveSurface> surfaces = surfacesOfShell(node);
    const std::vector<std::vector<Edge>> edgesOfSurface = dealEdges(edges, surfaces);
    for (std::size_t i = 0; i < surfaces.size(); ++i)
        setConstrainedEdges(surfaces[i].geometry, edgesOfSurface[i], constraint);
    return true;
}

bool kyUVUtils::constrainEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                               EdgeConstraint constraint)
{
    const osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::SelectedEdges);
    if (list.isNull())
        return false;
    const std::vector<Edge> selected = getEdges(list.getData(), list.getSize());
    std::vector<Edge> held = getConstrainedEdges(geometry, node, constraint);
    const std::vector<Edge> heldOtherwise =
        getConstrainedEdges(geometry, node, otherThan(constraint));
    held.insert(held.end(), selected.begin(), selected.end());
    sortAndDropRepeats(held);
    setConstrainedEdges(geometry, node, held, constraint);
    setConstrainedEdges(geometry, node, without(heldOtherwise, selected), otherThan(constraint));
    return true;
}

bool kyUVUtils::unconstrainEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                 EdgeConstraint constraint)
{
    const osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::SelectedEdges);
    if (list.isNull())
        return setConstrainedEdges(geometry, node, {}, constraint);
    const std::vector<Edge> held = getConstrainedEdges(geometry, node, constraint);
    if (held.empty())
        return true;
    const std::vector<Edge> selected = getEdges(list.getData(), list.getSize());
    return setConstrainedEdges(geometry, node, without(held, selected), constraint);
}

bool kyUVUtils::makeConstrainedEdgesTempIndices(const std::vector<Edge>& edges,
                                                osg::GeoTmpIndexEditInterface& list)
{
    if (list.isNull()) {
        if (edges.empty())
            return false;
        list.make();
        list.setType(osg::GeoPrimitive::Lines);
    }
    if (edges.empty()) {
        list.setNull();
        return true;
    }
    list.assign(flatListOf(edges));
    list.commit();
    return true;
}

bool kyUVUtils::renewConstrainedEdgesTempIndices(const osg::GeometryPtr& geometry,
                                                 EdgeConstraint constraint, unsigned int& stamp)
{
    osg::GeoTmpIndexEditInterface list = listOf(geometry, constraint);
    if (list.getStamp() == stamp && !list.isNull())
        return false;
    // Where edges went while the list was null, nothing is to be done here, but shells still show
    // them.
    const bool isOutdated = stamp == UVConstraintsTracker::Stamp::Outdated;
    const bool isTouched =
        makeConstrainedEdgesTempIndices(getConstrainedEdges(geometry, constraint), list);
    stamp = list.getStamp();
    return isTouched || isOutdated;
}

void kyUVUtils::fillShellTempIndices(const osg::NodePtr& node)
{
    const auto shell = osg::dcast<osg::Geometry>(node->getCore());
    for (const EdgeConstraint constraint : {kyUVTypes::Horizontal, kyUVTypes::Vertical}) {
        osg::GeoTmpIndexEditInterface list = listOf(shell, constraint);
        makeConstrainedEdgesTempIndices(getConstrainedEdges(shell, node, constraint), list);
    }
}

void kyUVUtils::updateConstrainedEdgesTempIndices()
{
    UVConstraintsTracker& tracker = *UVConstraintsTracker::the();
    std::map<unsigned int, osg::NodePtr> shellsToUpdate; // by container id
    for (auto entry = tracker.geomBegin(); entry != tracker.geomEnd(); ++entry) {
        const auto geometry = osg::dcast<osg::Geometry>(
            osg::FieldContainerFactory::the()->getContainer(entry->first));
        if (!geometry)
            continue;
        UVConstraintsTracker::Stamp& stamp = entry->second;
        const bool changedU =
            renewConstrainedEdgesTempIndices(geometry, kyUVTypes::Horizontal, stamp.u);
        const bool changedV =
            renewConstrainedEdgesTempIndices(geometry, kyUVTypes::Vertical, stamp.v);
        const auto lacks = [&](const osg::GeometryPtr& shell, EdgeConstraint constraint) {
            return listOf(geometry, constraint).getSize() > 0 && listOf(shell, constraint).isNull();
        };
        kyShellUtils::forShellsOfComponent(
            geometry, [&](const osg::NodePtr& node, const osg::GeometryPtr& shell) {
                if (changedU || changedV || lacks(shell, kyUVTypes::Horizontal) ||
                    lacks(shell, kyUVTypes::Vertical))
                    shellsToUpdate.emplace(node->getId(), node);
            });
    }
    for (const auto& [id, node] : shellsToUpdate)
        fillShellTempIndices(node);
}
