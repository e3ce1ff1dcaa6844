#include "formats/gltf/PlainGltf.h"

#include "document/Box3.h"
#include "document/Transform.h"
#include "document/Vec3Math.h"
#include "mesh/CornerVertices.h"

#include <array>
#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace uvtool
{
namespace
{

/// Collects accessors over one growing buffer.
class DataWriter
{
public:
    DataWriter(Json& json, std::string& buffer) : json_(json), buffer_(buffer) {}

    template <std::size_t N>
    std::size_t addVectors(const std::vector<std::array<float, N>>& values)
    {
        static constexpr std::array types{"SCALAR", "VEC2", "VEC3", "VEC4"};
        const std::size_t accessor =
            add(GltfComponent::Float, types[N - 1], values.size(), GltfEdit::Vertices,
                encodeFloats({values[0].data(), N * values.size()}));
        return accessor;
    }

    /// The box of the positions is part of the format.
    std::size_t addPositions(const std::vector<Vec3f>& values)
    {
        const std::size_t accessor = addVectors(values);
        Box3<float> box;
        for (const Vec3f& value : values)
            box.add(value);
        json_["accessors"][accessor]["min"] = box.lo;
        json_["accessors"][accessor]["max"] = box.hi;
        return accessor;
    }

    std::size_t addIndices(const std::vector<std::uint32_t>& indices, std::size_t vertexCount)
    {
        const GltfComponent type = indexTypeFor(vertexCount, GltfComponent::UnsignedShort);
        return add(type, "SCALAR", indices.size(), GltfEdit::Indices, encodeIndices(type, indices));
    }

private:
    std::size_t add(GltfComponent component, const char* type, std::size_t count,
                    GltfEdit::Target target, const std::string& bytes)
    {
        json_["bufferViews"].push_back({{"buffer", 0},
                                        {"byteOffset", buffer_.size()},
                                        {"byteLength", bytes.size()},
                                        {"target", target}});
        buffer_ += bytes;
        buffer_.resize((buffer_.size() + 3) / 4 * 4, '\0');
        json_["accessors"].push_back({{"bufferView", json_["bufferViews"].size() - 1},
                                      {"componentType", component},
                                      {"count", count},
                                      {"type", type}});
        return json_["accessors"].size() - 1;
    }

    Json& json_;
    std::string& buffer_;
};

/// The triangles of a geometry that have one material, and their vertices.
struct MaterialPart
{
    std::vector<std::uint32_t> corners;  ///< [vertices] a polygon corner of each
    std::vector<std::uint32_t> indices;  ///< [3 * triangles] vertices
    std::vector<std::uint32_t> triangle; ///< [vertices] a triangle of each
};

std::map<std::int32_t, MaterialPart> partsByMaterial(const DocumentGeometry& geometry)
{
    const CornerVertices vertices = distinctCorners(geometry);
    std::map<std::int32_t, std::vector<std::uint32_t>> trianglesOf;
    for (std::uint32_t t = 0; t < geometry.triangleCount(); ++t) {
        const std::uint32_t polygon = geometry.polygonOfTriangle[t];
        trianglesOf[geometry.materialOfPolygon.empty() ? -1 : geometry.materialOfPolygon[polygon]]
            .push_back(t);
    }
    std::map<std::int32_t, MaterialPart> parts;
    std::vector<std::uint32_t> indexOf(vertices.vertexCount, absentIndex);
    for (const auto& [material, triangles] : trianglesOf) {
        MaterialPart& part = parts[material];
        std::vector<std::uint32_t> used;
        for (const std::uint32_t t : triangles) {
            for (std::size_t i = 3 * std::size_t{t}; i < 3 * std::size_t{t} + 3; ++i) {
                std::uint32_t& index = indexOf[vertices.vertexOfCorner[i]];
                if (index == absentIndex) {
                    index = static_cast<std::uint32_t>(part.corners.size());
                    part.corners.push_back(geometry.triangles[i]);
                    part.triangle.push_back(t);
                    used.push_back(vertices.vertexOfCorner[i]);
                }
                part.indices.push_back(index);
            }
        }
        for (const std::uint32_t vertex : used)
            indexOf[vertex] = absentIndex;
    }
    return parts;
}

/// Of length 1; upward for a triangle without an area.
Vec3f triangleNormal(const DocumentGeometry& geometry, std::size_t triangle)
{
    std::array<Vec3d, 3> p;
    for (std::size_t k = 0; k < 3; ++k)
        p[k] = geometry.positions.at(geometry.triangles[3 * triangle + k]);
    const Vec3d normal = areaNormal(p[0], p[1], p[2]);
    const double norm = length(normal);
    if (!(norm > 0) || !std::isfinite(norm))
        return {0, 0, 1};
    Vec3f unit{};
    for (std::size_t k = 0; k < 3; ++k)
        unit[k] = static_cast<float>(normal[k] / norm);
    return unit;
}

/// Values of the vertices of a part, `otherwise` for those without one.
template <class Value, class Otherwise>
std::vector<Value> gather(const CornerAttribute<Value>& attribute, const MaterialPart& part,
                          const Otherwise& otherwise)
{
    std::vector<Value> values;
    values.reserve(part.corners.size());
    for (std::size_t v = 0; v < part.corners.size(); ++v)
        values.push_back(attribute.has(part.corners[v]) ? attribute.at(part.corners[v])
                                                        : otherwise(part.triangle[v]));
    return values;
}

std::vector<Vec3f> gatherPositions(const DocumentGeometry& geometry, const MaterialPart& part)
{
    std::vector<Vec3f> positions;
    positions.reserve(part.corners.size());
    for (const std::uint32_t corner : part.corners) {
        const Vec3d& p = geometry.positions.at(corner);
        positions.push_back(
            {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])});
    }
    return positions;
}

