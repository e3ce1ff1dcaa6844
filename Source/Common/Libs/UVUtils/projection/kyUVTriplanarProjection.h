#pragma once

#include "UVUtils/projection/kyUVTextureProjection.h"
#include "UVUtils/projection/kyUVTriplanarProjectionSettings.h"

/// Projects triangles from the six sides of a box.
class kyUVTriplanarProjection : public kyUVTextureProjection
{
public:
    /// Was the node projected in this way, by what is stored on it for the slot?
    static bool hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    /// What is stored on the node for the slot. Missing keys and text that is no number
    /// read as 0, a repeat as the least that it can be; a null node gives a default-constructed
    /// object.
    static kyUVTriplanarProjectionSettings readSettings(const osg::NodePtr& node,
                                                        kyUVTypes::UVSet uvSet);

protected:
    /// Stores settings on the node for the slot, to six digits. Slot 1 has a set of its own, the
    /// other slots share one. Does nothing for a null node.
    static void writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                              const kyUVTriplanarProjectionSettings& settings);
};
