#pragma once

#include "UVUtils/Meshes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <utility>

/// The searches for paths in the plainest way there is, with sets and maps and nothing spared.
class PathReference
{
public:
    PathReference(std::vector<osg::Pnt3f> positions, Ids triangles, Ids islandOfVertex)
        : positions_(std::move(positions)), triangles_(std::move(triangles)),
          islands_(std::move(islandOfVertex))
    {
        for (std::size_t i = 0; i < triangles_.size(); ++i)
            sides_.emplace_back(triangles_[i], triangles_[i % 3 == 2 ? i - 2 : i + 1]);
        for (const Edge& edge : sides_)
            ++sidesOf_[edge];
        for (const auto& [edge, count] : sidesOf_)
            if (count == 1)
                borderVertices_.insert({edge.first, edge.second});
    }

    FlatEdgeList shortestPath(const Ids& picked, bool alongBorders)
    {
        FlatEdgeList edges;
        for (const unsigned id : picked)
            if (alongBorders && !isAtBorder(id))
                return edges;
        findNeighbours(alongBorders);
        for (std::size_t i = 1; i < picked.size() && appendLeg(picked[i - 1], picked[i], edges);)
            ++i;
        return edges;
    }

    FlatEdgeList contiguousEdges(const Edge& start, float surfaceAngle, float edgeAngle,
                                 bool bordersOnly, bool stopAtBorders)
    {
        if (bordersOnly && !isBorder(start))
            return {};
        findNeighbours(bordersOnly);
        FlatEdgeList edges{start.first, start.second};
        std::set<unsigned> visited;
        const auto endsAt = [&](unsigned vertex) {
            return stopAtBorders && !isBorder(start) && isAtBorder(vertex);
        };
        for (auto [from, to] :
             {std::pair(start.first, start.second), std::pair(start.second, start.first)})
        {
            visited.insert({from, to});
            while (!endsAt(to)) {
                const unsigned next = straightest(from, to, surfaceAngle, edgeAngle);
                if (next == none)
                    break;
                edges.insert(edges.end(), {to, next});
                if (!visited.insert(next).second)
                    break;
                from = std::exchange(to, next);
            }
        }
        return edges;
    }

private:
    static constexpr float far = std::numeric_limits<float>::max();
    static constexpr unsigned none = 0xFFFFFFFFU;

    bool isBorder(const Edge& edge) const
    {
        return sidesOf_.contains(edge) && sidesOf_.at(edge) == 1;
    }

    bool isAtBorder(unsigned vertex) const { return borderVertices_.contains(vertex); }

    void findNeighbours(bool bordersOnly)
    {
        neighbours_.clear();
        std::set<Edge> met;
        for (const Edge& edge : sides_)
            if (met.insert(edge).second && (!bordersOnly || isBorder(edge))) {
                neighbours_[edge.first].push_back(edge.second);
                neighbours_[edge.second].push_back(edge.first);
            }
    }

    osg::Vec3f direction(unsigned from, unsigned to) const
    {
        return (positions_[to] - positions_[from]).normalized();
    }

    osg::Vec3f normalAt(unsigned vertex) const
    {
        osg::Vec3f sum;
        for (std::size_t i = 0; i < triangles_.size(); ++i) {
            const unsigned* const t = &triangles_[i / 3 * 3];
            if (triangles_[i] == vertex)
                sum +=
                    cross(positions_[t[1]] - positions_[t[0]], positions_[t[2]] - positions_[t[0]]);
        }
        return sum.normalized();
    }

