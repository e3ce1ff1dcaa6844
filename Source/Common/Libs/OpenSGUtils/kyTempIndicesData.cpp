#include "OpenSGUtils/kyTempIndicesData.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"

void addData(std::vector<kyTempIndicesData>& records, const osg::GeometryPtr& geometry,
             unsigned int number, bool alsoNull)
{
    const osg::GeoTmpIndexEditInterface list(geometry, number);
    if (!alsoNull && list.isNull())
        return;
    const auto ids = list.values();
    records.push_back({number, list.getType(), {ids.begin(), ids.end()}});
}
