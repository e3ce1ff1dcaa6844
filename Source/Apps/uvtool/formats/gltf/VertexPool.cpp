#include "formats/gltf/VertexPool.h"

#include "mesh/EqualValues.h"

#include <bit>
#include <map>
#include <numeric>
#include <string>
#include <utility>

namespace uvtool
{
namespace
{

const DocumentGeometry* changedGeometry(const Document& document, std::size_t source)
{
    for (const DocumentGeometry& geometry : document.geometries) {
        if (geometry.source == source && geometry.isChanged())
            return &geometry;
    }
    return nullptr;
}

/// Finds the pools of all primitives of a file.
class PoolCollector
{
public:
    PoolCollector(const Document& document, const GltfPayload& payload, const GltfModel& model)
        : document_(document), payload_(payload), model_(model)
    {}

    std::vector<VertexPool> collect()
    {
        const Json& meshes = gltfArray(payload_.json, "meshes");
        for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh) {
            for (std::size_t p = 0; p < meshes[mesh]["primitives"].size(); ++p)
                add(mesh, p);
        }
        std::erase_if(pools_, [](const VertexPool& pool) { return pool.vertexCount == 0; });
        for (VertexPool& pool : pools_)
            readMaps(pool);
        return std::move(pools_);
    }

private:
    const Json& json(const VertexPool::Member& member) const
    {
        return payload_.json["meshes"][member.mesh]["primitives"][member.number];
    }

    void add(std::size_t mesh, std::size_t number)
    {
        VertexPool::Member member{mesh, number, nullptr, nullptr};
        if (next_ < payload_.primitives.size() && payload_.primitives[next_].mesh == mesh &&
            payload_.primitives[next_].number == number)
        {
            member.primitive = &payload_.primitives[next_];
            member.changed = changedGeometry(document_, next_);
            ++next_;
        }
        const Json& primitive = json(member);
        if (!primitive.contains("attributes"))
            return;
        std::string key = primitive["attributes"].dump();
        if (primitive.contains("targets"))
            key += primitive["targets"].dump();
        const auto pool = poolOfKey_.try_emplace(key, pools_.size()).first->second;
        if (pool == pools_.size())
            pools_.emplace_back();
        pools_[pool].members.push_back(member);
        if (member.changed != nullptr) {
            pools_[pool].changedSlots |= member.changed->changedSlots;
            pools_[pool].vertexCount = member.primitive->vertexCount;
        }
    }

    void readMaps(VertexPool& pool) const
    {
        const GltfObject primitive(json(pool.members[0]), "primitive");
        pool.attributes = model_.attributes(primitive, "attributes");
        if (!primitive.has("targets"))
            return;
        for (const Json& target : primitive.json()["targets"])
            pool.targets.push_back(model_.attributes(GltfObject(target, "target"), nullptr));
    }

    const Document& document_;
    const GltfPayload& payload_;
    const GltfModel& model_;
    std::vector<VertexPool> pools_;
    std::map<std::string, std::size_t> poolOfKey_;
    std::size_t next_ = 0; ///< of the primitives with triangles
};

/// Numbers the distinct combinations of a vertex, a copy of it and UVs, in the order in which they
/// come.
class VertexSplitter
{
public:
    VertexSplitter(const VertexPool& pool, const GltfModel& model)
        : pool_(pool), copies_(pool.vertexCount)
    {
        for (std::size_t slot = 0; slot < slotCount; ++slot) {
            if (!pool.changedSlots.test(slot))
                continue;
            const std::optional<std::size_t> index = accessorOf(pool.attributes, slot);
            slots_.push_back(
                {slot, index.has_value(), readOld(model, index), Numbers(pool.vertexCount)});
        }
        vertices_.source.resize(pool.vertexCount);
        std::iota(vertices_.source.begin(), vertices_.source.end(), 0U);
        isTaken_.assign(pool.vertexCount, false);
        for (const Slot& slot : slots_)
            vertices_.uvs[slot.number] = slot.old;
    }

    PoolVertices split()
    {
        for (const VertexPool::Member& member : pool_.members) {
            if (member.changed == nullptr)
                keepVertices(member);
        }
        for (const VertexPool::Member& member : pool_.members)
            vertices_.corners.push_back(member.changed == nullptr ? std::vector<std::uint32_t>{}
                                                                  : splitCorners(member));
        return std::move(vertices_);
    }

private:
    using Key = std::array<std::uint32_t, 3>;
    using Numbers = FirstUseNumbers<Key, ValueHash>;

    struct Slot
    {
        std::size_t number;
        bool isInFile;
        std::vector<Vec2f> old; ///< by vertex, as they stand in the file
        Numbers keys;           ///< of the key before it and the UV
    };

    /// UVs of all vertices as they stand in the file; zeros where it has none.
    std::vector<Vec2f> readOld(const GltfModel& model,
                               const std::optional<std::size_t>& index) const
    {
        std::vector<Vec2f> old(pool_.vertexCount, Vec2f{0, 0});
        if (!index)
            return old;
        std::vector<std::uint32_t> all(pool_.vertexCount);
        std::iota(all.begin(), all.end(), 0U);
        const GltfAccessor accessor = model.accessor(*index);
        const std::vector<double> numbers =
            decodeComponents(accessor, model.elements(accessor, all));
        for (std::size_t v = 0; v < old.size(); ++v)
            old[v] = {static_cast<float>(numbers[2 * v]), static_cast<float>(numbers[2 * v + 1])};
        return old;
    }

