#include "OpenSG/ChangeNotice.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

using namespace osg;

namespace
{

constexpr int WayCount = 16;

/// One of the ways to write to the list of a geometry, which has to forget what it knows by it.
template <class Kind>
void write(int way, const GeometryPtr& geometry, typename Kind::Element id, unsigned place)
{
    using Id = typename Kind::Element;
    Kind& list = *dcast<Kind>(geometry->getIndices());
    const auto put = [=](std::span<Id> ids) {
        if (!ids.empty())
            ids[place % ids.size()] = id;
    };
    const std::span<Id> handedOut = list.values();
    static_cast<void>(list.getEndOfIds());
    switch (way) {
    case 0:
        return list.resize(place);
    case 1:
        return list.clear();
    case 2:
        return list.addValue(id);
    case 3:
        return list.setValue(id, place);
    case 4:
        return list.setValues(tiny::Ids{place, id, 0});
    case 5:
        return list.gather(tiny::Ids{place, 0, place + 1});
    case 6:
        return list.takeValues({1, id});
    case 7:
        return static_cast<void>(list.releaseValues());
    case 8:
        return put(list.values());
    case 9:
        return put({list.getData(), list.getSize()});
    case 10:
        return put({static_cast<Id*>(static_cast<GeoProperty&>(list).getData()), list.getSize()});
    case 11:
        return geometry->setIndices(list.clone());
    default:
        put(handedOut); // which a notice has to tell of
    }
    FieldContainerPtr::_ignore_change = way == 12;
    if (way <= 13)
        notifyChanged(geometry->getIndices(), FieldMask::all());
    else if (way == 14)
        notifyChanged(geometry, Geometry::IndicesFieldMask);
    else
        list.changed(FieldMask::all(), ChangeOriginCommit);
    FieldContainerPtr::_ignore_change = false;
}

template <class Kind>
void checkEndOfIds()
{
    const RefPtr<Geometry> geometry(Geometry::create());
    geometry->setIndices(Kind::create());
    for (int i = *rc::gen::inRange(1, 60); i > 0; --i) {
        write<Kind>(*rc::gen::inRange(0, WayCount), geometry.get(),
                    *rc::gen::arbitrary<typename Kind::Element>(), *rc::gen::inRange(0U, 6U));
        const tiny::Ids ids = geometry->getIndices()->getValues();
        RC_ASSERT(geometry->getIndices()->getEndOfIds() ==
                  (ids.empty() ? 0 : std::uint64_t{*std::ranges::max_element(ids)} + 1));
    }
}

RC_GTEST_PROP(EndOfIds, IsThatOfTheNumbersAfterEveryWayToWrite, ())
{
    checkEndOfIds<GeoIndicesUI16>();
    checkEndOfIds<GeoIndicesUI32>();
}

} // namespace
