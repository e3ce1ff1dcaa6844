#pragma once

#include "OpenSG/GeoProperty.h"

#include <span>
#include <vector>

// The way of points, edges and triangles, named by vertex ids, through a change of the ids. What
// becomes of each is told at kyGeoIndicesStore.

/// Elements one after the other.
struct ElementList
{
    unsigned int idsPerElement = 1; ///< 1 points, 2 edges, 3 triangles
    std::vector<unsigned int> ids;
};

/// Vertices that kept their ids and got copies: copies[k] is one of sources[k], which ascend.
struct AddedCopies
{
    std::span<const unsigned int> sources;
    std::span<const unsigned int> copies;
    unsigned int oldCount = 0;
};

/// indices  the triangles in new ids
void mapToCopies(std::span<ElementList> lists, const std::vector<std::vector<unsigned int>>& newIds,
                 const osg::GeoIndicesPtr& indices);
/// triangles  those that name a source or a copy, in new ids; repeats allowed
void mapToCopies(std::span<ElementList> lists, const AddedCopies& added,
                 std::span<const unsigned int> triangles);

/// newIds  [old id]
void mapToOne(std::span<ElementList> lists, std::span<const unsigned int> newIds);
