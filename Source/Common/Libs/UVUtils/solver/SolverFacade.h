#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/Vector.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/kyUVTypes.h"

#include <functional>
#include <vector>

// What the operations of kyUVUtils on the solver have in common: they open a geometry, have the
// solver work on it in its own ids, and close it.

/// Opens a geometry for the solver and does the work on it. `Failure` for an invalid geometry,
/// which is logged, and where there is nothing to work on.
kyUVTypes::ReturnCode
onWorkGeometry(const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
               const std::function<kyUVTypes::ReturnCode(const CompactMeshScope&)>& work);

/// Logs "WHAT failed for node NAME."
void logFailure(const char* what, const osg::NodePtr& node);

/// What ends work on UVs: a `Failure` is logged, a `Success` brings the UVs to the surfaces.
/// Returns the code that it got.
kyUVTypes::ReturnCode close(const CompactMeshScope& scope, const osg::NodePtr& node,
                            const char* what, kyUVTypes::ReturnCode code);

/// `Failure` in the place of a `Success` whose result could not be assigned.
inline kyUVTypes::ReturnCode unlessAssigned(bool isAssigned)
{
    return isAssigned ? kyUVTypes::Success : kyUVTypes::Failure;
}

/// Does a geometry have what the solver reads: indices and positions of three floats?
bool hasSolverInput(const osg::Geometry& geometry);

/// The vertices in one of the caller's lists, in ids of the work geometry: as they stand there, but
/// each once where there are so many entries that the solver would take them for all vertices.
std::vector<unsigned int> selectedVertices(const CompactMeshScope& scope,
                                           kyUVTypes::TempIndexList list);

/// The edges of a node that are held straight, in ids of the work geometry.
struct HeldEdges
{
    HeldEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
              const CompactMeshScope& scope);

    FlatEdgeList horizontal;
    FlatEdgeList vertical;
};

/// A change of present UVs by the solver, as kyUVUtils::editUVsUnfold3D does it.
struct SolverEdit
{
    const char* verb; ///< "pack", for messages
    const char* what; ///< "Packing UVs"
    /// Has the solver work on the selected vertices, all where none are given.
    std::function<kyUVTypes::ReturnCode(const CompactMeshScope& scope,
                                        std::vector<osg::Vector<float, 2>>& uvs,
                                        const std::vector<unsigned int>& selected)>
        run;
};
