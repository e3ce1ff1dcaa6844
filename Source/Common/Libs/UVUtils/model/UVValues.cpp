// Reads and writes UVs through the compact mesh, which is above this directory: what a UV value is
// belongs to the model, and where it lies is the mesh's knowledge. No other file of the model
// includes the compact mesh.

#include "OpenSG/CoreAs.h"
#include "OpenSGExt/kyShellUtils.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <optional>
#include <ranges>
#include <span>

namespace
{

using osg::Vec2f;
using UVArray = kyUVUtils::UVArray;
using Ids = std::span<const unsigned int>;

bool areBelow(Ids ids, std::size_t end)
{
    return std::all_of(ids.begin(), ids.end(), [end](unsigned int id) { return id < end; });
}

/// The compact ids of the first vertices of a node, as far as the mesh knows them.
Ids compactIdsOfFirst(const CompactShellMesh& mesh, unsigned int vertexCount)
{
    const Ids known(mesh.getVertFToC());
    return known.first(std::min<std::size_t>(vertexCount, known.size()));
}

/// The compact ids of some vertices, or for null ids of all that the node's surfaces have now; none
/// if an id is that of no vertex.
std::optional<std::vector<unsigned int>> compactIdsOf(const CompactShellMesh& mesh,
                                                      const osg::NodePtr& node,
                                                      const unsigned int* ids, unsigned int count)
{
    if (!ids) {
        const Ids all = compactIdsOfFirst(mesh, vertexCountOf(activeSurfaces(node)));
        return std::vector(all.begin(), all.end());
    }
    if (!areBelow(Ids(ids, count), mesh.getVertFToC().size()))
        return std::nullopt;
    std::vector<unsigned int> compactIds;
    mesh.mapVertsFToC(ids, count, compactIds);
    return compactIds;
}

void gather(std::span<const Vec2f> slot, Ids ids, UVArray& uvs)
{
    // Made from the values, where a resize would write zeros first.
    const auto values =
        std::views::transform(ids, [slot](unsigned int id) -> const Vec2f& { return slot[id]; });
    uvs.assign(values.begin(), values.end());
}

void scatter(const UVArray& uvs, Ids ids, std::span<Vec2f> slot)
{
    for (std::size_t i = 0; i < ids.size(); ++i)
        slot[ids[i]] = uvs[i];
}

void readThroughMesh(const CompactShellMesh& mesh, kyUVTypes::UVSet set, Ids compactIds,
                     UVArray& uvs)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(mesh.getGeomPtr(), set);
    if (slot && !compactIds.empty())
        gather(slot->values(), compactIds, uvs);
}

void readPlain(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set, const unsigned int* ids,
               unsigned int count, UVArray& uvs)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(geometry, set);
    if (!slot)
        return;
    if (!ids)
        uvs = slot->getValues();
    else if (areBelow(Ids(ids, count), slot->getSize()))
        gather(slot->values(), Ids(ids, count), uvs);
}

void writeThroughMesh(const CompactMeshScope& scope, const osg::NodePtr& node, kyUVTypes::UVSet set,
                      const unsigned int* ids, unsigned int count, const UVArray& uvs)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(scope.getGeometry(), set);
    const auto compactIds = compactIdsOf(*scope.getMesh(), node, ids, count);
    if (!slot || !compactIds || compactIds->size() != uvs.size())
        return;
    scatter(uvs, *compactIds, slot->values());
    notifySlotChanged(scope.getGeometry(), set);
    scope.commit();
}

void writePlain(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set, const unsigned int* ids,
                unsigned int count, const UVArray& uvs)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(geometry, set);
    if (!slot)
        return;
    scatter(uvs, Ids(ids, count), slot->values());
    notifySlotChanged(geometry, set);
}

/// The cores whose own slots hold the values of a node, with the node of each: a plain geometry
/// itself, or every surface of a shell, active or not. Empty for a node without a valid geometry.
struct SlotOwner
{
    osg::NodePtr node;
    osg::GeometryPtr geometry;
};

std::vector<SlotOwner> slotOwners(const osg::NodePtr& node)
{
    const auto core = osg::coreAs<osg::Geometry>(node);
    if (!kyUVUtils::isValidGeometry(core, node, false))
        return {};
    if (!kyShellUtils::isShell(core))
        return {{node, core}};
    std::vector<SlotOwner> owners;
    for (unsigned int i = 0; i < node->getNChildren(); ++i) {
        const osg::NodePtr child = node->getChild(i);
        if (const auto surface = osg::dcast<osg::Geometry>(child->getCore()))
            owners.push_back({child, surface});
    }
    return owners;
}

} // namespace

void kyUVUtils::getUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, UVArray& uvs)
{
    // The walk over the surfaces of a shell looks at all their triangles, and leaves out what is
    // not valid, so that asking isValidGeometry as well would double the time of a read.
    if (!kyShellUtils::isShell(geometry) && !isValidGeometry(geometry, node, false))
        return;
    if (!useCMesh(geometry)) {
        readPlain(geometry, set, nullptr, 0, uvs);
        return;
    }
    const unsigned int vertexCount = vertexCountOf(activeSurfaces(node));
    if (vertexCount == 0)
        return;
    if (const CompactShellMesh* mesh = CompactShellMesh::getCMesh(geometry, node, set))
        readThroughMesh(*mesh, set, compactIdsOfFirst(*mesh, vertexCount), uvs);
}

