#pragma once

#include "document/Document.h"
#include "layout/DocumentLayout.h"
#include "mesh/CornerVertices.h"
#include "mesh/SolverFrame.h"

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// A plain geometry, or a shell with its surfaces, as the editing operations of the library take
/// it. Unlike what the solver gets, it has every triangle of the file.
///
/// Vertices are the distinct corners, whose numbers are the ids of the command line: those of the
/// surfaces one after the other. Positions are those in the scene, scaled by a power of two (and
/// moved where they lie far off) to a box near 1, for the tolerances of the library are absolute.
/// Corners without a UV in the slot have 0, 0 there.
struct SceneGeometry
{
    /// One of the file's geometries. A plain geometry is its own surface.
    struct Surface
    {
        std::size_t number = 0; ///< in the document
        bool hasUVs = false;    ///< in the slot
        std::string fault;      ///< why the library passes it over; empty if it doesn't
    };

    osg::RefPtr<osg::Node> node;
    bool isShell = false;
    std::vector<Surface> surfaces;
    int exponent = 0; ///< positions = scene * 2^exponent, as SolverFrame has it

    // Of the surfaces without a fault.
    std::size_t vertexCount = 0;
    std::vector<std::uint32_t> triangles;         ///< [3 * triangleCount] vertices
    std::vector<TriangleSource> sourceOfTriangle; ///< [triangleCount]

    std::size_t triangleCount() const { return sourceOfTriangle.size(); }
    osg::GeometryPtr core() const { return osg::dcast<osg::Geometry>(node->getCore()); }
    /// The cores of the surfaces without a fault, one after the other.
    void forEachSurface(const std::function<void(const osg::GeometryPtr&)>& use) const;
};

/// The vertices of the geometry of that number in the document, in order of first use.
using VerticesOf = std::function<CornerVertices(std::size_t)>;

/// A geometry of the document by itself.
SceneGeometry makePlainScene(const Document& document, std::size_t number, std::size_t slot);

/// A shell whose surfaces are these geometries of the document, in this order.
SceneGeometry makeShellScene(const Document& document, std::span<const std::size_t> numbers,
                             std::size_t slot);

/// Either, with other vertices than the distinct corners; those of one agree in position and in the
/// UV of the slot. A plain geometry is a single one.
SceneGeometry makeScene(const Document& document, std::span<const std::size_t> numbers,
                        std::size_t slot, bool isShell, const VerticesOf& verticesOf);

/// The same in a frame that it may have in common with others.
SceneGeometry makeScene(const Document& document, std::span<const std::size_t> numbers,
                        std::size_t slot, bool isShell, const VerticesOf& verticesOf,
                        const SolverFrame& frame);

} // namespace uvtool
