#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"

#include <map>
#include <optional>
#include <vector>

/// Keeps the temporary lists of shells true while their surfaces get vertices, as a walk over a
/// tree changes one surface after the other.
///
/// The ids of a shell run over the vertices of its active surfaces, so that those behind a surface
/// that grew move up by as much:
///
///     surfaces of 4, 4 and 3 vertices:          0 .. 3 | 4 .. 7      | 8 .. 10
///     after two were added to the second one:   0 .. 3 | 4 .. 7 8 9  | 10 .. 12
///
/// What a list names stays what it names; no new vertex is named. Ids beyond the last surface go.
/// A surface that stands in the shell twice counts twice. One that stands elsewhere too, and grows
/// there before the shell is entered, is not noticed.
///
/// Shells may lie in shells; the innermost one that was entered and not left counts. Outside all
/// shells nothing happens.
class kyShellSelectionMapper
{
public:
    /// Does nothing for null.
    void enterShell(const osg::GeometryPtr& shell);
    /// To be called before a surface gets vertices.
    void preGeoVertexDuplication();
    /// A surface is done. Nodes that are no children of the shell's node count for nothing.
    ///
    /// oldCount  of the vertices that it had when it was entered
    void leaveGeo(const osg::NodePtr& node, const osg::GeometryPtr& surface, unsigned int oldCount);
    /// Is this the shell that we are in? False for null.
    bool is(const osg::GeometryPtr& geometry) const;
    /// Brings the lists up to date. Linear in vertices and list entries if a surface has grown,
    /// else free.
    void leaveShell();

private:
    struct Shell
    {
        osg::GeometryPtr geometry;
        std::optional<kyGeoIndicesStore> lists;         ///< as they were before anything grew
        osg::NodePtr node;                              ///< null as long as no surface has grown
        std::map<unsigned int, unsigned int> oldCounts; ///< by id of a geometry that has grown
    };

    static std::vector<unsigned int> newIds(const Shell& shell);

    std::vector<Shell> shells_; ///< the innermost is the last
};
