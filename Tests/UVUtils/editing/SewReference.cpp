#include "UVUtils/editing/SewReference.h"

#include "UVUtils/model/Edge.h"

#include <cmath>
#include <map>
#include <numeric>
#include <set>

namespace
{

using Components = std::vector<float>;

/// What two vertices must agree in, in its order.
struct Row
{
    std::vector<Components> values; ///< [vertex]
    float tolerance = 1.1920929e-07F;
    bool isDirection = false;

    bool areEqual(const Components& a, const Components& b) const
    {
        float dot = 0;
        for (std::size_t i = 0; i < a.size(); ++i) {
            dot += a[i] * b[i];
            if (!isDirection && !(std::abs(a[i] - b[i]) <= tolerance))
                return false;
        }
        return !isDirection || dot > 1.0F - 0.0014F;
    }
};

template <class Property>
void addRow(std::vector<Row>& rows, const Property& property, float tolerance,
            bool isDirection = false)
{
    if (!property)
        return;
    Row& row = rows.emplace_back(Row{{}, tolerance, isDirection});
    for (auto value : property->getValues()) {
        Components components(value.getValues(), value.getValues() + value.Size);
        const float length = std::sqrt(
            std::inner_product(components.begin(), components.end(), components.begin(), 0.0F));
        for (float& component : components)
            component *= isDirection && length >= 1e-6F ? 1.0F / length : 1.0F;
        row.values.push_back(components);
    }
}

std::vector<Row> rowsOf(const osg::GeometryPtr& geometry, unsigned slot, bool matchUVs)
{
    constexpr float epsilon = 1.1920929e-07F;
    std::vector<Row> rows;
    addRow(rows, geometry->getPositions(), epsilon);
    addRow(rows, geometry->getNormals(), 0, true);
    addRow(rows, geometry->getColors(), epsilon);
    addRow(rows, geometry->getSecondaryColors(), epsilon);
    const unsigned first = slot == 0 ? 0 : 1;
    if (matchUVs)
        addRow(rows, geometry->getTexSlot(first), 1e-4F);
    for (const unsigned other : {1 - first, 2U, 3U, 4U, 6U, 5U, 7U})
        if (matchUVs || other != slot)
            addRow(rows, geometry->getTexSlot(other), other == 5 || other == 7 ? 1e-3F : epsilon);
    return rows;
}

} // namespace

Ids bordersPlainly(const Ids& triangles)
{
    std::map<Edge, int> uses;
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        for (std::size_t k = 0; k < 3; ++k)
            ++uses[Edge(triangles[i + k], triangles[i + (k + 1) % 3])];
    Ids borders;
    for (const auto& [edge, count] : uses)
        if (count == 1)
            borders.insert(borders.end(), {edge.first, edge.second});
    return borders;
}

Ids sewPlainly(const osg::GeometryPtr& geometry, unsigned slot, const Ids& allEdges,
               const Ids& sewEdges, bool matchUVs)
{
    const std::vector<Row> rows = rowsOf(geometry, slot, matchUVs);
    const auto isLess = [&](unsigned a, unsigned b) {
        for (const Row& row : rows)
            if (!row.areEqual(row.values[a], row.values[b]))
                return row.values[a] < row.values[b];
        return false;
    };
    std::set<unsigned, decltype(isLess)> places(isLess);
    std::map<unsigned, unsigned> placeOf; // of border vertices
    for (const unsigned vertex : std::set<unsigned>(allEdges.begin(), allEdges.end()))
        placeOf[vertex] = *places.insert(vertex).first;

    std::map<Edge, std::vector<std::pair<unsigned, unsigned>>> bordersAt;
    std::set<Edge> borders;
    for (std::size_t i = 0; i < allEdges.size(); i += 2) {
        const unsigned a = allEdges[i];
        const unsigned b = allEdges[i + 1];
        const bool isInOrder = placeOf[a] <= placeOf[b];
        bordersAt[Edge(placeOf[a], placeOf[b])].emplace_back(isInOrder ? a : b, isInOrder ? b : a);
        borders.emplace(a, b);
    }
    std::set<Edge> sewn;
    for (std::size_t i = 0; i < sewEdges.size(); i += 2)
        if (const Edge at(placeOf[sewEdges[i]], placeOf[sewEdges[i + 1]]);
            bordersAt[at].size() <= 2)
            sewn.insert(at);

    std::map<Edge, int> interiorsAt;
    const Ids corners = geometry->getIndices()->getValues();
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const unsigned a = corners[i];
        const unsigned b = corners[i % 3 == 2 ? i - 2 : i + 1];
        if (placeOf.contains(a) && placeOf.contains(b) && !borders.contains(Edge(a, b)))
            ++interiorsAt[Edge(placeOf[a], placeOf[b])];
    }
    std::set<unsigned> blocked;
    for (const auto& [at, count] : interiorsAt)
        if (count >= 3 || sewn.contains(at))
            blocked.insert({at.first, at.second});

    Ids lowest(geometry->getPositions()->getSize());
    std::iota(lowest.begin(), lowest.end(), 0U);
    const auto merge = [&](unsigned a, unsigned b) {
        const auto [low, high] = std::minmax(lowest[a], lowest[b]);
        std::replace(lowest.begin(), lowest.end(), unsigned(high), unsigned(low));
    };
    for (const Edge& at : sewn) {
        if (blocked.contains(at.first) || blocked.contains(at.second))
            continue;
        const auto& sides = bordersAt[at];
        merge(sides.front().first, sides.back().first);
        merge(sides.front().second, sides.back().second);
    }
    return lowest;
}
