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
    PathReference(std::vector<osg::Pnt3f> positions, const Ids& triangles, Ids islandOfVertex)
        : positions_(std::move(positions)), islands_(std::move(islandOfVertex))
    {
        for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
            for (const std::size_t k : {0U, 1U, 2U})
                sides_.emplace_back(triangles[i + k], triangles[i + (k + 1) % 3]);
        for (const Edge& edge : sides_)
            if (isBorder(edge))
                borderVertices_.insert({edge.first, edge.second});
    }

    FlatEdgeList shortestPath(const Ids& picked, bool alongBorders)
    {
        std::set<Edge> met;
        neighbours_.clear();
        for (const Edge& edge : sides_)
            if (met.insert(edge).second && (!alongBorders || isBorder(edge))) {
                neighbours_[edge.first].push_back(edge.second);
                neighbours_[edge.second].push_back(edge.first);
            }
        FlatEdgeList edges;
        if (!alongBorders || std::all_of(picked.begin(), picked.end(), [this](unsigned id) {
                return borderVertices_.contains(id);
            }))
            for (std::size_t i = 1; i < picked.size(); ++i)
                if (!appendLeg(picked[i - 1], picked[i], edges))
                    break;
        return edges;
    }

private:
    static constexpr float far = std::numeric_limits<float>::max();

    bool isBorder(const Edge& edge) const
    {
        return std::count(sides_.begin(), sides_.end(), edge) == 1;
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
    Ids islands_;
    std::vector<Edge> sides_;
    std::set<unsigned> borderVertices_;
    std::map<unsigned, Ids> neighbours_;
    std::vector<float> distances_;
    std::map<unsigned, unsigned> previous_;
    Ids heap_;
};
