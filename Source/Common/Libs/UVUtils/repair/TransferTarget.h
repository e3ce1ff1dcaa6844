#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/model/Buckets.h"

#include <span>

/// What a transfer of UVs reads of the geometry that it writes to.
struct TransferTarget
{
    std::span<const osg::Pnt3f> positions;   ///< [vertex]
    std::span<const osg::Vec3f> normals;     ///< [vertex] may be too short
    std::span<const unsigned int> triangles; ///< [corner] three vertices each, all of them there
    Buckets<unsigned int> cornersOfVertex;   ///< ascending at each

    TransferTarget(std::span<const osg::Pnt3f> positionsOfTarget,
                   std::span<const osg::Vec3f> normalsOfTarget,
                   std::span<const unsigned int> trianglesOfTarget)
        : positions(positionsOfTarget), normals(normalsOfTarget), triangles(trianglesOfTarget),
          cornersOfVertex(positions.size(), [this](const auto& add) {
              for (unsigned int corner = 0; corner < triangles.size(); ++corner)
                  add(triangles[corner], corner);
          })
    {}

    /// Zero beyond the end of the normals.
    osg::Vec3f normalAt(unsigned int vertex) const
    {
        return vertex < normals.size() ? normals[vertex] : osg::Vec3f();
    }
};
