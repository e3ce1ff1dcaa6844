#pragma once

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/model/Edge.h"

#include <array>
#include <set>
#include <string>
#include <vector>

// What undo and redo have to bring back, and how two such states compare.

struct SurfaceState
{
    std::vector<float> merged; ///< positions, normals, other UVs: what a sew compares
    UVs uvs;
    Ids indices;
    std::string indexClass;
    std::vector<bool> hasSlot;                    ///< [slot] with a value in it
    std::array<std::vector<Edge>, 2> constraints; ///< horizontal, vertical
    bool operator==(const SurfaceState&) const = default;
};

/// The temporary lists. What is made from the mesh is compared by what it names: which of several
/// welded vertices stands there, and in which order, depends on how the mesh came to be.
struct Lists
{
    std::vector<Ids> saved; ///< seeds, vertices, edges, and the vertices of these
    std::set<Ids> triangles, vertices, borders;
    bool operator==(const Lists&) const = default;
};

/// What an undo has to bring back.
struct State
{
    std::vector<SurfaceState> surfaces;
    UVs uvs;
    Ids welded; ///< for each vertex the lowest of those that the mesh has made one with it
    std::size_t islandCount = 0;
    Lists lists;
};

State stateOf(const osg::NodePtr& node);

/// A temporary list of a node's geometry.
osg::GeoTmpIndexEditInterface listOf(const osg::NodePtr& node, unsigned int number);

/// Where two states differ, for the reader of a failure.
std::string differences(const State& a, const State& b);

/// Sets all that a sew may take from a neighbour within its tolerances to what it should be.
void takeWithinTolerance(State& state, const State& expected);
/// Sets UVs that are off by rounding to what they should be.
void takeWithinRounding(State& state, const State& expected);
