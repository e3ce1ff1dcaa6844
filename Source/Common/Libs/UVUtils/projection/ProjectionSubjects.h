#pragma once

#include "OpenSG/Node.h"

#include <vector>

// What a projection works on, before the way of the projection matters.

/// The nodes of a list on which texture coordinates may be edited, in their order; null ones are
/// none. An empty result is logged, with the reason.
std::vector<osg::NodePtr> projectableNodes(const std::vector<osg::NodePtr>& nodes);

/// Are both transforms of a projection there? If not, that is logged.
bool hasTransformNodes(const osg::NodePtr& projectionTransform,
                       const osg::NodePtr& textureTransform);
