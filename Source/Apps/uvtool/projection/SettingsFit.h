#pragma once

#include "cli/Options.h"

#include "OpenSG/Node.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSettings.h"
#include "UVUtils/projection/kyUVPlanarProjectionSettings.h"
#include "UVUtils/projection/kyUVTriplanarProjectionSettings.h"

#include <vector>

// Settings that look at the meshes from where the user wants it, and fit them there.

namespace uvtool
{

/// Turns the projection as the options say; false where they say nothing about it.
bool turn(const ProjectOptions& options, kyUVPlanarProjectionSettings& settings);
bool turn(const ProjectOptions& options, kyUVCylindricalProjectionSettings& settings);
/// A box can be turned without another size: false.
bool turn(const ProjectOptions& options, kyUVTriplanarProjectionSettings& settings);

/// Has the default settings fit the nodes anew, after a turn. Needs the ProjectionSupport.
void fitTurned(const std::vector<osg::NodePtr>& nodes, const ImageSize& image,
               kyUVPlanarProjectionSettings& settings);
void fitTurned(const std::vector<osg::NodePtr>& nodes, const ImageSize& image,
               kyUVCylindricalProjectionSettings& settings);
inline void fitTurned(const std::vector<osg::NodePtr>&, const ImageSize&,
                      kyUVTriplanarProjectionSettings&)
{}

/// Do the nodes turn an edge to the plane, so that no image on it can show more than a line? Needs
/// the ProjectionSupport.
bool isEdgeOn(const std::vector<osg::NodePtr>& nodes, const kyUVPlanarProjectionSettings& settings);
inline bool isEdgeOn(const std::vector<osg::NodePtr>&, const kyUVCylindricalProjectionSettings&)
{
    return false;
}
inline bool isEdgeOn(const std::vector<osg::NodePtr>&, const kyUVTriplanarProjectionSettings&)
{
    return false;
}

/// Turns the plane to what shows most of front, top and right, and has it fit there. Needs the
/// ProjectionSupport.
void turnToLargestSide(const std::vector<osg::NodePtr>& nodes, const ProjectOptions& options,
                       kyUVPlanarProjectionSettings& settings);
inline void turnToLargestSide(const std::vector<osg::NodePtr>&, const ProjectOptions&,
                              kyUVCylindricalProjectionSettings&)
{}
inline void turnToLargestSide(const std::vector<osg::NodePtr>&, const ProjectOptions&,
                              kyUVTriplanarProjectionSettings&)
{}

} // namespace uvtool
