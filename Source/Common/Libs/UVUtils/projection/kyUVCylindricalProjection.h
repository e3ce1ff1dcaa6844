#pragma once

#include "UVUtils/projection/kyUVCylindricalProjectionSettings.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

/// Wraps an image around a cylinder.
class kyUVCylindricalProjection : public kyUVTextureProjection
{
public:
    /// Was the node projected in this way, by what is stored on it for the slot?
    static bool hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    /// What is stored on the node for the slot. Missing keys read as the start values; the
    /// size, offset and scale of the texture are not stored and always have these.
    ///
    /// Throws std::invalid_argument or std::out_of_range when the stored aspect ratio is no number
    /// or beyond what a double holds; any other text that is no number reads as 0.
    static kyUVCylindricalProjectionSettings readSettings(const osg::NodePtr& node,
                                                          kyUVTypes::UVSet uvSet);

    /// Stores settings on the node for the slot, to six digits. Slot 1 has a set of its own, the
    /// other slots share one. Does nothing for a null node.
    static void writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                              const kyUVCylindricalProjectionSettings& settings);
};
