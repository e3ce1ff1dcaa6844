// Who owns a compact mesh, how it is found, and what makes it dirty.
//
// Two tables own the meshes, by container id: that of owners, which gives meshes out, and that of
// watched geometries, each with the meshes that depend on it. They are leaked on purpose:
// containers share the callbacks, may die after main and still call back.
//
// A container is in one of the tables exactly when the callbacks are registered on it, because a
// registration can't be taken back. It leaves both when it is destroyed.

#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVUtils.h"

namespace
{

/// Makes room before the table is full, so that entering surfaces one by one does not rehash.
template <class Table>
void reserveAhead(Table& table)
{
    if (table.size() >= table.bucket_count())
        table.rehash(2 * table.size());
}

/// The fields that the mesh of one slot is built from.
osg::FieldMask fieldsRead(kyUVTypes::UVSet slot)
{
    using G = osg::GeometryBase;
    return G::PositionsFieldMask | G::TypesFieldMask | G::LengthsFieldMask | G::IndicesFieldMask |
           G::GeometryTypeFieldMask | G::IndexMappingFieldMask |
           G::texSlotFieldMask(static_cast<unsigned int>(slot));
}

/// Selections don't survive a change of the triangles.
void dropTempIndexLists(unsigned int id)
{
    const osg::FieldContainerPtr container = osg::FieldContainerFactory::the()->getContainer(id);
    osg::GeoTmpIndexEditInterface::setNullforAll(osg::dcast<osg::Geometry>(container));
}

} // namespace

CompactShellMesh::CompactShellMesh() : compactGeometry_(osg::GeometryBase::create()) {}

CompactShellMesh::~CompactShellMesh() = default;

CompactShellMesh::OwnerTable& CompactShellMesh::geomIdToCMeshMap()
{
    static auto& table = *new OwnerTable;
    return table;
}

CompactShellMesh::WatchTable& CompactShellMesh::geomIdToParentCMeshsMap()
{
    static auto& table = *new WatchTable;
    return table;
}

CompactShellMesh* CompactShellMesh::getCMesh(const osg::GeometryPtr& geometry,
                                             const osg::NodePtr& node, kyUVTypes::UVSet set)
{
    if (!geometry || !node || !kyUVUtils::useCMesh(geometry))
        return nullptr;
    MeshPtr mesh = findMesh(geometry);
    if (!mesh) {
        mesh = MeshPtr(new CompactShellMesh);
        registerToMesh(geometry, mesh, true);
    }
    if (mesh->isDirty(set)) {
        const std::vector<ActiveSurface> surfaces = usableSurfaces(node);
        mesh->initStates(surfaces, set);
        for (const ActiveSurface& surface : surfaces)
            registerToMesh(surface.geometry, mesh, false);
    }
    reserveAhead(geomIdToCMeshMap());
    reserveAhead(geomIdToParentCMeshsMap());
    return mesh.get();
}

bool CompactShellMesh::isBuildDue(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
{
    const MeshPtr mesh = findMesh(geometry);
    return !mesh || mesh->isDirty(set);
}

CompactShellMesh::MeshPtr CompactShellMesh::findMesh(const osg::FieldContainerPtr& container)
{
    const auto entry = geomIdToCMeshMap().find(container ? container->getId() : 0);
    return entry == geomIdToCMeshMap().end() ? nullptr : entry->second;
}

void CompactShellMesh::registerToMesh(const osg::FieldContainerPtr& container, const MeshPtr& mesh,
                                      bool isOwner)
{
    static const auto onChange =
        std::make_shared<osg::FieldContainer::ChangedCallback>(&onGeometryChangeCB);
    static const auto onDestroy =
        std::make_shared<osg::FieldContainer::DestroyCallback>(&onGeometryDestroyCB);
    if (!container)
        return;
    const unsigned int id = container->getId();
    if (!geomIdToCMeshMap().contains(id) && !geomIdToParentCMeshsMap().contains(id)) {
        container->registerChangedCallback(onChange);
        container->registerOnDestroyCallback(onDestroy);
    }
    if (isOwner)
        geomIdToCMeshMap()[id] = mesh;
    geomIdToParentCMeshsMap()[id].push_back(mesh);
}

void CompactShellMesh::onGeometryChangeCB(unsigned int id, osg::FieldMask mask,
                                          unsigned int /*origin*/)
{
    const auto entry = geomIdToParentCMeshsMap().find(id);
    if (entry == geomIdToParentCMeshsMap().end())
        return;
    constexpr osg::FieldMask triangleFields =
        osg::GeometryBase::IndicesFieldMask | osg::GeometryBase::GeometryTypeFieldMask;
    for (const MeshPtr& mesh : entry->second) {
        if (!mesh->isGeomChangeCBEnabled() || !(mask & fieldsRead(mesh->slot_)).any())
            continue;
        mesh->dirty_ = true;
        if ((mask & triangleFields).any())
            dropTempIndexLists(id);
    }
}

void CompactShellMesh::onGeometryDestroyCB(unsigned int id)
{
    // Entries are taken out first and die with these handles: a mesh that goes destroys its own
    // geometry, whose callbacks must find the tables whole.
    const auto owned = geomIdToCMeshMap().extract(id);
    if (owned)
        owned.mapped()->dirty_ = true;
    const auto watched = geomIdToParentCMeshsMap().extract(id);
    if (watched)
        for (const MeshPtr& mesh : watched.mapped())
            mesh->dirty_ = true;
}
