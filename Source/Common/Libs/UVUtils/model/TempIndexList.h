#pragma once

#include <cstdint>

namespace kyUVTypes
{

/// The numbered index lists of a geometry (osg::GeoTmpIndexEditInterface) through which selections,
/// borders and constraints reach the application.
///
/// Their ids are those of the geometry that the application sees: on a shell they run over the
/// vertices of its active surfaces one after the other. Triangles take three entries each, edges
/// two (FlatEdgeList); the primitive type of a list is osg::GeoPrimitive's code for what it holds.
enum TempIndexList : std::uint32_t
{
    IslandTriangles = 1, ///< triangles of the selected islands
    IslandVertices = 2,  ///< vertices of the selected islands
    IslandSeeds = 3,     ///< one vertex of each selected island
    FreeVertices = 4,    ///< the application's selection of vertices
    AllVertices = 5,
    SelectedEdges = 6, ///< the application's selection of edges
    SelectedEdgeVertices = 7,
    BorderEdges = 8,     ///< edges that exactly one triangle uses
    HorizontalEdges = 9, ///< edges held straight; see EdgeConstraint
    VerticalEdges = 10
};

} // namespace kyUVTypes
