#pragma once

#include "OpenSG/GeoProperty.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/Vector.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/solver/UVWInputMode.h"

#include <span>
#include <unordered_map>
#include <vector>

/// One triangle geometry as the flat arrays that the solver imports, and the way between the
/// library's edges (pairs of vertex ids) and the solver's.
///
/// A value: it owns its arrays and keeps no hold of the geometry. One serves one solver run.
class kyUnfold3DData
{
public:
    /// Reads the geometry; ask `isValid` afterwards. A geometry with several index lists is made
    /// single indexed, which is the only change to it. Writes lines on what it found to standard
    /// output.
    ///
    /// uvSet  the slot that is read in the mode `GeometryTexCoords`
    /// uvs    [vertices]  the start UVs of the mode `InputUVs`
    ///
    /// Refused, so that the result is not valid: a null geometry, one without indices or
    /// three-float positions, an index count that is no multiple of 3, types or lengths that do
    /// not say "triangles", and in the mode `GeometryTexCoords` a slot whose size is not the number
    /// of positions. Whether the ids are in range and the numbers finite is not looked at: the
    /// solver answers for that with an error of its own.
    kyUnfold3DData(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                   kyUnfold3D::UVWInputMode inputMode,
                   const std::vector<osg::Vector<float, 2>>& uvs);

    /// True when there are positions, and as many UV points.
    bool isValid() const;

    const std::vector<double>& getCoordsXYZ() const { return coordsXYZ_; } ///< x, y, z a vertex
    const std::vector<double>& getCoordsUVW() const { return coordsUVW_; } ///< u, v, w a UV point
    const std::vector<int>& getPolySizes() const { return polySizes_; }    ///< corners a polygon: 3
    const std::vector<int>& getPoly3DIDs() const { return poly3DIDs_; }    ///< vertex of a corner
    const std::vector<int>& getPolyUVWIDs() const { return polyUVWIDs_; }  ///< UV point of a corner
    int getNumVertices() const { return numVertices_; }
    int getNumUVs() const { return numUVs_; }

    /// The solver's numbers of edges.
    ///
    /// vertexPairs  each pair in either order
    ///
    /// An odd count is logged and gives nothing. A pair that is no edge of the mesh is logged and
    /// left out. The first call numbers all edges, in time linear in the triangles.
    std::vector<int> getEdgeIds(const FlatEdgeList& vertexPairs);

    /// The vertex pairs of a selection of edges as the solver returns it.
    ///
    /// polygonEdges  two numbers an edge: a polygon, and 0, 1 or 2 for the edge from that corner of
    ///               it to the next
    ///
    /// An odd count is logged and gives nothing. An edge that the mesh does not have is left out.
    FlatEdgeList getEdgesVertIds(const std::vector<int>& polygonEdges) const;

private:
    bool extractData(const osg::GeometryPtr& geometry,
                     const std::vector<osg::Vector<float, 2>>& uvs);
    bool extractPolygons(osg::Geometry& geometry, const osg::GeoIndices& indices);
    void extractUVWs(std::span<const osg::Point<float, 3>> positions,
                     std::span<const osg::Vector<float, 2>> texCoords,
                     std::span<const osg::Vector<float, 2>> uvs);
    void buildEdges();

    std::vector<double> coordsXYZ_;
    std::vector<double> coordsUVW_;
    std::vector<int> polySizes_;
    std::vector<int> poly3DIDs_;
    std::vector<int> polyUVWIDs_;
    kyUnfold3D::UVWInputMode inputMode_;
    std::vector<Edge> edges_; ///< the place in it is the solver's number; empty until asked for
    std::unordered_map<Edge, int, EdgeHash> numberOfEdge_;
    int numVertices_ = 0;
    int numUVs_ = 0;
    kyUVTypes::UVSet uvSet_;
};
