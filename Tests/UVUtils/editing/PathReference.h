#pragma once

#include "UVUtils/Meshes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

/// The search for shortest paths in the plainest way there is, with sets and maps and nothing
/// spared.
class PathReference
{
public:
    PathReference(const std::vector<osg::Pnt3f>& positions, const Ids& triangles,
                  const Ids& islandOfVertex)
        : positions_(positions), triangles_(triangles), islands_(islandOfVertex)
    {
        for (const Edge& edge : sides())
            ++sidesOf_[edge];
        for (const auto& [edge, count] : sidesOf_)
            if (count == 1)
                borderVertices_.insert({edge.first, edge.second});
    }

    FlatEdgeList shortestPath(const Ids& picked, bool alongBorders)
    {
        for (const unsigned id : picked)
            if (alongBorders && !borderVertices_.contains(id))
                return {};
        std::set<Edge> met;
        adjacency_.clear();
        for (const Edge& edge : sides())
            if (met.insert(edge).second && (!alongBorders || sidesOf_[edge] == 1)) {
                adjacency_[edge.first].push_back(edge.second);
                adjacency_[edge.second].push_back(edge.first);
            }
        FlatEdgeList edges;
        for (std::size_t i = 1; i < picked.size() && appendLeg(picked[i - 1], picked[i], edges);)
            ++i;
        return edges;
    }

private:
    static constexpr float far = std::numeric_limits<float>::max();

    std::vector<Edge> sides() const
    {
        std::vector<Edge> all;
        for (std::size_t i = 0; i + 2 < triangles_.size(); i += 3)
            for (const std::size_t k : {0U, 1U, 2U})
                all.emplace_back(triangles_[i + k], triangles_[i + (k + 1) % 3]);
        return all;
    }

    /// By island.
    std::map<unsigned, unsigned> candidates(unsigned picked) const
    {
        std::map<unsigned, unsigned> found{{islands_[picked], picked}};
        if (borderVertices_.contains(picked))
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
        std::map<unsigned, unsigned> starts{{islands_[a], a}};
        std::map<unsigned, unsigned> targets{{islands_[b], b}};
        if (islands_[a] != islands_[b]) {
            starts = candidates(a);
            targets = candidates(b);
        }
        float best = far;
        Ids path;
        for (const auto& [island, s] : starts) {
            if (!targets.contains(island))
                continue;
            const unsigned t = targets[island];
            search(s, t);
            if (!(best > dist_[t]))
                continue;
            best = dist_[t];
            path = {t};
            while (path.back() != s)
                path.push_back(prev_[path.back()]);
        }
        for (std::size_t i = path.size(); i > 1; --i)
            edges.insert(edges.end(), {path[i - 1], path[i - 2]});
        return path.size() >= 2;
    }

    void swapAt(std::size_t i, std::size_t j)
    {
        std::swap(heap_[i], heap_[j]);
        place_[heap_[i]] = i;
        place_[heap_[j]] = j;
    }
    void siftDown(std::size_t i)
    {
        while (2 * i + 1 < heap_.size()) {
            const std::size_t left = 2 * i + 1;
            const std::size_t right = left + 1;
            const std::size_t child =
                right == heap_.size() || dist_[heap_[left]] < dist_[heap_[right]] ? left : right;
            if (!(dist_[heap_[i]] > dist_[heap_[child]]))
                return;
            swapAt(i, child);
            i = child;
        }
    }
    void siftUp(std::size_t i)
    {
        for (; i > 0 && dist_[heap_[(i - 1) / 2]] > dist_[heap_[i]]; i = (i - 1) / 2)
            swapAt(i, (i - 1) / 2);
    }

    void search(unsigned s, unsigned t)
    {
        dist_.assign(positions_.size(), far);
        dist_[s] = 0;
        heap_.clear();
        place_.clear();
        for (unsigned v = 0; v < positions_.size(); ++v) {
            place_[v] = heap_.size();
            heap_.push_back(v);
        }
        for (std::size_t i = heap_.size(); i-- > 0;)
            siftDown(i);
        while (!heap_.empty()) {
            const unsigned u = heap_.front();
            swapAt(0, heap_.size() - 1);
            heap_.pop_back();
            place_.erase(u);
            siftDown(0);
            if (dist_[u] == far || u == t)
                return;
            for (const unsigned v : adjacency_[u]) {
                const float d = dist_[u] + (positions_[u] - positions_[v]).length();
                if (!place_.contains(v) || !(dist_[v] > d))
                    continue;
                dist_[v] = d;
                prev_[v] = u;
                siftUp(place_[v]);
            }
        }
    }

    std::vector<osg::Pnt3f> positions_;
    Ids triangles_;
    Ids islands_;
    std::map<Edge, int> sidesOf_;
    std::set<unsigned> borderVertices_;
    std::map<unsigned, Ids> adjacency_;
    std::vector<float> dist_;
    std::map<unsigned, unsigned> prev_;
    Ids heap_;
    std::map<unsigned, std::size_t> place_;
};
