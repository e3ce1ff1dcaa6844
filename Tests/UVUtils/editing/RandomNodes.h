#pragma once

#include "UVUtils/Meshes.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVUtils.h"

#include <rapidcheck.h>

/// The slot that random nodes have their UVs in.
inline constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

/// Geometries are worked on as they stand for as long as it lives.
class WithoutCompactMesh
{
public:
    WithoutCompactMesh() { kyUVUtils::setUseCompactMesh(false); }
    ~WithoutCompactMesh() { kyUVUtils::setUseCompactMesh(true); }
    WithoutCompactMesh(const WithoutCompactMesh&) = delete;
    WithoutCompactMesh& operator=(const WithoutCompactMesh&) = delete;
};

/// The triangles of all active surfaces in the ids of the node, in surface order.
inline Ids trianglesOf(const osg::NodePtr& node)
{
    Ids triangles;
    for (const ActiveSurface& surface : activeSurfaces(node))
        for (const unsigned int id : surface.geometry->getIndices()->getValues())
            triangles.push_back(surface.firstId + id);
    return triangles;
}

/// A shell, or a plain geometry.
inline osg::RefPtr<osg::Node> randomNode()
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    return seed % 3 == 0 ? randomPlain(seed, slot) : randomShell(seed, slot);
}
