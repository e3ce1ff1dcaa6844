#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "OpenSGAnim/kyAnimManager.h"
#include "OpenSGUtils/EqualVertices.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/model/NodeName.h"
#include "UVUtils/projection/AxisPropagation.h"
#include "UVUtils/projection/PartedTriangles.h"
#include "UVUtils/projection/ProjectionSubjects.h"
#include "UVUtils/projection/TexCoordsToFill.h"
#include "UVUtils/projection/TriplanarUVs.h"
#include "UVUtils/repair/kyTopologyRepair.h"
#include "Utils/kyLog.h"
#include "Utils/kyStackedProgress.h"

#include <algorithm>
#include <utility>

namespace
{

using Ids = std::vector<unsigned int>;

/// The triangles of a geometry that share no vertex.
struct AssignedTriangles
{
    Ids corners;                     ///< [3 * triangle + corner] the vertex
    std::vector<unsigned char> axes; ///< [triangle] the bit of its axis, 0 without one
};

/// [vertex] the same number for equal positions.
Ids placesOf(const osg::GeoPropertyPtr& positions)
{
    return joinEqualVertices({&positions, 1}, positions->getSize(), FloatEquality::ByValue).newIdOf;
}

/// [corner] the same number for corners at equal positions.
///
/// oldPositions  from before the triangles were parted: fewer to compare than there are now
Ids placesOfCorners(const PartedTriangles& triangles, const osg::GeoPositionsPtr& oldPositions,
                    const osg::GeoPositionsPtr& positions)
{
    const bool areOldFit = !triangles.sources.empty() &&
                           std::all_of(triangles.sources.begin(), triangles.sources.end(),
                                       [count = oldPositions->getSize()](unsigned int source) {
                                           return source < count;
                                       });
    const Ids placeOfVertex = placesOf(areOldFit ? oldPositions : positions);
    Ids places = areOldFit ? triangles.sources : triangles.corners;
    for (unsigned int& place : places)
        place = placeOfVertex[place];
    return places;
}

std::span<const osg::Pnt3f> pointsOf(const osg::GeometryPtr& geometry)
{
    return positionsToProject(geometry)->values();
}

AssignedTriangles assignDominantAxes(const osg::GeometryPtr& geometry, const osg::Matrix& toBox)
{
    AssignedTriangles triangles{partTriangles(geometry).corners, {}};
    triangles.axes = triplanar::dominantAxes(pointsOf(geometry), triangles.corners, toBox);
    return triangles;
}

AssignedTriangles assignPropagatedAxes(const osg::GeometryPtr& geometry, const osg::Matrix& toBox)
{
    const osg::RefPtr<osg::GeoPositions> oldPositions(geometry->getPositions());
    PartedTriangles triangles = partTriangles(geometry);
    triplanar::TriangleAxes axes =
        triplanar::candidateAxes(pointsOf(geometry), triangles.corners, toBox);
    if (axes.isAnyAmbiguous)
        triplanar::propagateAxes(
            placesOfCorners(triangles, oldPositions.get(), geometry->getPositions()),
            axes.candidates, axes.assigned);
    return {std::move(triangles.corners), std::move(axes.assigned)};
}

/// Parts the triangles and finds the side of the box that each belongs to.
AssignedTriangles assignAxes(const osg::GeometryPtr& geometry, const osg::Matrix& toBox,
                             kyUVTriplanarProjectionSettings::Mode mode)
{
    return mode == kyUVTriplanarProjectionSettings::PropagatedAxis
               ? assignPropagatedAxes(geometry, toBox)
               : assignDominantAxes(geometry, toBox);
}

bool canBeProjected(const osg::GeometryPtr& geometry)
{
    const osg::GeoPositions3fPtr positions = positionsToProject(geometry);
    return positions && positions->getSize() > 0 && geometry->getIndices() &&
           !kyNodeUtils::isShellGeometry(geometry);
}

void repairOnce(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet)
{
    kyTopologyRepair repair(geometry, uvSet);
    repair.fixSingularVertices();
    repair.fixSingularEdges();
}

} // namespace

void kyUVTriplanarProjection::apply(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet uvSet)
{
    apply(nodes, uvSet, kyUVTriplanarProjectionSettings());
}

void kyUVTriplanarProjection::apply(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet uvSet,
                                    const kyUVTriplanarProjectionSettings& settings)
{
    kyStackedProgress progress("triplanar", static_cast<double>(nodes.size()));
    for (const osg::NodePtr& node : projectableNodes(nodes)) {
        if (kyAnimManager::the()->hasVertexAnimation(node)) {
            kyLog::error("Triplanar Projection: Skipping node %s because of existing vertex "
                         "animation.",
                         nameForMessages(node));
            progress.incrementBy(1.0);
            continue;
        }
        writeSettings(node, uvSet, settings);
        applyTriPlanarProjection(node, uvSet, settings);
        progress.incrementBy(1.0);
        if (progress.cancelled())
            break;
    }
}

void kyUVTriplanarProjection::applyTriPlanarProjection(
    const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
    const kyUVTriplanarProjectionSettings& settings)
{
    const triplanar::BoxView world = viewOfWorld(settings);
    for (const osg::NodePtr& resolved : resolveNodes({node})) {
        const osg::GeometryPtr geometry = osg::coreAs<osg::Geometry>(resolved);
        if (!canBeProjected(geometry))
            continue;
        writeUVs(geometry, uvSet, settings.getMode(), world.from(resolved->getToWorld()));
        joinEqualCorners(geometry);
        repairOnce(geometry, uvSet);
    }
}

triplanar::BoxView
kyUVTriplanarProjection::viewOfWorld(const kyUVTriplanarProjectionSettings& settings)
{
    const osg::Matrix box = calculateProjectionMatrix(settings);
    triplanar::BoxView view{box.inverted(), {}};
    for (int axis = 0; axis < triplanar::axisCount; ++axis)
        view.toImages[static_cast<std::size_t>(axis)] =
            (box * calculateTextureTransform(axis, settings)).inverted();
    return view;
}

void kyUVTriplanarProjection::writeUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                                       kyUVTriplanarProjectionSettings::Mode mode,
                                       const triplanar::BoxView& view)
{
    const AssignedTriangles triangles = assignAxes(geometry, view.toBox, mode);
    const osg::RefPtr<osg::GeoTexCoords2f> texCoords = texCoordsToFill(*geometry, uvSet);
    texCoords->clear();
    texCoords->resize(static_cast<unsigned int>(triangles.corners.size()));
    triplanar::writeTriplanarUVs(pointsOf(geometry), triangles.corners, triangles.axes,
                                 view.toImages, texCoords->values());
    osg::notifyChanged(texCoords, osg::FieldMask::all());
    applyUVChanges(geometry, uvSet, texCoords.get());
}
