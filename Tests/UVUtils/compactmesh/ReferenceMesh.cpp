#include "UVUtils/compactmesh/ReferenceMesh.h"

#include "OpenSG/GeoProperty.h"
#include "UVUtils/compactmesh/WeldKey.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/Edge.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace
{

struct Record
{
    Edge key;
    unsigned end0, end1;
};

class Weld
{
public:
    explicit Weld(unsigned slot) : slot_(slot) {}

    void gather(const ActiveSurface& surface)
    {
        const osg::Geometry& geometry = *surface.geometry;
        const Ids ids = geometry.getIndices()->getValues();
        for (unsigned v = 0; v < surface.vertexCount; ++v) {
            const auto uvs = osg::dcast<osg::GeoTexCoords2f>(geometry.getTexSlot(slot_));
            keys_.push_back(
                {geometry.getPositions()->getValue(v), uvs ? uvs->getValue(v) : osg::Vec2f(0, 0)});
        }
        const std::set<Edge> borders = bordersOf(ids, surface.firstId);
        std::set<unsigned> borderVertices;
        for (const Edge& edge : borders)
            borderVertices.insert({edge.first, edge.second});
        for (unsigned v = surface.firstId; v < keys_.size(); ++v)
            if (!borderVertices.contains(v))
                mesh_.vertices.push_back({{v}, keys_[v].position, keys_[v].uv});
        for (const Edge& edge : borders)
            addRecord(edge);
        for (std::size_t i = 0; i < ids.size(); i += 3)
            countInner({surface.firstId + ids[i], surface.firstId + ids[i + 1],
                        surface.firstId + ids[i + 2]},
                       borders, borderVertices);
    }

    ReferenceMesh finish()
    {
        block();
        for (const Record& record : records_)
            if (borderUse_[record.key] <= 2)
                joinEnds(record);
        for (const Record& record : records_)
            if (borderUse_[record.key] >= 3) {
                groupOf(record.end0, record.key.first);
                groupOf(record.end1, record.key.second);
            }
        for (std::size_t g = 0; g < groups_.size(); ++g)
            if (!groups_[g].empty())
                mesh_.vertices.push_back(
                    {groups_[g], keyOfId_[groupKey_[g]].position, keyOfId_[groupKey_[g]].uv});
        return mesh_;
    }

private:
    static std::set<Edge> bordersOf(const Ids& ids, unsigned base)
    {
        std::map<Edge, int> use;
        for (std::size_t i = 0; i < ids.size(); i += 3)
            for (unsigned k = 0; k < 3; ++k)
                ++use[{base + ids[i + k], base + ids[i + (k + 1) % 3]}];
        std::set<Edge> borders;
        for (const auto& [edge, count] : use)
            if (count == 1)
                borders.insert(edge);
        return borders;
    }

    unsigned weldId(unsigned vertex)
    {
        const auto [entry, isNew] =
            ids_.try_emplace(keys_[vertex], static_cast<unsigned>(ids_.size()));
        if (isNew)
            keyOfId_.push_back(keys_[vertex]);
        return entry->second;
    }

    void addRecord(const Edge& edge)
    {
        const unsigned a = weldId(edge.first);
        const unsigned b = weldId(edge.second);
        records_.push_back(a <= b ? Record{{a, b}, edge.first, edge.second}
                                  : Record{{a, b}, edge.second, edge.first});
        ++borderUse_[{a, b}];
    }

    void countInner(const Ids& corners, const std::set<Edge>& borders,
                    const std::set<unsigned>& borderVertices)
    {
        if (std::count_if(corners.begin(), corners.end(),
                          [&](unsigned v) { return borderVertices.contains(v); }) == 1)
            return;
        for (unsigned k = 0; k < 3; ++k) {
            if (borders.contains({corners[k], corners[(k + 1) % 3]}))
                continue;
            const unsigned from = weldId(corners[k]);
            ++innerUse_[{from, weldId(corners[(k + 1) % 3])}];
        }
    }

    void block()
    {
        std::set<unsigned> blocked;
        for (const Record& record : records_)
            if (innerUse_.contains(record.key))
                blocked.insert({record.key.first, record.key.second});
        for (const auto& [edge, count] : innerUse_)
            if (count >= 3)
                blocked.insert({edge.first, edge.second});
        for (const Record& record : records_)
            if (blocked.contains(record.key.first) || blocked.contains(record.key.second))
                borderUse_[record.key] = 99;
    }

    unsigned groupOf(unsigned vertex, unsigned keyId)
    {
        if (!groupOfVertex_.contains(vertex)) {
            groupOfVertex_[vertex] = static_cast<unsigned>(groups_.size());
            groups_.push_back({vertex});
            groupKey_.push_back(keyId);
        }
        return groupOfVertex_[vertex];
    }

    void joinEnds(const Record& record)
    {
        if (!groupsOfKey_.contains(record.key)) {
            const unsigned first = groupOf(record.end0, record.key.first);
            groupsOfKey_[record.key] = {first, groupOf(record.end1, record.key.second)};
            return;
        }
        for (unsigned i = 0; i < 2; ++i)
            joinEnd(i == 0 ? record.end0 : record.end1, groupsOfKey_[record.key][i]);
    }

    void joinEnd(unsigned vertex, unsigned g)
    {
        if (!groupOfVertex_.contains(vertex)) {
            groupOfVertex_[vertex] = g;
            groups_[g].push_back(vertex);
            return;
        }
        const unsigned h = groupOfVertex_[vertex];
        if (h == g)
            return;
        groups_[g].insert(groups_[g].end(), groups_[h].begin(), groups_[h].end());
        groups_[h].clear();
        for (auto& [other, group] : groupOfVertex_)
            group = group == h ? g : group;
        for (auto& [key, pair] : groupsOfKey_)
            for (unsigned& group : pair)
                group = group == h ? g : group;
    }

    unsigned slot_;
    std::vector<WeldKey> keys_;
    std::map<WeldKey, unsigned, WeldKeyLess> ids_;
    std::vector<WeldKey> keyOfId_;
    std::vector<Record> records_;
    std::unordered_map<Edge, unsigned, EdgeHash> borderUse_, innerUse_;
    std::map<unsigned, unsigned> groupOfVertex_;
    std::unordered_map<Edge, std::array<unsigned, 2>, EdgeHash> groupsOfKey_;
    std::vector<Ids> groups_;
    Ids groupKey_;
    ReferenceMesh mesh_;
};

} // namespace

ReferenceMesh weldPlainly(const osg::NodePtr& node, unsigned slot)
{
    Weld weld(slot);
    for (const ActiveSurface& surface : activeSurfaces(node))
        weld.gather(surface);
    return weld.finish();
}
