#pragma once

#include "OpenSG/FieldContainerPtr.h"

#include <cstddef>
#include <unordered_map>

namespace osg
{

/// Knows every living container by its id.
class FieldContainerFactory
{
public:
    /// The one factory. It is never destroyed, since containers in static tables of the
    /// application outlive main.
    static FieldContainerFactory* the();

    /// The container with that id; NullFC for 0, for a number never handed out, and for a
    /// container that is gone or going.
    [[nodiscard]] FieldContainerPtr getContainer(unsigned id) const;

    /// How many containers live, prototypes included.
    [[nodiscard]] std::size_t getContainerCount() const { return _containerOfId.size(); }

private:
    friend class FieldContainer;

    FieldContainerFactory() = default;
    unsigned enter(FieldContainer& container);
    void leave(unsigned id);

    std::unordered_map<unsigned, FieldContainer*> _containerOfId; ///< never iterated
    unsigned _lastId = 0;
};

} // namespace osg
