#include "UVUtils/compactmesh/WeldTable.h"

#include "UVUtils/compactmesh/WeldClasses.h"

namespace
{

constexpr unsigned int none = ~0U;

} // namespace

WeldTable::WeldTable(const ShellArrays& shell, std::span<const unsigned int> order) : shell_(shell)
{
    WeldClasses classes = findWeldClasses(shell, order);
    classOf_ = std::move(classes.classOf);
    idOfClass_.assign(classes.count, none);
    isUnsettled_ = std::move(classes.isUnsettled);
}

std::vector<char> WeldTable::unsettledClasses() const
{
    return dependsOnQuestions() ? isUnsettled_ : std::vector<char>(idOfClass_.size());
}

unsigned int WeldTable::weldId(unsigned int vertex)
{
    unsigned int& id = idOfClass_[classOf_[vertex]];
    // What a settled class was told once holds for good; an unsettled one may be told otherwise
    // after the map has grown.
    if (id != none && (!dependsOnQuestions() || !isUnsettled_[classOf_[vertex]]))
        return id;
    return id = makeId(vertex);
}

unsigned int WeldTable::makeId(unsigned int vertex)
{
    if (dependsOnQuestions()) {
        const auto [entry, isNew] = idOfKey_.try_emplace(shell_.keyOf(vertex), size());
        if (!isNew)
            return entry->second;
    }
    firstVertex_.push_back(vertex);
    return size() - 1;
}
