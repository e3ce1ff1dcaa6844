#pragma once

#include "document/Document.h"
#include "formats/gltf/GltfModel.h"
#include "formats/gltf/GltfPayload.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace uvtool
{

/// Primitives that name the very same attributes and morph targets, and so share their vertices.
struct VertexPool
{
    struct Member
    {
        std::size_t mesh = 0;
        std::size_t number = 0;
        const GltfPayload::Primitive* primitive = nullptr; ///< null for one without triangles
        const DocumentGeometry* changed = nullptr;         ///< null when nothing was changed
    };

    GltfAttributes attributes;
    std::vector<GltfAttributes> targets;
    std::vector<Member> members;
    std::bitset<slotCount> changedSlots; ///< of any member
    std::size_t vertexCount = 0;         ///< 0 when no member was changed
};

/// The name of a UV slot in a primitive.
std::string semanticOf(std::size_t slot);

/// The accessor of a UV slot, if there is one.
std::optional<std::size_t> accessorOf(const GltfAttributes& attributes, std::size_t slot);

/// The pools with a changed member, in the order of the file.
std::vector<VertexPool> changedPools(const Document& document, const GltfPayload& payload,
                                     const GltfModel& model);

/// The vertices that a pool needs for its new UVs and parted corners. Old ones keep their numbers,
/// also where nothing uses them; a vertex that gets several UVs, or whose corners were parted, is
/// repeated behind them.
struct PoolVertices
{
    std::vector<std::uint32_t>
        source; ///< [new vertices] the old vertex; its own number for old ones
    std::array<std::vector<Vec2f>, slotCount> uvs; ///< of changed slots, as they go into the file
    std::vector<std::vector<std::uint32_t>>
        corners; ///< by member: vertices of the triangle corners; empty for unchanged ones
};

/// Vertices that unchanged members use keep their UVs, as do those that no command gave new ones.
PoolVertices splitVertices(const VertexPool& pool, const GltfModel& model);

} // namespace uvtool
