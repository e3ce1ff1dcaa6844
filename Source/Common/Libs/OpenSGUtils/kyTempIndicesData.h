#pragma once

#include "OpenSG/Geometry.h"

#include <vector>

/// One temporary index list of a geometry (osg::GeoTmpIndexEditInterface), as it is kept for an
/// undo.
struct kyTempIndicesData
{
    unsigned int number = 0;
    unsigned int type = 0;         ///< the primitive type of the list
    std::vector<unsigned int> ids; ///< empty for an empty list and for a null one

    bool operator==(const kyTempIndicesData&) const = default;
};

/// Appends a record of the list of that number.
///
/// alsoNull  also for a null list; otherwise that, and any list of a null geometry, is passed over
void addData(std::vector<kyTempIndicesData>& records, const osg::GeometryPtr& geometry,
             unsigned int number, bool alsoNull);
