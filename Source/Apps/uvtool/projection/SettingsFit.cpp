#include "projection/SettingsFit.h"

#include "projection/ProjectionSupport.h"

#include "OpenSG/TransformBase.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"

#include <algorithm>
#include <array>

namespace uvtool
{
namespace
{

/// [side] phi and theta with which a plane looks outward there, its V upright.
using SideAngles = std::array<std::array<float, 2>, 6>;

constexpr SideAngles anglesWithYUp{{{0, 0}, {180, 0}, {-90, 0}, {90, 0}, {0, -90}, {0, 90}}};
constexpr SideAngles anglesWithZUp{
    {{0, 180}, {180, 180}, {-90, 180}, {90, 180}, {0, 90}, {0, -90}}};

/// [axis] rotations that take y there, +z to a side.
constexpr std::array<std::array<float, 3>, 3> rotationToAxis{{{0, 0, -90}, {0, 0, 0}, {90, 0, 0}}};

/// Takes over a rotation that was given as numbers.
template <class Settings>
bool turnAsGiven(const ProjectOptions& options, Settings& settings)
{
    const auto given = options.given.find("rotate");
    if (given == options.given.end())
        return false;
    const std::vector<double>& degrees = given->second;
    settings.setProjectionRotation(osg::Vec3f(static_cast<float>(degrees[0]),
                                              static_cast<float>(degrees[1]),
                                              static_cast<float>(degrees[2])));
    return true;
}

void turnToSide(ProjectOptions::Side side, bool isZUp, kyUVPlanarProjectionSettings& settings)
{
    const SideAngles& angles = isZUp ? anglesWithZUp : anglesWithYUp;
    const auto& [phi, theta] = angles[static_cast<std::size_t>(side)];
    settings.setProjectionRotation(osg::Vec3f(phi, theta, 0));
}

/// Width and height of the nodes as the plane sees them.
osg::Vec2f sizeOnPlane(const std::vector<osg::NodePtr>& nodes,
                       const kyUVPlanarProjectionSettings& settings)
{
    kyUVPlanarProjection::updateManipulator(settings);
    const osg::NodePtr plane =
        kyUVTextureProjection::getPlanarSupportGeometry()->getProjectionTransformNode();
    osg::Pnt3f min;
    osg::Pnt3f max;
    kyUVTextureProjection::calculateProjectionSize(
        nodes, osg::dcast<osg::TransformBase>(plane->getCore())->getMatrix(), min, max);
    return osg::Vec2f(max.x() - min.x(), max.y() - min.y());
}

} // namespace

bool turn(const ProjectOptions& options, kyUVPlanarProjectionSettings& settings)
{
    if (!options.from)
        return turnAsGiven(options, settings);
    turnToSide(*options.from, options.isZUp, settings);
    return true;
}

bool turn(const ProjectOptions& options, kyUVCylindricalProjectionSettings& settings)
{
    if (!options.axis)
        return turnAsGiven(options, settings);
    const auto& [x, y, z] = rotationToAxis[static_cast<std::size_t>(*options.axis)];
    settings.setProjectionRotation(osg::Vec3f(x, y, z));
    return true;
}

bool turn(const ProjectOptions&, kyUVTriplanarProjectionSettings&)
{
    return false;
}

void fitTurned(const std::vector<osg::NodePtr>& nodes, const ImageSize& image,
               kyUVPlanarProjectionSettings& settings)
{
    osg::Vec2f size = sizeOnPlane(nodes, settings);
    if (image.width > 0)
        kyUVPlanarProjection::adjustSizeToAspectRatio(size, static_cast<float>(image.width) /
                                                                static_cast<float>(image.height));
    settings.setTextureWidth(size.x());
    settings.setTextureHeight(size.y());
}

void fitTurned(const std::vector<osg::NodePtr>& nodes, const ImageSize& image,
               kyUVCylindricalProjectionSettings& settings)
{
    // With Z up the sizes are those along the cylinder's own axes, as it stands; with Y up they
    // would be those of one still to be turned.
    const UpAxisScope up(true);
    kyUVCylindricalProjection::getScaleAndCenterFromGeometry(nodes, settings);
    if (image.width > 0)
        kyUVCylindricalProjection::applyScalePreservingAspectRatio(settings);
}

bool isEdgeOn(const std::vector<osg::NodePtr>& nodes, const kyUVPlanarProjectionSettings& settings)
{
    constexpr float widestEdge = 1e-6F; // in lengths of the edge: what rounding makes of none
    const osg::Vec2f size = sizeOnPlane(nodes, settings);
    return std::min(size.x(), size.y()) <= widestEdge * std::max(size.x(), size.y());
}

void turnToLargestSide(const std::vector<osg::NodePtr>& nodes, const ProjectOptions& options,
                       kyUVPlanarProjectionSettings& settings)
{
    ProjectOptions::Side largest = ProjectOptions::Front;
    float largestArea = -1;
    for (const ProjectOptions::Side side :
         {ProjectOptions::Front, ProjectOptions::Top, ProjectOptions::Right})
    {
        turnToSide(side, options.isZUp, settings);
        const osg::Vec2f size = sizeOnPlane(nodes, settings);
        if (size.x() * size.y() > largestArea) {
            largest = side;
            largestArea = size.x() * size.y();
        }
    }
    turnToSide(largest, options.isZUp, settings);
    fitTurned(nodes, options.image, settings);
}

} // namespace uvtool
