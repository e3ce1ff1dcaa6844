#pragma once

#include "ShellMeshes.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"

namespace bench
{

/// The first build of the compact mesh of a sheetShell, as often as wanted, to set against what
/// brings a mesh along. One that was built before keeps tables that make the next build quicker.
class FreshBuild
{
public:
    FreshBuild(unsigned int triangleCount, unsigned int surfaceCount, kyUVTypes::UVSet slot)
        : triangleCount_(triangleCount), surfaceCount_(surfaceCount), slot_(slot)
    {}

    /// A new shell for the next build; not a part of it.
    void makeReady() { shell_ = sheetShell(triangleCount_, surfaceCount_, WeldedBorders); }
    void operator()() const { CompactShellMesh::getCMesh(coreOf(shell_), shell_, slot_); }

private:
    unsigned int triangleCount_;
    unsigned int surfaceCount_;
    kyUVTypes::UVSet slot_;
    osg::RefPtr<osg::Node> shell_;
};

} // namespace bench
