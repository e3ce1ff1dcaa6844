#include "OpenSG/CoreAs.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/RefPtr.h"
#include "OpenSG/Traverse.h"
#include "OpenSGExt/kyShellUtils.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "OpenSGUtils/kyRenderOptions.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

namespace
{

bool hasSlot(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    return geometry && geometry->getTexSlot(static_cast<unsigned int>(set));
}

bool anySurfaceHasSlot(const osg::Node& shell, kyUVTypes::UVSet set)
{
    for (unsigned int i = 0; i < shell.getNChildren(); ++i)
        if (hasSlot(osg::dcast<osg::Geometry>(shell.getChild(i)->getCore()), set))
            return true;
    return false;
}

/// The one entry of a single indexed geometry's mapping; null where there is none to change.
std::uint16_t* soleMappingEntry(const osg::GeometryPtr& geometry)
{
    if (!geometry || !geometry->getIndices() || geometry->getIndexMapping().size() != 1)
        return nullptr;
    return geometry->getIndexMapping().data();
}

std::uint16_t mappingBit(kyUVTypes::UVSet set)
{
    return osg::Geometry::texSlotMapping(static_cast<unsigned int>(set));
}

} // namespace

unsigned long long kyUVUtils::getLocalVertexCount(const osg::GeometryPtr& geometry)
{
    return geometry ? vertexCountOf(geometry) : 0;
}

unsigned long long kyUVUtils::getLocalUVCount(const osg::GeometryPtr& geometry,
                                              kyUVTypes::UVSet set)
{
    const osg::GeoTexCoordsPtr slot =
        geometry ? geometry->getTexSlot(static_cast<unsigned int>(set)) : osg::NullFC;
    return slot ? slot->getSize() : 0;
}

osg::GeoTexCoords2fPtr kyUVUtils::createEmptyUVSet(const osg::GeometryPtr& geometry)
{
    if (!geometry || !geometry->getPositions())
        return osg::NullFC;
    const osg::GeoTexCoords2fPtr property = osg::GeoTexCoords2f::create();
    property->resize(vertexCountOf(geometry));
    osg::notifyChanged(property, osg::FieldMask::all());
    return property;
}

void kyUVUtils::initTexCoordsField(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    if (!geometry ||
        (hasSlot(geometry, set) && getLocalUVCount(geometry, set) == vertexCountOf(geometry)))
        return;
    // Held, so that it goes again where the number is no slot.
    const osg::RefPtr<osg::GeoTexCoords2f> property(createEmptyUVSet(geometry));
    setTexSlot(geometry, set, property.get());
}

bool kyUVUtils::setTexSlot(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                           const osg::GeoTexCoordsPtr& property)
{
    if (!geometry)
        return false;
    geometry->setTexSlot(static_cast<unsigned int>(set), property);
    if (property)
        addToIndexMapping(geometry, set);
    else
        removeFromIndexMapping(geometry, set);
    notifySlotChanged(geometry, set);
    return true;
}

bool kyUVUtils::setTexSlot(unsigned int geometryId, kyUVTypes::UVSet set,
                           const osg::GeoTexCoordsPtr& property)
{
    const osg::FieldContainerPtr container =
        osg::FieldContainerFactory::the()->getContainer(geometryId);
    return setTexSlot(osg::dcast<osg::Geometry>(container), set, property);
}

void kyUVUtils::addToIndexMapping(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    if (std::uint16_t* const entry = soleMappingEntry(geometry)) {
        *entry = static_cast<std::uint16_t>(*entry | mappingBit(set));
        osg::notifyChanged(geometry, osg::Geometry::IndexMappingFieldMask);
    }
}

void kyUVUtils::removeFromIndexMapping(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    if (std::uint16_t* const entry = soleMappingEntry(geometry)) {
        *entry = static_cast<std::uint16_t>(*entry & ~mappingBit(set));
        osg::notifyChanged(geometry, osg::Geometry::IndexMappingFieldMask);
    }
}

bool kyUVUtils::hasUVSet(const osg::NodePtr& node, kyUVTypes::UVSet set)
{
    const auto geometry = osg::coreAs<osg::Geometry>(node);
    if (!isValidGeometry(geometry, node, false))
        return false;
    return kyShellUtils::isShell(geometry) ? anySurfaceHasSlot(*node, set) : hasSlot(geometry, set);
}

void kyUVUtils::removeUVSet(const osg::NodePtr& node, kyUVTypes::UVSet set)
{
    for (const ActiveSurface& surface : usableSurfaces(node))
        setTexSlot(surface.geometry, set, osg::NullFC);
}

std::set<osg::NodePtr> kyUVUtils::getNodesWithoutUVSet(const osg::NodePtr& node,
                                                       kyUVTypes::UVSet set)
{
    std::set<osg::NodePtr> nodes;
    collectNodesWithoutUVSet(node, set, nodes);
    return nodes;
}

void kyUVUtils::collectNodesWithoutUVSet(const osg::NodePtr& node, kyUVTypes::UVSet set,
                                         std::set<osg::NodePtr>& nodes)
{
    osg::traverse(node, [&](osg::NodePtr& visited) -> unsigned int {
        if (!osg::dcast<osg::Geometry>(visited->getCore()))
            return osg::TraverseResult::Continue;
        if (!hasUVSet(visited, set))
            nodes.insert(visited);
        return osg::TraverseResult::Skip;
    });
}

std::vector<osg::NodePtr> kyUVUtils::getVisibleGeometryChildren(const osg::NodePtr& node)
{
    std::vector<osg::NodePtr> visible;
    kyNodeUtils::getVisibleGeometryNodes({node}, visible,
                                         kyRenderOptions::getInstance()->getShowABSideMask());
    return visible;
}
