#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSGUtils/MapElements.h"
#include "OpenSGUtils/UVConstraintData.h"

#include <cstdint>
#include <span>
#include <vector>

/// What a geometry keeps by vertex ids, held aside while an operation gives the vertices other
/// numbers: temporary index lists, which don't survive a notice of changed triangles where a
/// compact mesh watches, and UV constraints.
///
/// Made before the first write, mapped once the new triangles are written, then restored. Without
/// a map the ids come back as they were. It lives on the stack of one operation and holds no
/// reference. On a null geometry nothing happens.
class kyGeoIndicesStore
{
public:
    enum StoredData : std::int32_t
    {
        TempIndexLists = 1,
        UVConstraints = 2,
        ListsAndConstraints = 3
    };

    /// Copies what is there now.
    kyGeoIndicesStore(const osg::GeometryPtr& geometry, StoredData data);

    /// The constraints of the geometry as they are at the time of the call, as a record.
    std::vector<UVConstraintData> getUVConstraints() const { return ::getUVConstraints(geometry_); }

    /// Is there no id to map? A caller may spare itself the table then.
    bool isEmpty() const;

    // Vertices become several. Points become all copies of theirs. Edges (lists of lines, the
    // library's edge lists and constraints) become every pair of copies that is an edge of the
    // geometry's triangles as they are now, and triangles (lists of triangles, and
    // IslandTriangles) every triple that is a triangle, in the order of the ids as they stood. What
    // is no edge or triangle there in any combination stays, with the first copies. What names a
    // vertex without copies goes, and so does what names one beyond the table. An id that is left
    // over at the end of a list of edges or triangles becomes the first copy.
    //
    // Linear in what is held, but for the sorting of what was split, and at most one pass over the
    // triangles, which is spared when nothing that is held was split.

    /// newIds  [old id] its new ids; of no other old id
    void map(const std::vector<std::vector<unsigned int>>& newIds);
    /// The same where vertices keep their ids and just some get copies behind the last one:
    /// copies[k] is made from sources[k]. Sources ascend; a source stands once for each copy.
    ///
    /// triangles  those that name a source or a copy, in new ids, in any order, repeats allowed:
    ///            what was split is sought among these, so that all the others need no look
    void mapCopies(std::span<const unsigned int> sources, std::span<const unsigned int> copies,
                   unsigned int oldCount, std::span<const unsigned int> triangles);

    /// Vertices become one: newIds is [old id] its new id. Edges and triangles of which two ends
    /// come together go. Of points, edges and triangles that were different ones and become the
    /// same the first stays. What names a vertex beyond the table goes. Linear in what is held and
    /// in the table, but for the sorting of what was merged.
    void map(const std::vector<unsigned int>& newIds);

    /// Writes what is held back to the geometry: each list that had content, if only an empty one,
    /// with its type, and the constraints with their notices. Lists that were null are left alone.
    void restore() const;

private:
    struct ListName
    {
        unsigned int number;
        unsigned int type;
    };

    void copyLists();
    void copyConstraints();

    osg::GeometryPtr geometry_;
    std::vector<ListName> lists_;
    bool hasConstraints_ = false;
    std::vector<ElementList> elements_; ///< those of lists_, then, if held, both of the constraints
};
