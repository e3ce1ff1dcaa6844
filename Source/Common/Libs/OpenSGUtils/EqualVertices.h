#pragma once

#include "OpenSG/Geometry.h"

#include <span>
#include <vector>

/// Vertices joined with those that are equal to them.
struct JoinedVertices
{
    std::vector<unsigned int> newIdOf; ///< [old vertex]
    std::vector<unsigned int> sources; ///< [new vertex] the first old one of its equals; ascending
};

/// What makes two floats the same in a comparison of vertices.
enum class FloatEquality
{
    ByValue, ///< -0 and 0 are the same
    ByBits
};

/// Joins vertices that are equal in some vertex properties. A NaN is equal to one of the same bits,
/// so that no vertex differs from itself; a property reads as zero beyond its end.
///
/// properties  vertex properties of any kinds; with none all vertices are equal
///
/// Linear, by one look into a hash table for each vertex. The result does not depend on the hashes.
JoinedVertices joinEqualVertices(std::span<const osg::GeoPropertyPtr> properties,
                                 unsigned int vertexCount, FloatEquality equality);
