#include "Unfold3D/linear/VertexCut.h"

#include <cstddef>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A network in which each node of the band is an arc for one unit, from its gate in to its gate
/// out. Arc i and arc i ^ 1 are the two directions of one.
class Network
{
public:
    Network(const VertexGraph& graph, std::span<const Shore> shore)
        : firstArc_(2 * shore.size() + 2, noArc), source_(2 * graph.size()), sink_(source_ + 1)
    {
        arcs_.reserve(2 * (graph.neighbours.size() + 2 * shore.size()));
        for (int v = 0; v < graph.size(); ++v) {
            addArc(gateIn(v), gateOut(v), 1);
            for (const int neighbour : graph.of(v))
                addArc(gateOut(v), gateIn(neighbour), endless);
            if (shore[at(v)] == Shore::Source || shore[at(v)] == Shore::Both)
                addArc(source_, gateIn(v), endless);
            if (shore[at(v)] == Shore::Sink || shore[at(v)] == Shore::Both)
                addArc(gateOut(v), sink_, endless);
        }
    }

    void fill()
    {
        while (findLevels())
            while (sendUnit()) {
            }
    }

    /// After the last search for levels: whether a gate can be reached from the source.
    bool reaches(int gate) const { return level_[at(gate)] >= 0; }

    static int gateIn(int node) { return 2 * node; }
    static int gateOut(int node) { return 2 * node + 1; }

private:
    static constexpr int noArc = -1;
    static constexpr int endless = 1 << 30;

    struct Arc
    {
        int to;
        int next; ///< of the same gate
        int room;
    };

    void addArc(int from, int to, int room)
    {
        arcs_.push_back({to, firstArc_[at(from)], room});
        firstArc_[at(from)] = static_cast<int>(arcs_.size()) - 1;
        arcs_.push_back({from, firstArc_[at(to)], 0});
        firstArc_[at(to)] = static_cast<int>(arcs_.size()) - 1;
    }

    /// Steps from the source by which each gate can be reached. Returns whether the sink can.
    bool findLevels()
    {
        level_.assign(firstArc_.size(), -1);
        untried_ = firstArc_;
        level_[at(source_)] = 0;
        std::vector<int> queue{source_};
        for (std::size_t i = 0; i < queue.size(); ++i)
            for (int a = firstArc_[at(queue[i])]; a != noArc; a = arcs_[at(a)].next) {
                const int to = arcs_[at(a)].to;
                if (arcs_[at(a)].room == 0 || level_[at(to)] >= 0)
                    continue;
                level_[at(to)] = level_[at(queue[i])] + 1;
                queue.push_back(to);
            }
        return reaches(sink_);
    }

    /// Sends a unit to the sink by rising levels, if it can get there.
    bool sendUnit()
    {
        std::vector<int> path; // arcs
        for (int gate = source_; gate != sink_;) {
            int& a = untried_[at(gate)];
            while (a != noArc &&
                   (arcs_[at(a)].room == 0 || level_[at(arcs_[at(a)].to)] != level_[at(gate)] + 1))
                a = arcs_[at(a)].next;
            if (a != noArc) {
                path.push_back(a);
                gate = arcs_[at(a)].to;
            } else if (path.empty()) {
                return false;
            } else { // a dead end: back, and another way from there
                gate = arcs_[at(path.back() ^ 1)].to;
                untried_[at(gate)] = arcs_[at(path.back())].next;
                path.pop_back();
            }
        }
        for (const int a : path) {
            --arcs_[at(a)].room;
            ++arcs_[at(a ^ 1)].room;
        }
        return true;
    }

    std::vector<Arc> arcs_;
    std::vector<int> firstArc_; ///< [gate]
    std::vector<int> untried_;  ///< [gate] first arc that may still lead to the sink
    std::vector<int> level_;    ///< [gate] -1 where the source doesn't reach
    int source_;
    int sink_;
};

} // namespace

std::vector<Shore> leastCut(const VertexGraph& graph, std::span<const Shore> shore)
{
    Network network(graph, shore);
    network.fill();
    std::vector<Shore> sides(shore.size(), Shore::Sink);
    for (int v = 0; v < graph.size(); ++v)
        if (network.reaches(Network::gateOut(v)))
            sides[at(v)] = Shore::Source;
        else if (network.reaches(Network::gateIn(v)))
            sides[at(v)] = Shore::Both;
    return sides;
}

} // namespace unfold3d
