#include "OpenSG/GeoTmpIndexEditInterface.h"

#include "OpenSG/Geometry.h"

namespace osg
{

namespace
{

void makeNull(TmpIndexList& list)
{
    list.isNull = true;
    list.ids = {};
    list.changedSinceStamp = true;
}

} // namespace

GeoTmpIndexEditInterface::GeoTmpIndexEditInterface(const GeometryPtr& geometry, unsigned list)
    : _list(geometry ? &geometry->_tmpIndexLists[list] : nullptr)
{}

bool GeoTmpIndexEditInterface::isNull() const
{
    return !hasContent();
}

void GeoTmpIndexEditInterface::make()
{
    if (!_list)
        return;
    _list->isNull = false;
    _list->ids.clear();
    _list->changedSinceStamp = true;
}

void GeoTmpIndexEditInterface::setNull()
{
    if (_list)
        makeNull(*_list);
}

void GeoTmpIndexEditInterface::clear()
{
    resize(0);
}

void GeoTmpIndexEditInterface::resize(unsigned size)
{
    if (!hasContent())
        return;
    _list->ids.resize(size);
    _list->changedSinceStamp = true;
}

void GeoTmpIndexEditInterface::setValue(unsigned value, unsigned i)
{
    if (!hasContent() || i >= _list->ids.size())
        return;
    _list->ids[i] = value;
    _list->changedSinceStamp = true;
}

void GeoTmpIndexEditInterface::addValue(unsigned value)
{
    if (!hasContent())
        return;
    _list->ids.push_back(value);
    _list->changedSinceStamp = true;
}

void GeoTmpIndexEditInterface::assign(std::span<const unsigned> ids)
{
    if (!_list)
        return;
    _list->isNull = false;
    _list->ids = std::vector<unsigned>(ids.begin(), ids.end());
    _list->changedSinceStamp = true;
}

const unsigned* GeoTmpIndexEditInterface::getData() const
{
    return hasContent() ? _list->ids.data() : nullptr;
}

unsigned GeoTmpIndexEditInterface::getSize() const
{
    return static_cast<unsigned>(values().size());
}

std::span<const unsigned> GeoTmpIndexEditInterface::values() const
{
    return hasContent() ? std::span<const unsigned>(_list->ids) : std::span<const unsigned>();
}

unsigned GeoTmpIndexEditInterface::getType() const
{
    return _list ? _list->type : 0;
}

void GeoTmpIndexEditInterface::setType(unsigned type)
{
    if (_list)
        _list->type = type;
}

void GeoTmpIndexEditInterface::commit()
{
    if (_list)
        _list->changedSinceStamp = true;
}

unsigned GeoTmpIndexEditInterface::getStamp() const
{
    // Stamps are handed out when they are asked for: nobody can tell the difference, and a list
    // that is filled id by id does not use up a number for each.
    static unsigned lastStamp = 0;
    if (_list && _list->changedSinceStamp) {
        _list->stamp = ++lastStamp;
        _list->changedSinceStamp = false;
    }
    return _list ? _list->stamp : 0;
}

std::vector<unsigned> GeoTmpIndexEditInterface::listsWithContent(const GeometryPtr& geometry)
{
    std::vector<unsigned> numbers;
    if (geometry)
        for (const auto& [number, list] : geometry->_tmpIndexLists)
            if (!list.isNull)
                numbers.push_back(number);
    return numbers;
}

void GeoTmpIndexEditInterface::setNullforAll(const GeometryPtr& geometry)
{
    if (geometry)
        for (auto& [number, list] : geometry->_tmpIndexLists)
            makeNull(list);
}

} // namespace osg
