#include "formats/gltf/GltfRewrite.h"

#include "formats/gltf/VertexPool.h"

#include <algorithm>
#include <map>
#include <string>

namespace uvtool
{
namespace
{

/// Writes the new vertices of one pool.
class PoolWriter
{
public:
    PoolWriter(GltfEdit& edit, const VertexPool& pool, const PoolVertices& vertices)
        : edit_(edit), pool_(pool), vertices_(vertices)
    {
        for (const auto& [semantic, accessor] : pool.attributes)
            references_[accessor] += pool.members.size();
        for (const GltfAttributes& target : pool.targets) {
            for (const auto& [semantic, accessor] : target)
                references_[accessor] += pool.members.size();
        }
    }

    void write()
    {
        replaceUVs();
        if (isSplit())
            replaceAllOthers();
        for (std::size_t m = 0; m < pool_.members.size(); ++m) {
            if (pool_.members[m].changed == nullptr)
                continue;
            renameAccessors(primitiveOf(pool_.members[m]));
            writeIndices(pool_.members[m], vertices_.corners[m]);
        }
    }

private:
    bool isSplit() const { return vertices_.source.size() > pool_.vertexCount; }

    Json& primitiveOf(const VertexPool::Member& member)
    {
        return edit_.json()["meshes"][member.mesh]["primitives"][member.number];
    }

    /// The accessor that stands for an old one from now on: itself when only the pool names it.
    std::size_t replacementOf(std::size_t accessor)
    {
        const bool isOwned = edit_.isOwnedBy(accessor, references_[accessor]);
        return isOwned ? accessor : edit_.duplicate(accessor);
    }

    void replaceUVs()
    {
        for (std::size_t slot = 0; slot < slotCount; ++slot) {
            if (!pool_.changedSlots.test(slot))
                continue;
            const std::optional<std::size_t> old = accessorOf(pool_.attributes, slot);
            if (!old)
                addLowerSlots(slot);
            // An accessor may serve two slots; the second one must not overwrite the first.
            const bool isFree = old && newOfOld_.count(*old) == 0 && isNamedOnce(*old);
            const std::size_t accessor =
                isFree ? replacementOf(*old) : edit_.addZeros("VEC2", vertices_.source.size());
            if (isFree)
                newOfOld_[*old] = accessor;
            addedSlots_[slot] = accessor;
            writeUVs(accessor, vertices_.uvs[slot]);
        }
    }

    bool isNamedOnce(std::size_t accessor) const
    {
        return references_.at(accessor) == pool_.members.size();
    }

    void addLowerSlots(std::size_t slot)
    {
        for (std::size_t lower = 0; lower < slot; ++lower) {
            if (!accessorOf(pool_.attributes, lower) && !pool_.changedSlots.test(lower))
                addedSlots_.try_emplace(lower, edit_.addZeros("VEC2", vertices_.source.size()));
        }
    }

    void writeUVs(std::size_t accessor, const std::vector<Vec2f>& uvs)
    {
        Json& json = edit_.json()["accessors"][accessor];
        json["componentType"] = GltfComponent::Float;
        for (const char* const key : {"normalized", "min", "max"})
            json.erase(key);
        edit_.setData(accessor, uvs.size(), encodeFloats({uvs[0].data(), 2 * uvs.size()}),
                      sizeof(Vec2f), GltfEdit::Vertices);
    }

    void replaceAllOthers()
    {
        replaceIn(pool_.attributes);
        for (const GltfAttributes& target : pool_.targets)
            replaceIn(target);
    }

    void replaceIn(const GltfAttributes& attributes)
    {
        for (const auto& [semantic, old] : attributes) {
            if (newOfOld_.count(old) > 0 || isNewSlot(semantic))
                continue;
            const std::size_t accessor = replacementOf(old);
            newOfOld_[old] = accessor;
            edit_.takeElements(accessor, old, vertices_.source);
        }
    }

    bool isNewSlot(const std::string& semantic) const
    {
        return std::any_of(addedSlots_.begin(), addedSlots_.end(),
                           [&](const auto& slot) { return semanticOf(slot.first) == semantic; });
    }

    void renameAccessors(Json& primitive)
    {
        renameIn(primitive["attributes"]);
        if (primitive.contains("targets")) {
            for (Json& target : primitive["targets"])
                renameIn(target);
        }
        for (const auto& [slot, accessor] : addedSlots_)
            primitive["attributes"][semanticOf(slot)] = accessor;
    }

    void renameIn(Json& attributes)
    {
        for (auto& [semantic, value] : attributes.items()) {
            const auto found = newOfOld_.find(checkedNumber(value));
            if (found != newOfOld_.end())
                value = found->second;
        }
    }

    void writeIndices(const VertexPool::Member& member, const std::vector<std::uint32_t>& corners)
    {
        if (corners == member.primitive->vertexOfCorner)
            return;
        Json& primitive = primitiveOf(member);
        primitive.erase("mode"); // a list of triangles
        GltfComponent type = GltfComponent::UnsignedShort;
        std::size_t accessor = 0;
        if (primitive.contains("indices")) {
            const std::size_t old = checkedNumber(primitive["indices"]);
            type = edit_.model().accessor(old).component;
            accessor = edit_.isOwnedBy(old, 1) ? old : edit_.duplicate(old);
        } else {
            accessor = edit_.addZeros("SCALAR", corners.size());
        }
        primitive["indices"] = accessor;
        type = indexTypeFor(vertices_.source.size(), type);
        Json& json = edit_.json()["accessors"][accessor];
        json["componentType"] = type;
        for (const char* const key : {"min", "max"})
            json.erase(key);
        edit_.setData(accessor, corners.size(), encodeIndices(type, corners), componentSize(type),
                      GltfEdit::Indices);
    }

    GltfEdit& edit_;
    const VertexPool& pool_;
    const PoolVertices& vertices_;
    std::map<std::size_t, std::size_t> references_; ///< by accessor, from within the pool
    std::map<std::size_t, std::size_t> newOfOld_;   ///< accessors
    std::map<std::size_t, std::size_t> addedSlots_; ///< accessors of slots that are new
};

} // namespace

bool isChanged(const Document& document)
{
    return std::any_of(document.geometries.begin(), document.geometries.end(),
                       [](const DocumentGeometry& g) { return g.isChanged(); });
}

GltfParts rewriteGltf(const Document& document, const GltfPayload& payload)
{
    GltfEdit edit(payload.json, payload.buffers);
    for (const VertexPool& pool : changedPools(document, payload, edit.model()))
        PoolWriter(edit, pool, splitVertices(pool, edit.model())).write();
    return edit.finish();
}

} // namespace uvtool
