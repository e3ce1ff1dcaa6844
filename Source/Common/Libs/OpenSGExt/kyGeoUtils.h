#pragma once

#include "OpenSG/NodeCore.h"

#include <cstdint>
#include <string>

/// The test that a geometry core is a triangle mesh that can be worked on without further checks.
namespace kyGeoUtils
{

/// What is wrong with a core; the bits of several cores can be joined.
enum GeometryError : std::uint32_t
{
    NoPositions = 1,         ///< none of three floats
    NoIndices = 2,           ///< no index property; an empty one is fine
    NotTriangles = 4,        ///< an index count that is no multiple of 3, or another primitive type
    IndexOutOfRange = 8,     ///< an index beyond the positions
    MultipleIndices = 16,    ///< more than one index list
    InconsistentLengths = 32 ///< lengths that don't add up to the indices, or cut triangles
};

/// 0 for a usable core, else bits of GeometryError. A core that is null or no geometry has neither
/// positions nor indices. Missing types and lengths are fine: they stand for one triangle list.
///
/// checkIndices  whether each index names a position as well; linear in their number the first time
///               after they were written
unsigned int checkGeometryCore(const osg::NodeCorePtr& core, bool checkIndices);

/// The errors in words, with ", " between them; empty for 0.
std::string getGeometryErrorString(unsigned int errors);

} // namespace kyGeoUtils
