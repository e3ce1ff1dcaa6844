#include "projection/ProjectionSupport.h"

#include "OpenSGExt/kyOpenSGExt.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

namespace uvtool
{

ProjectionSupport::ProjectionSupport()
{
    planar_.init(osg::NullFC);
    triplanar_.init(osg::NullFC);
    cylindrical_.init(osg::NullFC);
    for (const osg::NodePtr& root :
         {planar_.getProjectionTransformNode(), triplanar_.getProjectionTransformNode(),
          cylindrical_.getCylindricTransform3D(), cylindrical_.getCylindricTransform2D()})
        roots_.emplace_back(root);
    kyUVTextureProjection::init(&planar_, &triplanar_, &cylindrical_);
}

ProjectionSupport::~ProjectionSupport()
{
    kyUVTextureProjection::init(nullptr, nullptr, nullptr);
}

UpAxisScope::UpAxisScope(bool isZUp) : wasZUp_(kyOpenSGExt::isCameraZUp())
{
    kyOpenSGExt::setCameraZUp(isZUp);
}

UpAxisScope::~UpAxisScope()
{
    kyOpenSGExt::setCameraZUp(wasZUp_);
}

} // namespace uvtool
