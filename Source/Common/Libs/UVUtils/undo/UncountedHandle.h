#pragma once

#include "OpenSG/FieldContainer.h"
#include "OpenSG/FieldContainerFactory.h"

/// What an undo command keeps of the container that it works on: it counts no reference, so that a
/// deleted object is not kept alive by the list of steps, and it is null once the container is
/// gone.
template <class Container>
class UncountedHandle
{
public:
    explicit UncountedHandle(const osg::Ptr<Container>& container)
        : id_(container ? container->getId() : 0)
    {}

    osg::Ptr<Container> get() const
    {
        return osg::dcast<Container>(osg::FieldContainerFactory::the()->getContainer(id_));
    }

    /// Of one container, alive or gone? Ids are never used again.
    bool operator==(const UncountedHandle&) const = default;

private:
    unsigned int id_;
};
