// Elements by vertex ids where several vertices become one.

#include "OpenSGUtils/Elements.h"
#include "OpenSGUtils/MapElements.h"

#include <algorithm>
#include <map>

namespace
{

using Ids = std::vector<unsigned int>;

/// [new id] Do several old ones become it?
std::vector<bool> findMerged(std::span<const unsigned int> newIds)
{
    const std::size_t newCount =
        newIds.empty() ? 0 : std::size_t{*std::max_element(newIds.begin(), newIds.end())} + 1;
    std::vector<bool> isTaken(newCount);
    std::vector<bool> isMerged(newCount);
    for (const unsigned int id : newIds) {
        if (isTaken[id])
            isMerged[id] = true;
        isTaken[id] = true;
    }
    return isMerged;
}

template <std::size_t N>
bool hasTwin(const Element<N>& ascendingIds)
{
    return std::adjacent_find(ascendingIds.begin(), ascendingIds.end()) != ascendingIds.end();
}

/// Tells elements that were different ones and are the same now from those that stood twice.
template <std::size_t N>
class FirstOfEqual
{
public:
    bool isFirst(const Element<N>& newIds, const Element<N>& oldIds)
    {
        return oldOfNew_.try_emplace(newIds, oldIds).first->second == oldIds;
    }

private:
    std::map<Element<N>, Element<N>> oldOfNew_; ///< all ids ascending
};

template <std::size_t N>
Ids mergedElements(const Ids& ids, std::span<const unsigned int> newIds,
                   const std::vector<bool>& isMerged)
{
    Ids out;
    out.reserve(ids.size());
    FirstOfEqual<N> first;
    forEachElement<N>(ids, [&](std::span<const unsigned int, N> element) {
        Element<N> mapped{};
        bool isAnyMerged = false;
        for (std::size_t k = 0; k < N; ++k) {
            if (element[k] >= newIds.size())
                return;
            mapped[k] = newIds[element[k]];
            isAnyMerged |= isMerged[mapped[k]];
        }
        if (isAnyMerged) {
            const Element<N> now = ascending(std::span<const unsigned int, N>(mapped));
            const Element<N> before = ascending(element);
            if ((hasTwin(now) && !hasTwin(before)) || !first.isFirst(now, before))
                return;
        }
        out.insert(out.end(), mapped.begin(), mapped.end());
    });
    for (const unsigned int id : leftOver(ids, N))
        if (id < newIds.size())
            out.push_back(newIds[id]);
    return out;
}

} // namespace

void mapToOne(std::span<ElementList> lists, std::span<const unsigned int> newIds)
{
    const std::vector<bool> isMerged = findMerged(newIds);
    for (ElementList& list : lists) {
        if (list.idsPerElement == 2)
            list.ids = mergedElements<2>(list.ids, newIds, isMerged);
        else if (list.idsPerElement == 3)
            list.ids = mergedElements<3>(list.ids, newIds, isMerged);
        else
            list.ids = mergedElements<1>(list.ids, newIds, isMerged);
    }
}
