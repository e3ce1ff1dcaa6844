#include "OpenSGUtils/kyShellSelectionMapper.h"

#include "OpenSG/CoreAs.h"
#include "OpenSGExt/kyShellUtils.h"
#include "OpenSGUtils/kyRenderOptions.h"

namespace
{

unsigned int vertexCount(const osg::GeometryPtr& geometry)
{
    const osg::GeoPositionsPtr positions = geometry->getPositions();
    return positions ? positions->getSize() : 0;
}

} // namespace

void kyShellSelectionMapper::enterShell(const osg::GeometryPtr& shell)
{
    if (shell)
        shells_.push_back({shell, {}, {}, {}});
}

void kyShellSelectionMapper::preGeoVertexDuplication()
{
    if (!shells_.empty() && !shells_.back().lists)
        shells_.back().lists.emplace(shells_.back().geometry, kyGeoIndicesStore::TempIndexLists);
}

void kyShellSelectionMapper::leaveGeo(const osg::NodePtr& node, const osg::GeometryPtr& surface,
                                      unsigned int oldCount)
{
    if (shells_.empty() || !node || !surface || vertexCount(surface) == oldCount)
        return;
    Shell& shell = shells_.back();
    if (osg::coreAs<osg::Geometry>(node->getParent()) != shell.geometry)
        return;
    shell.node = node->getParent();
    shell.oldCounts.try_emplace(surface->getId(), oldCount); // of several visits the first
}

bool kyShellSelectionMapper::is(const osg::GeometryPtr& geometry) const
{
    return geometry && !shells_.empty() && shells_.back().geometry == geometry;
}

void kyShellSelectionMapper::leaveShell()
{
    if (shells_.empty())
        return;
    Shell& shell = shells_.back();
    if (shell.node && shell.lists && !shell.lists->isEmpty()) {
        shell.lists->map(newIds(shell));
        shell.lists->restore();
    }
    shells_.pop_back();
}

/// [old id of the shell]
std::vector<unsigned int> kyShellSelectionMapper::newIds(const Shell& shell)
{
    const unsigned int sides = kyRenderOptions::getInstance()->getShowABSideMask();
    std::vector<unsigned int> ids;
    unsigned int firstId = 0;
    for (unsigned int i = 0; i < shell.node->getNChildren(); ++i) {
        const osg::NodePtr child = shell.node->getChild(i);
        const auto surface = osg::coreAs<osg::Geometry>(child);
        if (!kyShellUtils::isActiveShellComponent(child, surface, sides))
            continue;
        const auto grown = shell.oldCounts.find(surface->getId());
        const unsigned int oldCount =
            grown == shell.oldCounts.end() ? vertexCount(surface) : grown->second;
        for (unsigned int vertex = 0; vertex < oldCount; ++vertex)
            ids.push_back(firstId + vertex);
        firstId += vertexCount(surface);
    }
    return ids;
}
