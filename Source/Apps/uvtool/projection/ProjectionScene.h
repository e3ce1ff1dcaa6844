#pragma once

#include "document/Document.h"
#include "mesh/CornerVertices.h"

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/model/kyUVTypes.h"

#include <cstddef>
#include <span>
#include <vector>

namespace uvtool
{

/// Geometries of a document as nodes to project, in the units of its scene.
///
/// A plain geometry stands in its own space below a transform that places it in the scene. Those of
/// a shell are its surfaces, in the space of the scene. The root can scale the whole. They have
/// positions, triangles in the order of the document, and nothing else: a vertex for each place.
struct ProjectionScene
{
    struct Surface
    {
        std::size_t number = 0; ///< in the document
        osg::GeometryPtr core;
        std::size_t vertexCount = 0; ///< before anything is done to it
    };

    osg::RefPtr<osg::Node> root;
    std::vector<osg::NodePtr> nodes; ///< that hold the settings: one for each geometry or the shell
    std::vector<Surface> surfaces;

    /// 1 at the start.
    void setScale(float factor) const;
};

/// Of the geometries with these numbers, in their order.
ProjectionScene makeProjectionScene(const Document& document, std::span<const std::size_t> numbers,
                                    bool isShell);

/// What a projection has made of a surface.
struct ProjectedSurface
{
    CornerVertices vertices; ///< in order of first use
    std::vector<Vec2f> uvs;  ///< [3 * triangleCount] at the triangle corners
};
ProjectedSurface projectedSurface(const ProjectionScene::Surface& surface, kyUVTypes::UVSet slot);

} // namespace uvtool
