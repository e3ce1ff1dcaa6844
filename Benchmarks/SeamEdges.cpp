#include "SeamEdges.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/Geometry.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/TempIndexList.h"

namespace bench
{
namespace
{

/// Appends the lower edges of one row of cells; false when there is no such row.
bool appendRow(const ActiveSurface& surface, unsigned int row, unsigned int edgeCount,
               FlatEdgeList& edges)
{
    const std::vector<unsigned int> ids = surface.geometry->getIndices()->getValues();
    const unsigned int cellsInRow = ids[2] - ids[1] - 1; // of the first cell, which is never cut
    constexpr unsigned int idsOfCell = 6;
    for (unsigned int x = 0; x < cellsInRow && edges.size() < 2 * std::size_t{edgeCount}; ++x) {
        const std::size_t cell = (std::size_t{row} * cellsInRow + x) * idsOfCell;
        if (cell >= ids.size())
            return false;
        edges.insert(edges.end(), {surface.firstId + ids[cell], surface.firstId + ids[cell + 1]});
    }
    return true;
}

} // namespace

FlatEdgeList seamEdges(const osg::NodePtr& sheet, unsigned int edgeCount)
{
    constexpr unsigned int rowsApart = 10;
    FlatEdgeList edges;
    bool hasRows = true;
    for (unsigned int row = rowsApart / 2; hasRows; row += rowsApart)
        for (const ActiveSurface& surface : activeSurfaces(sheet))
            hasRows = appendRow(surface, row, edgeCount, edges) &&
                      edges.size() < 2 * std::size_t{edgeCount} && hasRows;
    return edges;
}

void selectEdges(const osg::NodePtr& node, const FlatEdgeList& edges)
{
    const auto core = osg::dcast<osg::Geometry>(node->getCore());
    osg::GeoTmpIndexEditInterface(core, kyUVTypes::SelectedEdges).assign(edges);
}

unsigned int countFlaggedTriangles(const std::vector<unsigned int>& triangles,
                                   const std::vector<char>& isFlagged)
{
    unsigned int count = 0;
    for (std::size_t i = 0; i < triangles.size(); i += 3)
        count += (isFlagged[triangles[i]] | isFlagged[triangles[i + 1]] |
                  isFlagged[triangles[i + 2]]) != 0
                     ? 1
                     : 0;
    return count;
}

} // namespace bench
