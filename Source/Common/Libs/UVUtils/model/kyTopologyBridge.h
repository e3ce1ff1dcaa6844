#pragma once

#include "OpenSG/GeoProperty.h"
#include "OpenSG/RefPtr.h"
#include "OpenSGUtils/UVConstraintData.h"

#include <memory>
#include <vector>

// What a change of topology (cut, sew, repair) leaves behind so that it can be undone and done
// again without keeping the geometry twice.
//
// "Top level" is the geometry on which the operation ran: that of the compact mesh where one is
// used, else the geometry itself. "Children" are the surfaces of a shell, numbered among all
// children of its node, active or not; a plain geometry behind a compact mesh is its own child 0.

/// The way from one state of the topology to another. Copies hold references of their own.
struct kyTopologyData
{
    /// New vertex i takes the vertex properties of old vertex shuffle[i].
    std::vector<unsigned int> shuffle;
    std::vector<std::vector<unsigned int>> childShuffles;   ///< [child] the same for each surface
    osg::RefPtr<osg::GeoIndices> indices;                   ///< to be set; null for none
    std::vector<osg::RefPtr<osg::GeoIndices>> childIndices; ///< [child]
    std::vector<UVConstraintData> uvConstraints;            ///< to be set
    std::vector<std::vector<UVConstraintData>> childUVConstraints; ///< [child]
    /// The compact mesh's table from triangles in surface order to triangles in sorted order, as
    /// it is in the state that the record leads to.
    std::vector<unsigned int> faceMapping;

    /// Empties the record and lets its index properties go. The constraints of the top level stay.
    void clear();
    /// Gives the record room for n children; new ones are empty.
    void patchResize(unsigned int n);
};

/// Both ways of one operation.
struct kyTopologyBridgeImpl
{
    kyTopologyData next; ///< from before the operation to after it: redo
    kyTopologyData prev; ///< back: undo

    void clear();
    void patchResize(unsigned int n);
};

/// What an undo command owns of an operation: an empty pair of records, for the operation to fill.
class kyTopologyBridge
{
public:
    kyTopologyBridge();
    ~kyTopologyBridge();
    kyTopologyBridge(const kyTopologyBridge& other);
    kyTopologyBridge& operator=(const kyTopologyBridge& other);

    /// The kyTopologyData for redo or for undo, as kyUVUtils::applyTopology takes it.
    void* getNext() { return &impl_->next; }
    void* getPrev() { return &impl_->prev; }

    kyTopologyBridgeImpl* getImpl() { return impl_.get(); }

private:
    std::unique_ptr<kyTopologyBridgeImpl> impl_;
};

/// Where a running operation on one geometry writes its record: a view into a bridge that owns
/// nothing and lives for that operation. An operation without one records nothing.
struct TopologyOpOutData
{
    /// The top level.
    explicit TopologyOpOutData(kyTopologyBridgeImpl* body);
    /// One child, for which patchResize has made room; the face mappings are those of the top
    /// level, which alone has them.
    TopologyOpOutData(kyTopologyBridgeImpl* body, unsigned int child);

    /// Records that new vertex targets[k] was made from old vertex sources[k], while all other
    /// vertices kept their numbers. Where a source has several targets, the way back takes the
    /// last.
    void storeShuffle(const std::vector<unsigned int>& sources,
                      const std::vector<unsigned int>& targets, unsigned long long oldCount,
                      unsigned long long newCount);
    /// Records the triangles and the constraints as they are before the operation, or after it: a
    /// clone of the indices, which are not null.
    void storeBefore(const osg::GeoIndicesPtr& indices, std::vector<UVConstraintData> constraints);
    void storeAfter(const osg::GeoIndicesPtr& indices, std::vector<UVConstraintData> constraints);

    std::vector<unsigned int>* nextShuffle;
    std::vector<unsigned int>* prevShuffle;
    osg::RefPtr<osg::GeoIndices>* prevIndices;
    osg::RefPtr<osg::GeoIndices>* nextIndices;
    std::vector<UVConstraintData>* prevUVConstraints;
    std::vector<UVConstraintData>* nextUVConstraints;
    std::vector<unsigned int>* prevFaceMapping;
    std::vector<unsigned int>* nextFaceMapping;
};

/// The view of the top level of a bridge; null without one.
std::unique_ptr<TopologyOpOutData> topLevelOf(kyTopologyBridge* bridge);
