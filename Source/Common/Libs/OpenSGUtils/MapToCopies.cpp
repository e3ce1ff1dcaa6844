// Elements by vertex ids where a vertex becomes several.

#include "OpenSGUtils/Elements.h"
#include "OpenSGUtils/MapElements.h"

#include "OpenSG/IndexSpan.h"

#include <algorithm>
#include <utility>

namespace
{

using Ids = std::vector<unsigned int>;

/// All new ids of an old one, from a table of all vertices.
class TableOfCopies
{
public:
    explicit TableOfCopies(const std::vector<Ids>& newIds) : newIds_(newIds) {}

    std::span<const unsigned int> operator()(const unsigned int& id) const
    {
        return id < newIds_.size() ? std::span<const unsigned int>(newIds_[id])
                                   : std::span<const unsigned int>();
    }

private:
    const std::vector<Ids>& newIds_;
};

/// The same where few vertices have more than themselves.
class FewCopies
{
public:
    explicit FewCopies(const AddedCopies& added) : oldCount_(added.oldCount)
    {
        for (std::size_t k = 0; k < added.sources.size(); ++k) {
            if (sources_.empty() || sources_.back() != added.sources[k]) {
                sources_.push_back(added.sources[k]);
                begins_.push_back(copies_.size());
                copies_.push_back(added.sources[k]);
            }
            copies_.push_back(added.copies[k]);
        }
        begins_.push_back(copies_.size());
    }

    /// The argument outlives the result: a vertex without copies is the only one of its own.
    std::span<const unsigned int> operator()(const unsigned int& id) const
    {
        if (id >= oldCount_)
            return {};
        const auto found = std::lower_bound(sources_.begin(), sources_.end(), id);
        if (found == sources_.end() || *found != id)
            return {&id, 1};
        const auto i = static_cast<std::size_t>(found - sources_.begin());
        return std::span(copies_).subspan(begins_[i], begins_[i + 1] - begins_[i]);
    }

private:
    unsigned int oldCount_;
    Ids sources_;                     ///< ascending, each once
    std::vector<std::size_t> begins_; ///< [source] in copies_
    Ids copies_;                      ///< each source and its copies
};

template <std::size_t N, class CopiesOf>
bool isSplit(std::span<const unsigned int, N> element, const CopiesOf& copiesOf)
{
    return std::any_of(element.begin(), element.end(),
                       [&](const unsigned int& id) { return copiesOf(id).size() > 1; });
}

template <std::size_t N, class CopiesOf>
void appendVerticesOfSplit(const Ids& ids, const CopiesOf& copiesOf, Ids& vertices)
{
    forEachElement<N>(ids, [&](std::span<const unsigned int, N> element) {
        if (isSplit(element, copiesOf))
            vertices.insert(vertices.end(), element.begin(), element.end());
    });
}

/// The vertices of edges and triangles that can have become several, ascending, each once.
template <class CopiesOf>
Ids verticesOfSplit(std::span<const ElementList> lists, const CopiesOf& copiesOf)
{
    Ids vertices;
    for (const ElementList& list : lists) {
        if (list.idsPerElement == 2)
            appendVerticesOfSplit<2>(list.ids, copiesOf, vertices);
        else if (list.idsPerElement == 3)
            appendVerticesOfSplit<3>(list.ids, copiesOf, vertices);
    }
    std::sort(vertices.begin(), vertices.end());
    vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
    return vertices;
}

/// A new vertex, and the one that it is a copy of.
struct Copy
{
    unsigned int newId;
    unsigned int oldId;
    auto operator<=>(const Copy&) const = default;
};

template <class CopiesOf>
std::vector<Copy> copiesOfAll(const Ids& vertices, const CopiesOf& copiesOf)
{
    std::vector<Copy> copies;
    for (const unsigned int& vertex : vertices)
        for (const unsigned int newId : copiesOf(vertex))
            copies.push_back({newId, vertex});
    std::sort(copies.begin(), copies.end());
    return copies;
}

/// An edge or triangle of the new mesh: the old ids of its vertices, ascending, and beside each its
/// new id.
template <std::size_t N>
struct NewElement
{
    Element<N> oldIds;
    Element<N> newIds;
    auto operator<=>(const NewElement&) const = default;
};

template <std::size_t N>
NewElement<N> newElement(const Element<N>& oldIds, const Element<N>& newIds)
{
    NewElement<N> element;
    const Element<N> places = placesByAscendingId(std::span<const unsigned int, N>(oldIds));
    for (std::size_t k = 0; k < N; ++k) {
        element.oldIds[k] = oldIds[places[k]];
        element.newIds[k] = newIds[places[k]];
    }
    return element;
}

/// The edges and triangles that split ones can have become; sorted, each once.
struct NewElements
{
    std::vector<NewElement<2>> edges;
    std::vector<NewElement<3>> triangles;