    void keepVertices(const VertexPool::Member& member)
    {
        if (member.primitive == nullptr) {
            for (std::uint32_t vertex = 0; vertex < pool_.vertexCount; ++vertex)
                keepVertex(vertex);
            return;
        }
        for (const std::uint32_t vertex : member.primitive->vertexOfValue)
            keepVertex(vertex);
    }

    void keepVertex(std::uint32_t vertex)
    {
        newVertex({vertex, 0, 0}, [&](const Slot& slot) { return slot.old[vertex]; });
    }

    std::vector<std::uint32_t> splitCorners(const VertexPool::Member& member)
    {
        const DocumentGeometry& geometry = *member.changed;
        const std::vector<std::uint32_t>& vertexOfValue = member.primitive->vertexOfValue;
        std::vector<std::uint32_t> corners;
        corners.reserve(geometry.triangles.size());
        for (const std::uint32_t corner : geometry.triangles) {
            const Key copy = copyAt(geometry, vertexOfValue, corner);
            const std::uint32_t vertex = copy[0];
            corners.push_back(newVertex(copy, [&](const Slot& slot) {
                return uvAt(geometry, vertexOfValue, slot, corner, vertex);
            }));
        }
        return corners;
    }

    /// The vertex of a corner, and which copy of it: that of a position of a geometry.
    static Key copyAt(const DocumentGeometry& geometry,
                      const std::vector<std::uint32_t>& vertexOfValue, std::uint32_t corner)
    {
        const std::uint32_t position = geometry.positions.ofCorner[corner];
        if (position < vertexOfValue.size())
            return {vertexOfValue[position], 0, 0};
        const std::uint32_t source = geometry.sourceOfNewPosition[position - vertexOfValue.size()];
        return {vertexOfValue[source], static_cast<std::uint32_t>(geometry.source + 1), position};
    }

    /// The values that were read stand in front, in the order of the vertices; only those behind
    /// them are new.
    static Vec2f uvAt(const DocumentGeometry& geometry,
                      const std::vector<std::uint32_t>& vertexOfValue, const Slot& slot,
                      std::uint32_t corner, std::uint32_t vertex)
    {
        const CornerAttribute<Vec2f>& uvs = geometry.uvs[slot.number];
        if (!geometry.changedSlots.test(slot.number) || !uvs.has(corner))
            return slot.old[vertex];
        const std::size_t readCount = slot.isInFile ? vertexOfValue.size() : 0;
        if (uvs.ofCorner[corner] < readCount)
            return slot.old[vertexOfValue[uvs.ofCorner[corner]]];
        const Vec2f& uv = uvs.at(corner);
        return {uv[0], 1 - uv[1]};
    }

    template <class UVOf>
    std::uint32_t newVertex(const Key& copy, const UVOf& uvOf)
    {
        const std::uint32_t vertex = copy[0];
        std::uint32_t key = copies_.of(copy);
        std::array<Vec2f, slotCount> uvs{};
        for (std::size_t s = 0; s < slots_.size(); ++s) {
            uvs[s] = uvOf(slots_[s]);
            key = slots_[s].keys.of({key, std::bit_cast<std::uint32_t>(uvs[s][0]),
                                     std::bit_cast<std::uint32_t>(uvs[s][1])});
        }
        if (key == vertexOfKey_.size())
            vertexOfKey_.push_back(place(vertex, uvs));
        return vertexOfKey_[key];
    }

    /// The first UV of a vertex takes its old place.
    std::uint32_t place(std::uint32_t vertex, const std::array<Vec2f, slotCount>& uvs)
    {
        std::uint32_t at = vertex;
        if (isTaken_[vertex]) {
            at = static_cast<std::uint32_t>(vertices_.source.size());
            vertices_.source.push_back(vertex);
            for (const Slot& slot : slots_)
                vertices_.uvs[slot.number].emplace_back();
        }
        isTaken_[vertex] = true;
        for (std::size_t s = 0; s < slots_.size(); ++s)
            vertices_.uvs[slots_[s].number][at] = uvs[s];
        return at;
    }

    const VertexPool& pool_;
    Numbers copies_; ///< of the vertices
    std::vector<Slot> slots_;
    PoolVertices vertices_;
    std::vector<bool> isTaken_; ///< by old vertex: its place holds a UV that is used
    std::vector<std::uint32_t> vertexOfKey_;
};

} // namespace

std::string semanticOf(std::size_t slot)
{
    return "TEXCOORD_" + std::to_string(slot);
}

std::optional<std::size_t> accessorOf(const GltfAttributes& attributes, std::size_t slot)
{
    for (const auto& [semantic, index] : attributes) {
        if (semantic == semanticOf(slot))
            return index;
    }
    return std::nullopt;
}

std::vector<VertexPool> changedPools(const Document& document, const GltfPayload& payload,
                                     const GltfModel& model)
{
    return PoolCollector(document, payload, model).collect();
}

PoolVertices splitVertices(const VertexPool& pool, const GltfModel& model)
{
    return VertexSplitter(pool, model).split();
}

} // namespace uvtool
