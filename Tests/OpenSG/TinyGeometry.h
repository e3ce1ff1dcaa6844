#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/RefPtr.h"

#include <cstdint>
#include <string>
#include <vector>

/// Small geometries, and what the tests look at through them.
namespace tiny
{

using Ids = std::vector<unsigned>;

inline osg::GeoIndicesPtr indices(const Ids& ids)
{
    const auto result = osg::GeoIndicesUI32::create();
    result->setValues(ids);
    return result;
}

inline osg::GeoPositionsPtr positions(const std::vector<osg::Pnt3f>& points)
{
    const auto result = osg::GeoPositions3f::create();
    result->setValues(points);
    return result;
}

inline osg::GeoTexCoordsPtr texCoords(const std::vector<osg::Vec2f>& values)
{
    const auto result = osg::GeoTexCoords2f::create();
    result->setValues(values);
    return result;
}

///     3---2
///     | / |
///     0---1
inline osg::RefPtr<osg::Geometry> quad()
{
    osg::RefPtr<osg::Geometry> geometry(osg::Geometry::create());
    geometry->setPositions(positions(
        {osg::Pnt3f(0, 0, 0), osg::Pnt3f(1, 0, 0), osg::Pnt3f(1, 1, 0), osg::Pnt3f(0, 1, 0)}));
    geometry->setIndices(indices({0, 1, 2, 0, 2, 3}));
    return geometry;
}

/// The quad with one index list for positions and one for slots 0 and 3: its two triangles are
/// apart in the slots, where vertex 2 of the second one is shared with no other corner.
inline osg::RefPtr<osg::Geometry> multiIndexedQuad()
{
    osg::RefPtr<osg::Geometry> geometry = quad();
    geometry->setTexSlot(0, texCoords({osg::Vec2f(0, 0), osg::Vec2f(1, 0), osg::Vec2f(1, 1),
                                       osg::Vec2f(5, 5), osg::Vec2f(6, 6)}));
    geometry->setTexSlot(3, texCoords({osg::Vec2f(0, 9), osg::Vec2f(1, 9), osg::Vec2f(2, 9),
                                       osg::Vec2f(3, 9), osg::Vec2f(4, 9)}));
    geometry->setIndices(indices({0, 0, 1, 1, 2, 2, 0, 0, 2, 3, 3, 4}));
    geometry->setIndexMapping(
        {osg::Geometry::MapPosition, osg::Geometry::MapTexCoords | osg::Geometry::MapTexCoords3});
    return geometry;
}

/// Records the notices of containers in the order in which they come.
class NoticeJournal
{
public:
    struct Notice
    {
        unsigned id;
        osg::FieldMask mask;
        unsigned origin;
        bool operator==(const Notice&) const = default;
    };

    void watch(const osg::FieldContainerPtr& container)
    {
        container->registerChangedCallback(std::make_shared<osg::FieldContainer::ChangedCallback>(
            [this](unsigned id, osg::FieldMask mask, unsigned origin) {
                notices.push_back({id, mask, origin});
            }));
    }

    std::vector<Notice> notices;
};

} // namespace tiny
