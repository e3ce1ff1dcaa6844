#pragma once

#include "OpenSG/GeoProperty.h"
#include "UVUtils/model/Edge.h"

#include <unordered_map>
#include <vector>

/// Fills a table with the triangles at each edge, ascending; a triangle that runs along an edge
/// twice, as one that names a vertex twice does, stands there twice. What the table held is
/// dropped. It ends empty without indices, and when their number is no multiple of 3.
void fillEdgeTrianglesMap(std::unordered_map<Edge, std::vector<int>, EdgeHash>& trianglesOfEdge,
                          const osg::GeoIndicesPtr& indices);
