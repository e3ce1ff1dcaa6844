// Lists of edges of kyUVUtils that are made from lists alone.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

void kyUVUtils::updateEdgeVSet(const osg::GeometryPtr& geometry)
{
    const std::span<const unsigned int> edges =
        osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::SelectedEdges).values();
    std::vector<unsigned int> vertices(edges.begin(), edges.end());
    sortAndDropRepeats(vertices);

    osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::SelectedEdgeVertices);
    if (list.isNull())
        list.setType(osg::GeoPrimitive::Points);
    list.assign(vertices);
}

void kyUVUtils::mergeEdgeSet(const unsigned int* a, unsigned int aCount, const unsigned int* b,
                             unsigned int bCount, FlatEdgeList& out)
{
    const std::span<const unsigned int> first(a, a ? aCount : 0);
    const std::span<const unsigned int> second(b, b ? bCount : 0);
    if (first.empty() || second.empty()) {
        const auto present = first.empty() ? second : first;
        out = FlatEdgeList(present.begin(), present.end());
        return;
    }
    std::vector<Edge> edges = edgesOf(first);
    const std::vector<Edge> added = edgesOf(second);
    edges.insert(edges.end(), added.begin(), added.end());
    sortAndDropRepeats(edges);
    out = flatListOf(edges);
}
