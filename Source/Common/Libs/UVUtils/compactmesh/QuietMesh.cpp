#include "UVUtils/compactmesh/QuietMesh.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"

QuietMesh::QuietMesh(CompactShellMesh* mesh) : mesh_(mesh)
{
    if (mesh_)
        mesh_->enableGeomChangeCB(false);
}

QuietMesh::~QuietMesh()
{
    if (mesh_)
        mesh_->enableGeomChangeCB(true);
}