    /// Takes one triangle in; corners that are no copies of a sought vertex are null.
    void add(const std::array<const Copy*, 3>& corners)
    {
        for (const auto& [a, b] : {std::pair(0U, 1U), std::pair(1U, 2U), std::pair(2U, 0U)})
            if (const Copy *from = corners[a], *to = corners[b]; from && to)
                edges.push_back(newElement<2>({from->oldId, to->oldId}, {from->newId, to->newId}));
        if (const auto& [a, b, c] = corners; a && b && c)
            triangles.push_back(
                newElement<3>({a->oldId, b->oldId, c->oldId}, {a->newId, b->newId, c->newId}));
    }
    void sort()
    {
        std::sort(edges.begin(), edges.end());
        edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
        std::sort(triangles.begin(), triangles.end());
        triangles.erase(std::unique(triangles.begin(), triangles.end()), triangles.end());
    }
};

template <class Id>
NewElements findAmong(std::span<const Id> ids, const std::vector<Copy>& copies)
{
    std::vector<bool> isSought(copies.back().newId + 1);
    for (const Copy& copy : copies)
        isSought[copy.newId] = true;
    const auto copyOf = [&](Id id) -> const Copy* {
        if (id >= isSought.size() || !isSought[id])
            return nullptr;
        return &*std::lower_bound(copies.begin(), copies.end(), Copy{id, 0});
    };
    NewElements found;
    for (std::size_t i = 0; i + 3 <= ids.size(); i += 3) {
        const std::array corners{copyOf(ids[i]), copyOf(ids[i + 1]), copyOf(ids[i + 2])};
        if ((corners[0] != nullptr) + (corners[1] != nullptr) + (corners[2] != nullptr) > 1)
            found.add(corners);
    }
    found.sort();
    return found;
}

NewElements findNewElements(const std::vector<Copy>& copies,
                            std::span<const unsigned int> triangles)
{
    return copies.empty() ? NewElements() : findAmong(triangles, copies);
}

NewElements findNewElements(const std::vector<Copy>& copies, const osg::GeoIndicesPtr& indices)
{
    if (copies.empty())
        return {};
    return osg::withIndices(indices, [&](const auto ids) { return findAmong(ids, copies); });
}

template <std::size_t N>
auto newElementsOf(std::span<const unsigned int, N> element,
                   const std::vector<NewElement<N>>& elements)
{
    struct ByOldIds
    {
        bool operator()(const NewElement<N>& a, const Element<N>& b) const { return a.oldIds < b; }
        bool operator()(const Element<N>& a, const NewElement<N>& b) const { return a < b.oldIds; }
    };
    const auto [first, end] =
        std::equal_range(elements.begin(), elements.end(), ascending(element), ByOldIds());
    return std::span(first, end);
}

/// The element itself, or the several that it has become.
template <std::size_t N, class CopiesOf>
void appendNew(std::span<const unsigned int, N> element, const CopiesOf& copiesOf,
               const std::vector<NewElement<N>>& elements, Ids& out)
{
    Element<N> ids{};
    std::transform(element.begin(), element.end(), ids.begin(),
                   [&](const unsigned int& id) { return copiesOf(id).front(); });
    const auto found = isSplit(element, copiesOf) ? newElementsOf(element, elements)
                                                  : std::span<const NewElement<N>>();
    if (found.empty())
        out.insert(out.end(), ids.begin(), ids.end());
    const Element<N> places = placesByAscendingId(element);
    for (const NewElement<N>& each : found) {
        for (std::size_t k = 0; k < N; ++k)
            ids[places[k]] = each.newIds[k];
        out.insert(out.end(), ids.begin(), ids.end());
    }
}

template <std::size_t N, class CopiesOf>
Ids elementsInNewIds(const Ids& ids, const CopiesOf& copiesOf,
                     const std::vector<NewElement<N>>& elements)
{
    Ids out;
    out.reserve(ids.size());
    forEachElement<N>(ids, [&](std::span<const unsigned int, N> element) {
        const bool isGone =
            std::any_of(element.begin(), element.end(),
                        [&](const unsigned int& id) { return copiesOf(id).empty(); });
        if (!isGone)
            appendNew(element, copiesOf, elements, out);
    });
    for (const unsigned int& id : leftOver(ids, N))
        if (!copiesOf(id).empty())
            out.push_back(copiesOf(id).front());
    return out;
}

template <class CopiesOf>
Ids pointsInNewIds(const Ids& ids, const CopiesOf& copiesOf)
{
    Ids out;
    out.reserve(ids.size());
    for (const unsigned int& id : ids) {
        const auto copies = copiesOf(id);
        out.insert(out.end(), copies.begin(), copies.end());
    }
    return out;
}

/// triangles  where the edges and triangles are that split ones can have become
template <class CopiesOf, class Triangles>
void mapThrough(std::span<ElementList> lists, const CopiesOf& copiesOf, const Triangles& triangles)
{
    const Ids sought = verticesOfSplit(lists, copiesOf);
    const NewElements found = findNewElements(copiesOfAll(sought, copiesOf), triangles);
    for (ElementList& list : lists) {
        if (list.idsPerElement == 2)
            list.ids = elementsInNewIds<2>(list.ids, copiesOf, found.edges);
        else if (list.idsPerElement == 3)
            list.ids = elementsInNewIds<3>(list.ids, copiesOf, found.triangles);
        else
            list.ids = pointsInNewIds(list.ids, copiesOf);
    }
}

} // namespace

void mapToCopies(std::span<ElementList> lists, const std::vector<std::vector<unsigned int>>& newIds,
                 const osg::GeoIndicesPtr& indices)
{
    mapThrough(lists, TableOfCopies(newIds), indices);
}

void mapToCopies(std::span<ElementList> lists, const AddedCopies& added,
                 std::span<const unsigned int> triangles)
{
    mapThrough(lists, FewCopies(added), triangles);
}
