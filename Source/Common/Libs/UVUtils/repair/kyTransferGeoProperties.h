#pragma once

#include "MeshUtils/kyMeshPointQuery.h"
#include "MeshUtils/kyPointOnGeometry.h"
#include "MeshUtils/kyTriangleOctree.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/model/kyUVTypes.h"

#include <tbb/concurrent_vector.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class CompactMeshScope;
class SeamWalker;
struct TransferTarget;
struct TransferredUVs;

/// Gives geometries the UVs of another one of about the same shape but with other triangles.
///
///     kyTransferGeoProperties transfer(node);
///     if (transfer.initFromSource(source, kyUVTypes::UVSet0))
///         transfer.transferUVs(target, kyUVTypes::UVSet0);
///
/// Each corner of each target triangle takes the UV of the point of the source where it lies, on
/// the side of the source's seams where its triangle is. So a vertex on a seam gets several UVs,
/// and is split on the target: the seam survives.
///
/// A shell is read as one mesh, and written surface by surface. Positions are taken as they are in
/// the geometries; transforms of the nodes are not looked at. Results are the same on every run and
/// for any number of threads.
///
/// Source and structures are kept from one initFromSource to the next or to the end, and while they
/// are, the source must not change; to change it, as by a transfer to the source itself, calls for
/// a new initFromSource. All calls come from the thread that owns the scene graph.
class kyTransferGeoProperties
{
public:
    /// How the point of the source for a vertex is found. Any other number searches without
    /// structures: nothing is made ready, and each search goes through all triangles.
    enum SampleMethod : std::int32_t
    {
        AlongNormal = 0, ///< the nearest along the vertex normal, to either side; else the closest
        ClosestOctree = 1, ///< the closest, by kyTriangleOctree
        ClosestBVH = 2     ///< the closest, by kyMeshPointQuery
    };

    /// A UV and the corners of the target, counted in its index list, that take it.
    struct SampledUV
    {
        osg::Vec2f uv;
        std::vector<unsigned int> corners;
    };

    /// What new objects begin with.
    static SampleMethod s_sampleMethod;

    /// The node isn't used.
    explicit kyTransferGeoProperties(const osg::NodePtr& node);
    ~kyTransferGeoProperties();
    kyTransferGeoProperties(const kyTransferGeoProperties&) = delete;
    kyTransferGeoProperties& operator=(const kyTransferGeoProperties&) = delete;

    /// Structures are made by initFromSource, so set it before.
    void setSampleMethod(SampleMethod method) { sampleMethod_ = method; }
    /// How far from a vertex its two rays begin, in units of the mesh along the normal: 0.0001.
    void setOffsetAlongNormal(float offset) { offsetAlongNormal_ = offset; }
    /// Receives parts of 1, which each transferUVs adds up to whatever comes of it.
    void setProgressCallback(std::function<void(float)> progress);

    /// Reads a source and makes the structures. False, with a line in the log, for a null node, one
    /// without a geometry that can be worked on, and one without UVs in the slot. After false there
    /// may be no source; the one before stays where the new one is no geometry at all.
    ///
    /// Where the hierarchy of the closest points can't be made, the octree takes its place.
    bool initFromSource(const osg::NodePtr& source, kyUVTypes::UVSet uvSet);

    /// Writes the slot of a target, which may be a shell, from the same slot of the source: that of
    /// initFromSource, as another one may be empty there and read as (0, 0). A slot of another kind
    /// is replaced. New vertices, with all properties of the split ones, follow the old ones; the
    /// UV of the lowest u stays on the old vertex. Vertices of no triangle keep what they have. At
    /// the end the surfaces of a shell are sewn where their UVs meet.
    ///
    /// False without a source, for a target without a geometry that can be worked on or without
    /// normals, and for the very geometry that the source is read from. Of a shell, a surface that
    /// can't be written is passed over and makes the result false.
    ///
    /// A search a vertex and one a triangle, on all threads of the arena, and a walk for each
    /// corner that lies on another source triangle than the middle of its own: in all O((v + t) log
    /// s) for s source triangles, as long as corners are not far from their triangle on the source.
    bool transferUVs(const osg::NodePtr& target, kyUVTypes::UVSet uvSet);

private:
    bool doTransferUVs(const osg::NodePtr& node, const osg::GeometryPtr& geometry,
                       kyUVTypes::UVSet uvSet) const;
    bool transferToSurfaces(const osg::NodePtr& shell, kyUVTypes::UVSet uvSet,
                            float& remaining) const;
    void noteChange(const osg::GeometryPtr& written) const;

    /// What the source has for a vertex.
    struct VertexSample
    {
        kyPointOnGeometry hit;
        osg::Pnt3f position;
        osg::Vec2f uv;
    };

    std::vector<osg::Vec2f> sampleCorners(const TransferTarget& target,
                                          const osg::GeometryPtr& source,
                                          kyUVTypes::UVSet uvSet) const;
    std::vector<VertexSample> sampleVertices(const TransferTarget& target,
                                             const osg::GeometryPtr& source,
                                             kyUVTypes::UVSet uvSet) const;
    void sampleTriangle(const TransferTarget& target, unsigned int triangle,
                        const osg::GeometryPtr& source, const std::vector<VertexSample>& samples,
                        kyUVTypes::UVSet uvSet, kyPointOnGeometry& centerHit,
                        std::vector<osg::Vec2f>& uvOfCorner) const;
    std::optional<kyPointOnGeometry> correctHit(const kyPointOnGeometry& centerHit,
                                                const osg::Pnt3f& start, const osg::Vec3f& up,
                                                const VertexSample& sample) const;

    bool getAssociatedPoint(const osg::GeometryPtr& geometry, const osg::Pnt3f& point,
                            const osg::Vec3f& normal, kyPointOnGeometry& out) const;
    bool getClosestPoint(const osg::GeometryPtr& geometry, const osg::Pnt3f& point,
                         kyPointOnGeometry& out, int startTriangle) const;
    bool getClosestPointAlongNormal(const osg::GeometryPtr& geometry, const osg::Pnt3f& point,
                                    const osg::Vec3f& normal, kyPointOnGeometry& out) const;

    TransferredUVs mergeSamples(const TransferTarget& target,
                                std::span<const osg::Vec2f> uvOfCorner) const;
    void mergeCloseSamples(tbb::concurrent_vector<SampledUV>& samples) const;
    void incrementProgressBy(float delta, float& remaining) const;
    class WholeProgress;
    void forgetSource();
    void buildStructures(const osg::GeometryPtr& geometry);

    osg::RefPtr<osg::Node> source_; ///< outlives the scope
    osg::RefPtr<osg::Geometry> sourceGeometry_;
    std::unique_ptr<CompactMeshScope> scope_;
    std::unique_ptr<kyTriangleOctree> octree_;
    std::unique_ptr<SeamWalker> walker_;
    std::unique_ptr<kyMeshPointQuery> bvh_;
    SampleMethod sampleMethod_ = s_sampleMethod;
    float offsetAlongNormal_ = 0.0001F;
    std::function<void(float)> progress_;
};