std::vector<Vec3f> gatherNormals(const DocumentGeometry& geometry, const MaterialPart& part)
{
    return gather(geometry.normals, part,
                  [&](std::uint32_t triangle) { return triangleNormal(geometry, triangle); });
}

std::vector<Vec2f> gatherUVs(const CornerAttribute<Vec2f>& slot, const MaterialPart& part)
{
    std::vector<Vec2f> uvs = gather(slot, part, [](std::uint32_t) { return Vec2f{0, 1}; });
    for (Vec2f& uv : uvs)
        uv[1] = 1 - uv[1];
    return uvs;
}

/// The slots up to the last one that exists; the format wants them without gaps.
std::size_t usedSlots(const DocumentGeometry& geometry)
{
    std::size_t count = slotCount;
    while (count > 0 && !geometry.uvs[count - 1].exists())
        --count;
    return count;
}

Json attributesOf(const DocumentGeometry& geometry, const MaterialPart& part, DataWriter& data)
{
    Json attributes;
    attributes["POSITION"] = data.addPositions(gatherPositions(geometry, part));
    if (geometry.normals.exists())
        attributes["NORMAL"] = data.addVectors(gatherNormals(geometry, part));
    for (std::size_t slot = 0; slot < usedSlots(geometry); ++slot)
        attributes["TEXCOORD_" + std::to_string(slot)] =
            data.addVectors(gatherUVs(geometry.uvs[slot], part));
    if (geometry.colors.exists())
        attributes["COLOR_0"] = data.addVectors(gather(geometry.colors, part, [](std::uint32_t) {
            return Vec4f{1, 1, 1, 1};
        }));
    return attributes;
}

Json meshOf(const DocumentGeometry& geometry, DataWriter& data)
{
    Json mesh{{"name", geometry.name}, {"primitives", Json::array()}};
    for (const auto& [material, part] : partsByMaterial(geometry)) {
        Json primitive;
        primitive["attributes"] = attributesOf(geometry, part, data);
        primitive["indices"] = data.addIndices(part.indices, part.corners.size());
        if (material >= 0)
            primitive["material"] = material;
        mesh["primitives"].push_back(std::move(primitive));
    }
    return mesh;
}

Json nodeOf(const DocumentGeometry& geometry, std::size_t mesh)
{
    Json node{{"name", geometry.name}, {"mesh", mesh}};
    if (geometry.toWorld != SceneMatrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})
        node["matrix"] = geometry.toWorld;
    return node;
}

Json materialOf(const DocumentMaterial& material)
{
    return {{"name", material.name},
            {"pbrMetallicRoughness",
             {{"baseColorFactor", material.color}, {"metallicFactor", 0}, {"roughnessFactor", 1}}}};
}

} // namespace

GltfParts plainGltf(const Document& document)
{
    GltfParts parts;
    Json& json = parts.json;
    json["asset"] = {{"version", "2.0"}, {"generator", "uvtool"}};
    json["scene"] = 0;
    json["scenes"] = Json::array({{{"nodes", Json::array()}}});
    for (const char* const key : {"nodes", "meshes", "accessors", "bufferViews"})
        json[key] = Json::array();
    std::string buffer;
    DataWriter data(json, buffer);
    for (const DocumentGeometry& geometry : document.geometries) {
        if (geometry.triangleCount() == 0)
            continue;
        json["scenes"][0]["nodes"].push_back(json["nodes"].size());
        json["nodes"].push_back(nodeOf(geometry, json["meshes"].size()));
        json["meshes"].push_back(meshOf(geometry, data));
    }
    for (const DocumentMaterial& material : document.materials)
        json["materials"].push_back(materialOf(material));
    json["buffers"] = Json::array({{{"byteLength", buffer.size()}}});
    parts.buffers.push_back(std::move(buffer));
    parts.isChanged.push_back(true);
    return parts;
}

} // namespace uvtool
