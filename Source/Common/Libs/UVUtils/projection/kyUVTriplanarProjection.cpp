#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include "OpenSG/ChangeNotice.h"
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

namespace
{

using ImageMatrices = std::array<osg::Matrix, triplanar::axisCount>;
using Corners = std::vector<unsigned int>;

/// [corner] the same number for corners at equal positions.
Corners placesOf(const osg::GeometryPtr& geometry, const Corners& corners)
{
    const osg::GeoPropertyPtr positions = geometry->getPositions();
    const std::vector<unsigned int> placeOfVertex =
        joinEqualVertices({&positions, 1}, positions->getSize(), FloatEquality::ByValue).newIdOf;
    Corners places;
    places.reserve(corners.size());
    for (const unsigned int vertex : corners)
        places.push_back(placeOfVertex[vertex]);
    return places;
}

/// [triangle] the axis of each, as a mask.
std::vector<unsigned char> assignAxes(const osg::GeometryPtr& geometry, const Corners& corners,
                                      const osg::Matrix& toBox,
                                      kyUVTriplanarProjectionSettings::Mode mode)
{
    const auto positions = positionsToProject(geometry)->values();
    if (mode != kyUVTriplanarProjectionSettings::PropagatedAxis)
        return triplanar::dominantAxes(positions, corners, toBox).assigned;
    triplanar::TriangleAxes axes = triplanar::candidateAxes(positions, corners, toBox);
    if (axes.isAnyAmbiguous)
        triplanar::propagateAxes(placesOf(geometry, corners), axes.candidates, axes.assigned);
    return std::move(axes.assigned);
}

/// Makes equal corners one again, and takes away what that left singular.
void mergeAndRepair(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet)
{
    joinEqualCorners(geometry);
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
    const osg::Matrix box = calculateProjectionMatrix(settings);
    const osg::Matrix worldToBox = box.inverted();
    ImageMatrices worldToImages;
    for (int axis = 0; axis < triplanar::axisCount; ++axis)
        worldToImages[static_cast<std::size_t>(axis)] =
            (box * calculateTextureTransform(axis, settings)).inverted();
    for (const osg::NodePtr& resolved : resolveNodes({node})) {
        const osg::Matrix toWorld = resolved->getToWorld();
        ImageMatrices toImages = worldToImages;
        for (osg::Matrix& matrix : toImages)
            matrix *= toWorld;
        projectGeometry(geometryCoreOf(resolved), uvSet, settings.getMode(), worldToBox * toWorld,
                        toImages);
    }
}

void kyUVTriplanarProjection::projectGeometry(const osg::GeometryPtr& geometry,
                                              kyUVTypes::UVSet uvSet,
                                              kyUVTriplanarProjectionSettings::Mode mode,
                                              const osg::Matrix& toBox,
                                              const ImageMatrices& toImages)
{
    const osg::GeoPositions3fPtr positions = positionsToProject(geometry);
    if (!positions || positions->getSize() == 0 || kyNodeUtils::isShellGeometry(geometry) ||
        !geometry->getIndices())
        return;
    const Corners corners = partTriangles(geometry);
    const std::vector<unsigned char> assigned = assignAxes(geometry, corners, toBox, mode);
    const osg::RefPtr<osg::GeoTexCoords2f> texCoords = texCoordsToFill(*geometry, uvSet);
    texCoords->clear();
    texCoords->resize(static_cast<unsigned int>(corners.size()));
    triplanar::writeTriplanarUVs(positionsToProject(geometry)->values(), corners, assigned,
                                 toImages, texCoords->values());
    osg::notifyChanged(texCoords, osg::FieldMask::all());
    applyUVChanges(geometry, uvSet, texCoords.get());
    mergeAndRepair(geometry, uvSet);
}
