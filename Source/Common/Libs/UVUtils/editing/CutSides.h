#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/editing/CutRings.h"

#include <optional>
#include <span>
#include <vector>

/// The sides into which a cut parts the corners at its vertices.
struct CutSides
{
    std::vector<unsigned int> copyCounts; ///< [cut vertex] sides but the first: new vertices
    /// Where each side lies in the UV plane, as the sum of the unit vectors along its edges: for
    /// each cut vertex that needs copies, one after the other, copies + 1 sums.
    std::vector<osg::Vec2f> directions;
};

/// Walks around each cut vertex, from its start edge, and gives each corner its side: a new one
/// begins where the walk crosses an edge of the cut, and where a fan ends. A vertex whose start
/// edge no triangle has keeps one side.
///
/// rings  in fan order; sides are written
/// uvs    [vertex] those beyond the end are zeros; none for no directions
///
/// What is no number among the UVs lends no direction.
CutSides numberSides(const CutVertices& cut, CutRings& rings,
                     const std::optional<std::span<const osg::Vec2f>>& uvs);

/// The vector at length 1; one that is too short for a direction stays as it is.
osg::Vec2f unitDirection(const osg::Vec2f& vector);
