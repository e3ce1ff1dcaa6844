// Who has a border record, and what makes it dirty.
//
// One record can stand under several ids: that of the geometry that was asked for, that of its
// compact mesh's own geometry, and those of its surfaces. As with the tables of the meshes
// themselves an id is in the table exactly when the callbacks are registered on its container, and
// the table is leaked on purpose, since containers may die after main and still call back.

#include "UVUtils/compactmesh/BorderDirtyStates.h"

#include "OpenSGExt/kyShellUtils.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVUtils.h"

#include <unordered_map>

namespace
{

using StateTable = std::unordered_map<unsigned int, BorderDirtyStates::Ptr>;

StateTable& geomIdToBorderStatesMap()
{
    static auto& table = *new StateTable;
    return table;
}

void onGeometryChange(unsigned int id, osg::FieldMask mask, unsigned int /*origin*/)
{
    if (!(mask & osg::GeometryBase::IndicesFieldMask).any())
        return;
    const auto entry = geomIdToBorderStatesMap().find(id);
    if (entry != geomIdToBorderStatesMap().end())
        entry->second->touch();
}

/// Entries of the same record under other ids stay.
void onGeometryDestroy(unsigned int id)
{
    const auto entry = geomIdToBorderStatesMap().extract(id);
    if (entry)
        entry.mapped()->touch();
}

void registerUnder(const osg::GeometryPtr& geometry, const BorderDirtyStates::Ptr& states)
{
    static const auto onChange =
        std::make_shared<osg::FieldContainer::ChangedCallback>(&onGeometryChange);
    static const auto onDestroy =
        std::make_shared<osg::FieldContainer::DestroyCallback>(&onGeometryDestroy);
    const auto [entry, isNew] =
        geomIdToBorderStatesMap().insert_or_assign(geometry->getId(), states);
    if (!isNew)
        return;
    geometry->registerChangedCallback(onChange);
    geometry->registerOnDestroyCallback(onDestroy);
}

BorderDirtyStates::Ptr findOrMake(const osg::GeometryPtr& geometry)
{
    const auto entry = geomIdToBorderStatesMap().find(geometry->getId());
    if (entry != geomIdToBorderStatesMap().end())
        return entry->second;
    auto states = std::make_shared<BorderDirtyStates>();
    registerUnder(geometry, states);
    return states;
}

} // namespace

BorderDirtyStates::Ptr BorderDirtyStates::find(const osg::GeometryPtr& geometry,
                                               const osg::NodePtr& node, kyUVTypes::UVSet set)
{
    if (!geometry || !node)
        return nullptr;
    Ptr states = findOrMake(geometry);
    if (!kyUVUtils::useCMesh(geometry) || !states->isDirty(set))
        return states;
    if (const CompactShellMesh* mesh = CompactShellMesh::getCMesh(geometry, node, set))
        registerUnder(mesh->getGeomPtr(), states);
    if (kyShellUtils::isShell(geometry))
        for (const ActiveSurface& surface : activeSurfaces(node))
            registerUnder(surface.geometry, states);
    return states;
}

bool BorderDirtyStates::isDirty(kyUVTypes::UVSet set) const
{
    return dirty_ || uvSet_ != set || compactMesh_ != kyUVUtils::getUseCompactMesh();
}

void BorderDirtyStates::clean(kyUVTypes::UVSet set)
{
    uvSet_ = set;
    compactMesh_ = kyUVUtils::getUseCompactMesh();
    dirty_ = false;
}
