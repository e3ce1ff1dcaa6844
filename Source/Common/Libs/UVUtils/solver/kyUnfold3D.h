#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Vector.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/solver/OptimizeSettings.h"
#include "UVUtils/solver/PackCover.h"
#include "UVUtils/solver/PackSettings.h"
#include "UVUtils/solver/SeamSettings.h"
#include "UVUtils/solver/UVWInputMode.h"
#include "UVUtils/solver/UnfoldSettings.h"

#include <vector>

/// The operations of the solver, each on one plain geometry and one UV slot. They read the
/// geometry and answer with arrays; putting these into the geometry is the caller's.
///
/// Reading may change a geometry in one way: one with several index lists is made single indexed.
///
/// uvs               [vertices]  written on `Success` only, one entry for each vertex
/// horizontalEdges, verticalEdges  edges that end with both vertices at one v (horizontal) or one u
///                   (vertical); a pair that is no edge is logged and passed over, an odd count is
///                   logged and holds nothing
/// selectedVertices  what to work on, by vertex id; everything when it is empty or has as many
///                   entries as there are vertices
///
/// `Failure`: the geometry has no triangles that the solver can take (no word of it), or the solver
/// reported an error or threw (logged). `Cancelled`: the user asked to stop through
/// kyStackedProgress. Each run shows its progress there, and writes lines on what it does to
/// standard output. One run at a time in a process, on the thread that owns the geometry.
namespace kyUnfold3D
{

/// Flattens the geometry into new UVs, from the UVs that `inputMode` names. In the mode `InputUVs`
/// `uvs` is read first. An island that the selection touches is unfolded whole.
///
/// packSettings  pack the islands afterwards, in the same run; null for no packing
kyUVTypes::ReturnCode unfold(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                             std::vector<osg::Vector<float, 2>>& uvs, UVWInputMode inputMode,
                             const UnfoldSettings& settings, const PackSettings* packSettings,
                             const FlatEdgeList& horizontalEdges, const FlatEdgeList& verticalEdges,
                             const std::vector<unsigned int>& selectedVertices);

/// The same for the whole geometry.
kyUVTypes::ReturnCode unfold(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                             std::vector<osg::Vector<float, 2>>& uvs, UVWInputMode inputMode,
                             const UnfoldSettings& settings, const PackSettings* packSettings,
                             const FlatEdgeList& horizontalEdges,
                             const FlatEdgeList& verticalEdges);

/// Lays the UV islands that the slot holds out in a box or a grid of tiles. With a selection the
/// islands that it touches are moved and all others stay; one that touches no island packs all.
kyUVTypes::ReturnCode pack(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           std::vector<osg::Vector<float, 2>>& uvs, const PackSettings& settings,
                           const std::vector<unsigned int>& selectedVertices);

/// The same, and tells how much of the tiles is covered, and how much could be at most.
kyUVTypes::ReturnCode pack(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           std::vector<osg::Vector<float, 2>>& uvs, const PackSettings& settings,
                           const std::vector<unsigned int>& selectedVertices, PackCover& cover);

/// The same for the whole geometry.
kyUVTypes::ReturnCode pack(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           std::vector<osg::Vector<float, 2>>& uvs, const PackSettings& settings);

/// Relaxes the UVs that the slot holds; those that are empty or all zero are taken from the
/// positions. Nothing is cut or packed, and vertices outside the selection stay.
kyUVTypes::ReturnCode optimize(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                               std::vector<osg::Vector<float, 2>>& uvs,
                               const OptimizeSettings& settings,
                               const FlatEdgeList& horizontalEdges,
                               const FlatEdgeList& verticalEdges,
                               const std::vector<unsigned int>& selectedVertices);

/// The same for the whole geometry.
kyUVTypes::ReturnCode optimize(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                               std::vector<osg::Vector<float, 2>>& uvs,
                               const OptimizeSettings& settings,
                               const FlatEdgeList& horizontalEdges,
                               const FlatEdgeList& verticalEdges);

/// Finds the edges along which the geometry should be cut, and cuts nothing.
///
/// edges  written on `Success` only; empty where no seam is needed
kyUVTypes::ReturnCode seam(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           const SeamSettings& settings, FlatEdgeList& edges);

} // namespace kyUnfold3D
