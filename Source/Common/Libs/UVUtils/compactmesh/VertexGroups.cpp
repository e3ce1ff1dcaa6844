#include "UVUtils/compactmesh/VertexGroups.h"

#include <algorithm>
#include <array>

namespace
{

constexpr unsigned int none = ~0U;
/// Keys with more edges than this are not joined.
constexpr unsigned int maxJoinedUse = 2;

/// Groups that take each other in. Members are chained, so that a chain moves as a whole, and a
/// group that moved points to where it went: what refers to it needs no rewriting.
class GroupChains
{
public:
    explicit GroupChains(std::size_t vertexCount)
        : groupOfVertex_(vertexCount, none), nextMember_(vertexCount, none)
    {}

    bool hasGroup(unsigned int vertex) const { return groupOfVertex_[vertex] != none; }

    unsigned int groupOf(unsigned int vertex, unsigned int keyId)
    {
        return hasGroup(vertex) ? find(groupOfVertex_[vertex]) : make(vertex, keyId);
    }

    /// Puts a vertex, with all that is in its group, into `group`.
    void join(unsigned int group, unsigned int vertex)
    {
        group = find(group);
        if (!hasGroup(vertex)) {
            groupOfVertex_[vertex] = group;
            append(group, {vertex, vertex});
            return;
        }
        const unsigned int other = find(groupOfVertex_[vertex]);
        if (other == group)
            return;
        append(group, chains_[other]);
        chains_[other] = {none, none};
        movedTo_[other] = group;
    }

    VertexGroups take()
    {
        Buckets<unsigned int> members(chains_.size(), [&](const auto& add) {
            for (unsigned int group = 0; group < chains_.size(); ++group)
                for (unsigned int v = chains_[group].first; v != none; v = nextMember_[v])
                    add(group, v);
        });
        return {std::move(members), std::move(keyId_)};
    }

private:
    struct Chain
    {
        unsigned int first, last;
    };

    unsigned int make(unsigned int vertex, unsigned int keyId)
    {
        const auto group = static_cast<unsigned int>(chains_.size());
        chains_.push_back({vertex, vertex});
        movedTo_.push_back(group);
        keyId_.push_back(keyId);
        groupOfVertex_[vertex] = group;
        return group;
    }

    void append(unsigned int group, Chain chain)
    {
        nextMember_[chains_[group].last] = chain.first;
        chains_[group].last = chain.last;
    }

    unsigned int find(unsigned int group)
    {
        while (movedTo_[group] != group) {
            movedTo_[group] = movedTo_[movedTo_[group]];
            group = movedTo_[group];
        }
        return group;
    }

    std::vector<unsigned int> groupOfVertex_;
    std::vector<unsigned int> nextMember_;
    std::vector<Chain> chains_;         ///< [group]
    std::vector<unsigned int> movedTo_; ///< [group] itself, unless another one took it in
    std::vector<unsigned int> keyId_;   ///< [group]
};

using GroupsOfEnds = std::array<unsigned int, 2>;

void joinRecord(const MergeRecord& record, GroupsOfEnds& groupsOfKey, GroupChains& groups)
{
    if (groupsOfKey[0] == none) {
        groupsOfKey[0] = groups.groupOf(record.end0, record.key.first);
        groupsOfKey[1] = groups.groupOf(record.end1, record.key.second);
        return;
    }
    groups.join(groupsOfKey[0], record.end0);
    groups.join(groupsOfKey[1], record.end1);
}

std::size_t vertexCountOf(std::span<const MergeRecord> records)
{
    std::size_t count = 0;
    for (const MergeRecord& record : records)
        count = std::max(count, std::size_t{std::max(record.end0, record.end1)} + 1);
    return count;
}

} // namespace

VertexGroups mergeVertexGroups(std::span<const MergeRecord> records,
                               std::span<const unsigned int> keyOfRecord,
                               std::span<const unsigned int> useOfKey)
{
    GroupChains groups(vertexCountOf(records));
    std::vector<GroupsOfEnds> groupsOfKey(useOfKey.size(), GroupsOfEnds{none, none});
    for (std::size_t i = 0; i < records.size(); ++i)
        if (useOfKey[keyOfRecord[i]] <= maxJoinedUse)
            joinRecord(records[i], groupsOfKey[keyOfRecord[i]], groups);
    // Only now: an end that any record joins must not stand alone.
    for (std::size_t i = 0; i < records.size(); ++i)
        if (useOfKey[keyOfRecord[i]] > maxJoinedUse) {
            groups.groupOf(records[i].end0, records[i].key.first);
            groups.groupOf(records[i].end1, records[i].key.second);
        }
    return groups.take();
}
