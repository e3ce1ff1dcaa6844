#include "UVUtils/compactmesh/WeldTable.h"

unsigned int WeldTable::weldId(unsigned int vertex)
{
    const auto [entry, isNew] = idOfKey_.try_emplace(shell_.keyOf(vertex), size());
    if (isNew)
        firstVertex_.push_back(vertex);
    return entry->second;
}
