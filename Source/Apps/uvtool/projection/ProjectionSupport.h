#pragma once

#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVPlanarProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVTriPlanarProjectionSupportGeometry.h"

#include <vector>

namespace uvtool
{

/// For its lifetime, what the projections need of an application: the trees in which they keep
/// their transforms. Nobody looks at these here.
class ProjectionSupport
{
public:
    ProjectionSupport();
    ~ProjectionSupport();
    ProjectionSupport(const ProjectionSupport&) = delete;
    ProjectionSupport& operator=(const ProjectionSupport&) = delete;

private:
    kyUVPlanarProjectionSupportGeometry planar_;
    kyUVTriPlanarProjectionSupportGeometry triplanar_;
    kyUVCylindricalProjectionSupportGeometry cylindrical_;
    std::vector<osg::RefPtr<osg::Node>> roots_; ///< keep the trees alive
};

/// For its lifetime, the way that is up for the camera.
class UpAxisScope
{
public:
    explicit UpAxisScope(bool isZUp);
    ~UpAxisScope();
    UpAxisScope(const UpAxisScope&) = delete;
    UpAxisScope& operator=(const UpAxisScope&) = delete;

private:
    bool wasZUp_;
};

} // namespace uvtool
