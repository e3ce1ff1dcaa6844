#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/kyUVTypes.h"

#include <vector>

/// The UVs that the vertices of a geometry get, and the vertices that are split for it.
struct TransferredUVs
{
    std::vector<osg::Vec2f> uvs;          ///< [vertex] meaningless where isSampled is 0
    std::vector<unsigned char> isSampled; ///< [vertex]

    std::vector<unsigned int> sourceIds; ///< [new vertex] the one that it is split from
    std::vector<unsigned int> newIds;    ///< [new vertex] ascending, from uvs.size() on
    std::vector<osg::Vec2f> newUVs;      ///< [new vertex]
    std::vector<std::vector<unsigned int>> newCorners; ///< [new vertex] those that name it

    explicit TransferredUVs(std::size_t vertexCount) : uvs(vertexCount), isSampled(vertexCount) {}

    void setUV(unsigned int vertex, const osg::Vec2f& uv);
    /// Corners count in the index list.
    void addVertex(unsigned int source, const osg::Vec2f& uv, std::vector<unsigned int> corners);
    std::size_t vertexCount() const { return uvs.size() + newUVs.size(); }
};

/// Makes the new vertices, with all properties of the old ones, and has the corners name them. Ids
/// of 16 bits that don't suffice become ids of 32. Sends the notices. Does nothing without any.
void splitVertices(const osg::GeometryPtr& geometry, const TransferredUVs& transferred);

/// Writes the UVs of old and new vertices to a slot, which need not hold UVs so far. A vertex
/// without a sample keeps what it has there. Sends the notices.
void writeUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
              const TransferredUVs& transferred);
