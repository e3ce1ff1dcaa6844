#include "OpenSG/FieldContainerType.h"

#include "OpenSG/FieldContainer.h"

#include <iterator>
#include <utility>

namespace osg
{

namespace
{

unsigned nextTypeId()
{
    static unsigned last = 0;
    return ++last;
}

} // namespace

FieldContainerType::FieldContainerType(std::string name, const FieldContainerType* parent,
                                       Create create, std::vector<FieldDescription> fields,
                                       Group group)
    : _name(std::move(name)), _parent(parent), _create(create), _id(nextTypeId()),
      _groupId(group == GroupOfParent && parent ? parent->_groupId : _id)
{
    if (parent)
        _fields = parent->_fields;
    std::move(fields.begin(), fields.end(), std::back_inserter(_fields));
}

bool FieldContainerType::isDerivedFrom(const FieldContainerType& other) const
{
    for (const FieldContainerType* type = this; type; type = type->_parent)
        if (type == &other)
            return true;
    return false;
}

bool FieldContainerType::isDerivedFrom(const std::string& name) const
{
    for (const FieldContainerType* type = this; type; type = type->_parent)
        if (type->_name == name)
            return true;
    return false;
}

FieldContainerPtr FieldContainerType::createContainer() const
{
    return _create ? _create() : FieldContainerPtr();
}

FieldContainerPtr FieldContainerType::getPrototype() const
{
    if (!_prototype && _create) {
        _prototype = _create();
        _prototype->addRef(); // never given back: a prototype lives as long as its type
    }
    return _prototype;
}

unsigned FieldContainerType::getNumFieldDescs() const
{
    return static_cast<unsigned>(_fields.size());
}

const FieldDescription* FieldContainerType::getFieldDesc(unsigned number) const
{
    return number >= 1 && number <= _fields.size() ? &_fields[number - 1] : nullptr;
}

} // namespace osg
