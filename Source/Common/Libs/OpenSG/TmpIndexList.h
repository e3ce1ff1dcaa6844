#pragma once

#include <map>
#include <vector>

namespace osg
{

/// One numbered temporary index list of a geometry, as GeoTmpIndexEditInterface shows it.
struct TmpIndexList
{
    bool isNull = true; ///< a null list is something else than an empty one
    std::vector<unsigned> ids;
    unsigned type = 0; ///< a code of GeoPrimitive; outlives the content
    unsigned stamp = 0;
    bool changedSinceStamp = false;
};

/// The lists of one geometry by number; a list stays where it is as long as the geometry lives.
using TmpIndexLists = std::map<unsigned, TmpIndexList>;

} // namespace osg
