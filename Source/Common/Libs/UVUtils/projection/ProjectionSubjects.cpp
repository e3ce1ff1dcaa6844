#include "UVUtils/projection/ProjectionSubjects.h"

#include "OpenSGUtils/kyNodePermission.h"
#include "Utils/kyLog.h"

std::vector<osg::NodePtr> projectableNodes(const std::vector<osg::NodePtr>& nodes)
{
    if (nodes.empty()) {
        kyLog::info("Map Texture: Nothing selected.");
        return {};
    }
    std::vector<osg::NodePtr> permitted = nodes;
    std::erase_if(permitted, [](const osg::NodePtr& node) {
        return !kyNodePermission::allows(node, kyScenegraphTypes::EditTextureCoordinates);
    });
    if (permitted.empty())
        kyLog::info("Map Texture: Locked nodes selected.");
    return permitted;
}

bool hasTransformNodes(const osg::NodePtr& projectionTransform,
                       const osg::NodePtr& textureTransform)
{
    if (projectionTransform && textureTransform)
        return true;
    kyLog::warning("WARNING: projectionTransformNode or textureTransformNode not found!");
    return false;
}
