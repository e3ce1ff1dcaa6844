#include "OpenSG/FieldContainerFactory.h"

#include <limits>
#include <stdexcept>

namespace osg
{

FieldContainerFactory* FieldContainerFactory::the()
{
    static auto* factory = new FieldContainerFactory;
    return factory;
}

FieldContainerPtr FieldContainerFactory::getContainer(unsigned id) const
{
    const auto found = _containerOfId.find(id);
    return found == _containerOfId.end() ? FieldContainerPtr() : FieldContainerPtr(found->second);
}

unsigned FieldContainerFactory::enter(FieldContainer& container)
{
    // The highest number marks an absent id, so it is never handed out.
    if (_lastId == std::numeric_limits<unsigned>::max() - 1)
        throw std::length_error("all container ids are used up");
    _containerOfId.emplace(++_lastId, &container);
    return _lastId;
}

void FieldContainerFactory::leave(unsigned id)
{
    _containerOfId.erase(id);
}

} // namespace osg