void kyUVUtils::getUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, const unsigned int* ids, unsigned int count,
                            UVArray& uvs)
{
    if (!ids) {
        getUVValues(geometry, node, set, uvs);
        return;
    }
    if (!isValidGeometry(geometry, node, false))
        return;
    if (!useCMesh(geometry))
        readPlain(geometry, set, ids, count, uvs);
    else if (const CompactShellMesh* mesh = CompactShellMesh::getCMesh(geometry, node, set))
        if (const auto compactIds = compactIdsOf(*mesh, node, ids, count))
            readThroughMesh(*mesh, set, *compactIds, uvs);
}

void kyUVUtils::setUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, const UVArray& uvs)
{
    setUVValues(geometry, node, set, nullptr, 0, uvs);
}

void kyUVUtils::setUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, const unsigned int* ids, unsigned int count,
                            const UVArray& uvs)
{
    if (!isValidGeometry(geometry, node, false) || uvs.empty() || (ids && uvs.size() != count))
        return;
    if (useCMesh(geometry)) {
        const CompactMeshScope scope(geometry, node, set);
        if (scope.getMesh())
            writeThroughMesh(scope, node, set, ids, count, uvs);
    } else if (!ids) {
        setLocalUVs(geometry, set, uvs);
    } else if (areBelow(Ids(ids, count), vertexCountOf(geometry))) {
        initTexCoordsField(geometry, set);
        writePlain(geometry, set, ids, count, uvs);
    }
}

kyUVUtils::UVArray kyUVUtils::getUVValuesLocal(const osg::GeometryPtr& geometry,
                                               kyUVTypes::UVSet set)
{
    const osg::GeoTexCoords2fPtr slot = geometry ? uvSlot(geometry, set) : osg::NullFC;
    return slot ? slot->getValues() : UVArray();
}

void kyUVUtils::setLocalUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                            const UVArray& uvs)
{
    if (!geometry || vertexCountOf(geometry) != uvs.size())
        return;
    initTexCoordsField(geometry, set);
    assignTexCoords(geometry, set, uvs);
}

void kyUVUtils::getNoCompactUVValues(const osg::NodePtr& node, kyUVTypes::UVSet set, UVArray& uvs)
{
    for (const SlotOwner& owner : slotOwners(node)) {
        const osg::GeoTexCoords2fPtr slot = uvSlot(owner.geometry, set);
        if (slot && slot->getSize() > 0)
            uvs.insert(uvs.end(), slot->values().begin(), slot->values().end());
        else
            uvs.resize(uvs.size() + vertexCountOf(owner.geometry));
    }
}

void kyUVUtils::getNoCompactUVValues(const osg::NodePtr& node, kyUVTypes::UVSet set,
                                     std::map<unsigned int, UVArray>& uvsOfNode)
{
    for (const SlotOwner& owner : slotOwners(node))
        uvsOfNode[owner.node->getId()] = getUVValuesLocal(owner.geometry, set);
}

void kyUVUtils::setNoCompactUVValues(const osg::NodePtr& node, kyUVTypes::UVSet set,
                                     const UVArray& uvs)
{
    if (uvs.empty())
        return;
    const std::vector<SlotOwner> owners = slotOwners(node);
    if (owners.size() == 1 && owners.front().node == node) {
        setLocalUVs(owners.front().geometry, set, uvs);
        return;
    }
    std::size_t offset = 0;
    for (const SlotOwner& owner : owners) {
        const std::size_t count = vertexCountOf(owner.geometry);
        if (offset + count <= uvs.size()) {
            const auto begin = uvs.begin() + static_cast<std::ptrdiff_t>(offset);
            setLocalUVs(owner.geometry, set, {begin, begin + static_cast<std::ptrdiff_t>(count)});
        }
        offset += count;
    }
}

bool kyUVUtils::assignTexCoords(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                                const UVArray& uvs)
{
    const osg::GeoTexCoords2fPtr slot = geometry ? uvSlot(geometry, set) : osg::NullFC;
    if (!slot)
        return false;
    slot->setValues(uvs);
    notifySlotChanged(geometry, set);
    return true;
}

bool kyUVUtils::assignTexCoords(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                                const UVArray& uvs, const std::vector<unsigned int>& vertexIds)
{
    const osg::GeoTexCoords2fPtr slot = geometry ? uvSlot(geometry, set) : osg::NullFC;
    if (!slot || slot->getSize() != uvs.size())
        return false;
    const std::span<Vec2f> values = slot->values();
    for (const unsigned int id : vertexIds)
        if (id < values.size())
            values[id] = uvs[id];
    notifySlotChanged(geometry, set);
    return true;
}
