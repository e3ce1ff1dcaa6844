#pragma once

#include "OpenSG/BlendChunk.h"
#include "OpenSGExt/kyOpenSGExt.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVPlanarProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVTextureProjection.h"
#include "UVUtils/projection/kyUVTriPlanarProjectionSupportGeometry.h"

#include <vector>

/// The trees that an application hands to the projections, there for as long as it lives.
class SupportGeometries
{
public:
    SupportGeometries()
    {
        const osg::RefPtr<osg::BlendChunk> blend(osg::BlendChunk::create());
        planar.init(blend);
        triPlanar.init(blend);
        cylindrical.init(blend);
        for (const osg::NodePtr& root :
             {planar.getProjectionTransformNode(), triPlanar.getProjectionTransformNode(),
              cylindrical.getCylindricTransform3D(), cylindrical.getCylindricTransform2D()})
            roots_.emplace_back(root);
        kyUVTextureProjection::init(&planar, &triPlanar, &cylindrical);
    }
    ~SupportGeometries() { kyUVTextureProjection::init(nullptr, nullptr, nullptr); }
    SupportGeometries(const SupportGeometries&) = delete;
    SupportGeometries& operator=(const SupportGeometries&) = delete;

    kyUVPlanarProjectionSupportGeometry planar;
    kyUVTriPlanarProjectionSupportGeometry triPlanar;
    kyUVCylindricalProjectionSupportGeometry cylindrical;

private:
    std::vector<osg::RefPtr<osg::Node>> roots_;
};

/// Which axis is up for the camera, for as long as it lives.
class CameraUp
{
public:
    explicit CameraUp(bool isZUp) { kyOpenSGExt::setCameraZUp(isZUp); }
    ~CameraUp() { kyOpenSGExt::setCameraZUp(false); }
    CameraUp(const CameraUp&) = delete;
    CameraUp& operator=(const CameraUp&) = delete;
};
