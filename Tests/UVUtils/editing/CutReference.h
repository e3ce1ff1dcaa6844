#pragma once

#include "UVUtils/Meshes.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

/// A cut in the plainest way: lists that are searched from their start, and nothing numbered.
struct CutReference
{
    Ids indices;
    Ids sources;                       ///< [new vertex]
    std::map<unsigned, Vec2f> shiftOf; ///< [vertex, old or new] the sum of unit vectors of its side

    CutReference(const Ids& triangles, unsigned vertexCount, const Ids& edges, const UVs& uvs)
        : indices(triangles), uvs_(uvs)
    {
        std::map<unsigned, Edge> startEdges;
        for (std::size_t i = 0; i + 1 < edges.size(); i += 2) {
            const Edge edge(edges[i], edges[i + 1]);
            if (edge.second >= vertexCount)
                continue;
            cut_.insert(edge);
            startEdges.emplace(edges[i], edge);
            startEdges.emplace(edges[i + 1], edge);
        }
        for (const auto& [vertex, startEdge] : startEdges)
            split(vertex, startEdge, vertexCount, fanOrder(cornersAt(triangles, vertex)));
    }

    static Vec2f unit(const Vec2f& v)
    {
        return v.length() < 1e-6F ? v : Vec2f(v[0] / v.length(), v[1] / v.length());
    }

private:
    struct Corner
    {
        std::size_t place;
        Edge first, second;
    };
    using Ring = std::vector<Corner>;

    static Ring cornersAt(const Ids& triangles, unsigned vertex)
    {
        Ring ring;
        for (std::size_t i = 0; i < triangles.size(); ++i) {
            const std::size_t t = i - i % 3;
            const std::size_t first = i == t ? t + 1 : t;
            const std::size_t second = i == t + 2 ? t + 1 : t + 2;
            if (triangles[i] == vertex)
                ring.push_back({i, {vertex, triangles[first]}, {vertex, triangles[second]}});
        }
        return ring;
    }

    static Ring fanOrder(Ring list)
    {
        Ring ordered;
        while (!list.empty()) {
            Ring chain{list.back()};
            list.pop_back();
            for (bool grows = true; grows && !list.empty();) {
                grows = false;
                for (std::size_t i = 0; i < list.size();) {
                    Corner corner = list[i];
                    const Edge left = chain.front().first;
                    const Edge right = chain.back().second;
                    if (corner.first == left || corner.second == right)
                        std::swap(corner.first, corner.second);
                    if (corner.first == right)
                        chain.push_back(corner);
                    else if (corner.second == left)
                        chain.insert(chain.begin(), corner);
                    else {
                        ++i;
                        continue;
                    }
                    list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
                    grows = true;
                }
            }
            ordered.insert(ordered.end(), chain.begin(), chain.end());
        }
        return ordered;
    }

    void split(unsigned vertex, const Edge& startEdge, unsigned vertexCount, Ring ring)
    {
        const auto start = std::find_if(ring.begin(), ring.end(), [&](const Corner& corner) {
            return corner.first == startEdge || corner.second == startEdge;
        });
        if (start == ring.end())
            return;
        std::rotate(ring.begin(), start, ring.end());
        if (ring.front().first != startEdge) {
            std::reverse(ring.begin() + 1, ring.end());
            for (Corner& corner : ring)
                std::swap(corner.first, corner.second);
        }
        unsigned current = vertex;
        std::map<unsigned, Vec2f> shifts{{vertex, directionOf(vertex, ring.front().first)}};
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Edge in = ring[i].first;
            if (i > 0 && (in != ring[i - 1].second || cut_.contains(in))) {
                current = vertexCount + static_cast<unsigned>(sources.size());
                sources.push_back(vertex);
                shifts[current] = directionOf(vertex, in);
            }
            shifts[current] += directionOf(vertex, ring[i].second);
            indices[ring[i].place] = current;
        }
        if (current != vertex)
            shiftOf.merge(shifts);
    }

    Vec2f directionOf(unsigned vertex, const Edge& edge) const
    {
        const unsigned farEnd = edge.first == vertex ? edge.second : edge.first;
        return unit(uvs_[farEnd] - uvs_[vertex]);
    }

    UVs uvs_;
    std::set<Edge> cut_;
};
