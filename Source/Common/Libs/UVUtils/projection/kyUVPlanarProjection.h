#pragma once

#include "UVUtils/projection/kyUVPlanarProjectionSettings.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

/// Maps vertices straight onto a plane.
class kyUVPlanarProjection : public kyUVTextureProjection
{
public:
    /// Was the node projected in this way, by what is stored on it for the slot?
    static bool hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    /// What is stored on the node for the slot. Missing keys read as the start values, and a
    /// node without any as a default-constructed object.
    ///
    /// Throws std::invalid_argument or std::out_of_range when the stored aspect ratio is no number
    /// or beyond what a double holds; any other text that is no number reads as 0.
    static kyUVPlanarProjectionSettings readSettings(const osg::NodePtr& node,
                                                     kyUVTypes::UVSet uvSet);

    /// Stores settings on the node for the slot, to six digits. Slot 1 has a set of its own, the
    /// other slots share one. Does nothing for a null node.
    static void writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                              const kyUVPlanarProjectionSettings& settings);
};
