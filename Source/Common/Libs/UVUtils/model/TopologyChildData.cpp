// The part of the facade that deals the child records of a topology bridge out to surfaces.

#include "OpenSGExt/kyShellUtils.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

void kyUVUtils::createChildData(kyTopologyBridge* bridge, const osg::GeometryPtr& geometry,
                                const osg::NodePtr& node)
{
    if (bridge)
        bridge->getImpl()->patchResize(kyShellUtils::isShell(geometry) ? node->getNChildren() : 1);
}

std::unique_ptr<TopologyOpOutData> kyUVUtils::getChildData(kyTopologyBridge* bridge,
                                                           const osg::GeometryPtr& geometry,
                                                           const osg::NodePtr& parent,
                                                           const osg::NodePtr& child)
{
    if (!bridge)
        return nullptr;
    const int index = kyShellUtils::isShell(geometry) ? parent->findChild(child) : 0;
    if (index < 0)
        return nullptr;
    return std::make_unique<TopologyOpOutData>(bridge->getImpl(), static_cast<unsigned int>(index));
}