    unsigned straightest(unsigned from, unsigned to, float surfaceAngle, float edgeAngle)
    {
        const auto cosOf = [](float angle) { return std::cos((angle + angle) * 3.1415927F / 360); };
        const osg::Vec3f d = direction(from, to);
        const osg::Vec3f n = normalAt(to);
        unsigned winner = none;
        float best = -10;
        for (const unsigned w : std::set(neighbours_[to].begin(), neighbours_[to].end())) {
            const osg::Vec3f e = direction(to, w);
            const float dn = d.dot(n);
            const float en = e.dot(n);
            const float r = std::sqrt((1 - en * en) * (1 - dn * dn));
            const float q = (d.dot(e) - en * dn) / r;
            if (w == from || !(d.dot(e) >= cosOf(edgeAngle)) || r < 1e-10F ||
                !(q >= cosOf(surfaceAngle)) || !(q > best))
                continue;
            best = q;
            winner = w;
        }
        return winner;
    }

    /// By island.
    std::map<unsigned, unsigned> candidates(unsigned picked) const
    {
        std::map<unsigned, unsigned> found{{islands_[picked], picked}};
        if (isAtBorder(picked))
            for (const unsigned other : borderVertices_) {
                bool isTwin = true;
                for (const unsigned axis : {0U, 1U, 2U})
                    isTwin &= std::abs(positions_[other][axis] - positions_[picked][axis]) <=
                              1.1920929e-07F;
                if (isTwin)
                    found.insert({islands_[other], other});
            }
        return found;
    }

    bool appendLeg(unsigned a, unsigned b, FlatEdgeList& edges)
    {
        const bool areApart = islands_[a] != islands_[b];
        std::map<unsigned, unsigned> targets{{islands_[b], b}};
        if (areApart)
            targets = candidates(b);
        float best = far;
        Ids path;
        for (const auto& [island, s] : candidates(a)) {
            if (!targets.contains(island) || (!areApart && island != islands_[a]))
                continue;
            const unsigned t = targets[island];
            search(s, t);
            if (!(best > distances_[t]))
                continue;
            best = distances_[t];
            path = {t};
            while (path.back() != s)
                path.push_back(previous_[path.back()]);
        }
        for (std::size_t i = path.size(); i > 1; --i)
            edges.insert(edges.end(), {path[i - 1], path[i - 2]});
        return path.size() >= 2;
    }

    float keyAt(std::size_t place) const { return distances_[heap_[place]]; }
    void siftDown(std::size_t i)
    {
        while (2 * i + 1 < heap_.size()) {
            const std::size_t left = 2 * i + 1;
            const std::size_t right = std::min(left + 1, heap_.size() - 1);
            const std::size_t child = keyAt(left) < keyAt(right) ? left : right;
            if (!(keyAt(i) > keyAt(child)))
                return;
            std::swap(heap_[i], heap_[child]);
            i = child;
        }
    }

    void search(unsigned s, unsigned t)
    {
        distances_.assign(positions_.size(), far);
        distances_[s] = 0;
        heap_.clear();
        for (unsigned v = 0; v < positions_.size(); ++v)
            heap_.push_back(v);
        for (std::size_t i = heap_.size(); i-- > 0;)
            siftDown(i);
        while (!heap_.empty()) {
            const unsigned u = heap_.front();
            heap_.front() = heap_.back();
            heap_.pop_back();
            siftDown(0);
            if (distances_[u] == far || u == t)
                return;
            for (const unsigned v : neighbours_[u]) {
                const float distance = distances_[u] + (positions_[u] - positions_[v]).length();
                const auto found = std::find(heap_.begin(), heap_.end(), v);
                if (found == heap_.end() || !(distances_[v] > distance))
                    continue;
                distances_[v] = distance;
                previous_[v] = u;
                for (auto i = static_cast<std::size_t>(found - heap_.begin());
                     i > 0 && keyAt((i - 1) / 2) > keyAt(i); i = (i - 1) / 2)
                    std::swap(heap_[i], heap_[(i - 1) / 2]);
            }
        }
    }

    std::vector<osg::Pnt3f> positions_;
    Ids triangles_;
    Ids islands_;
    std::vector<Edge> sides_;
    std::map<Edge, int> sidesOf_;
    std::set<unsigned> borderVertices_;
    std::map<unsigned, Ids> neighbours_;
    std::vector<float> distances_;
    std::map<unsigned, unsigned> previous_;
    Ids heap_;
};
