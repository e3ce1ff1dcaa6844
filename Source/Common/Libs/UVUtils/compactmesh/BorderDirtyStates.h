#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"

#include <memory>

/// What the border list of a geometry (kyUVTypes::BorderEdges) was last made for, so that its
/// triangles are searched again only when they have changed. Values of UVs don't matter.
class BorderDirtyStates
{
public:
    using Ptr = std::shared_ptr<BorderDirtyStates>;

    /// The record of a geometry, made if there is none; null for a null geometry or node.
    ///
    /// Indices that change make it dirty. It hears of those of the geometry and, where a compact
    /// mesh is used, of those of the mesh and of the active surfaces as they were when the record
    /// was last asked for while dirty. For one that is clean this is one look into a hash table.
    static Ptr find(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                    kyUVTypes::UVSet set);

    /// Is the list out of date for this slot? A new record is dirty.
    bool isDirty(kyUVTypes::UVSet set) const;
    void clean(kyUVTypes::UVSet set);
    /// The triangles have changed.
    void touch() { dirty_ = true; }

private:
    kyUVTypes::UVSet uvSet_ = kyUVTypes::UVSet0;
    bool compactMesh_ = false; ///< kyUVUtils::getUseCompactMesh() at that time
    bool dirty_ = true;
};
