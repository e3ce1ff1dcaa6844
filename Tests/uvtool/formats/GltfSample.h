#pragma once

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

/// A small glTF that a test builds piece by piece: JSON and one buffer.
struct GltfSample
{
    using Json = nlohmann::ordered_json;

    Json json{{"asset", {{"version", "2.0"}}},
              {"buffers", Json::array()},
              {"bufferViews", Json::array()},
              {"accessors", Json::array()},
              {"meshes", Json::array()}};
    std::string buffer;

    static constexpr int byteType = 5120;
    static constexpr int unsignedByteType = 5121;
    static constexpr int unsignedShortType = 5123;
    static constexpr int floatType = 5126;

    template <class T>
    static std::string packed(const std::vector<T>& values)
    {
        std::string bytes(values.size() * sizeof(T), '\0');
        std::memcpy(bytes.data(), values.data(), bytes.size());
        return bytes;
    }

    std::size_t addView(const std::string& bytes, std::size_t stride = 0)
    {
        buffer.resize((buffer.size() + 3) / 4 * 4, '\0');
        Json view{{"buffer", 0}, {"byteOffset", buffer.size()}, {"byteLength", bytes.size()}};
        if (stride != 0)
            view["byteStride"] = stride;
        json["bufferViews"].push_back(view);
        buffer += bytes;
        return json["bufferViews"].size() - 1;
    }

    std::size_t addAccessor(const Json& accessor)
    {
        json["accessors"].push_back(accessor);
        return json["accessors"].size() - 1;
    }

    static int typeOf(std::int8_t) { return byteType; }
    static int typeOf(std::uint8_t) { return unsignedByteType; }
    static int typeOf(std::uint16_t) { return unsignedShortType; }
    static int typeOf(float) { return floatType; }

    /// An accessor over a view of its own. `dimension` values make an element.
    template <class T>
    std::size_t add(std::size_t dimension, const std::vector<T>& values, bool isNormalized = false)
    {
        static constexpr std::array types{"SCALAR", "VEC2", "VEC3", "VEC4"};
        Json accessor{{"bufferView", addView(packed(values))},
                      {"componentType", typeOf(T())},
                      {"count", values.size() / dimension},
                      {"type", types[dimension - 1]}};
        if (isNormalized)
            accessor["normalized"] = true;
        return addAccessor(accessor);
    }

    /// A mesh of one primitive with positions, which is given back.
    Json& addMesh(const std::vector<float>& positions)
    {
        const Json primitive{{"attributes", {{"POSITION", add(3, positions)}}}};
        json["meshes"].push_back({{"name", "mesh"}, {"primitives", Json::array({primitive})}});
        return json["meshes"].back()["primitives"][0];
    }

    /// The JSON with the buffer described in it.
    Json finished() const
    {
        Json whole = json;
        whole["buffers"] = Json::array({{{"byteLength", buffer.size()}}});
        return whole;
    }

    static void addWord(std::string& bytes, std::size_t word)
    {
        for (unsigned i = 0; i < 4; ++i)
            bytes += static_cast<char>((word >> (8 * i)) & 0xFFU);
    }

    static std::string glb(std::string text, std::string binary)
    {
        text.resize((text.size() + 3) / 4 * 4, ' ');
        binary.resize((binary.size() + 3) / 4 * 4, '\0');
        std::string bytes = "glTF";
        addWord(bytes, 2);
        addWord(bytes, 28 + text.size() + binary.size());
        addWord(bytes, text.size());
        bytes += "JSON" + text;
        addWord(bytes, binary.size());
        bytes += std::string("BIN\0", 4) + binary;
        return bytes;
    }

    std::string glb() const { return glb(finished().dump(), buffer); }

    /// The text of a .gltf whose buffer is at `uri`.
    std::string gltf(const std::string& uri, int indent = 2) const
    {
        Json whole = finished();
        whole["buffers"][0]["uri"] = uri;
        return whole.dump(indent);
    }
};

/// `dimension` values for each of nine vertices.
template <class T>
std::vector<T> perVertex(int dimension, int (*value)(int vertex, int k))
{
    std::vector<T> values;
    values.reserve(std::size_t{9} * static_cast<std::size_t>(dimension));
    for (int i = 0; i < 9 * dimension; ++i)
        values.push_back(static_cast<T>(value(i / dimension, i % dimension)));
    return values;
}

/// A flat square of 3 by 3 vertices and 8 triangles, numbered row by row from below:
///   6-7-8
///   |/|/|
///   3-4-5
///   |/|/|
///   0-1-2
struct SquareArrays
{
    std::vector<float> positions = perVertex<float>(3, [](int v, int k) {
        return k == 0 ? v % 3 : k == 1 ? v / 3 : 0;
    });
    std::vector<float> uvs; ///< as they stand in the file
    std::vector<std::uint8_t> indices;

    SquareArrays()
    {
        for (std::size_t i = 0; i < positions.size(); i += 3)
            uvs.insert(uvs.end(), {positions[i] / 3 + 0.1F, 0.9F - positions[i + 1] / 3});
        for (const int corner : {0, 1, 3, 4})
            for (const int step : {0, 1, 4, 0, 4, 3})
                indices.push_back(static_cast<std::uint8_t>(corner + step));
    }
};

/// A square with one of everything that has to survive: interleaved positions and normals, two UV
/// slots, colours, skin weights, a sparse and a dense morph target, an image, an animation, points
/// in a mesh of their own, extras and unknown extensions.
inline GltfSample fullSample()
{
    using Json = GltfSample::Json;
    GltfSample sample;
    const SquareArrays square;
    std::vector<float> interleaved;
    for (std::size_t i = 0; i < square.positions.size(); i += 3) {
        interleaved.insert(interleaved.end(), &square.positions[i], &square.positions[i] + 3);
        interleaved.insert(interleaved.end(), {0, 0, 1});
    }
    sample.addView(GltfSample::packed(interleaved), 24);
    for (const char* const accessor : // 0 and 1
         {R"({"bufferView": 0, "componentType": 5126, "count": 9, "type": "VEC3",
              "min": [0.0, 0.0, 0.0], "max": [2.0, 2.0, 0.0]})",
          R"({"bufferView": 0, "byteOffset": 12, "componentType": 5126, "count": 9,
              "type": "VEC3", "name": "normals"})"})
        sample.addAccessor(Json::parse(accessor));
    sample.add(2, square.uvs);
    sample.add(2, perVertex<std::uint16_t>(2, [](int v, int k) { return k ? 65535 : 7000 * v; }),
               true);
    sample.add(4, perVertex<std::uint8_t>(4, [](int v, int k) { return 20 * v + k; }), true);
    sample.add(4, perVertex<std::uint8_t>(4, [](int v, int k) { return k ? 0 : v % 2; })); // 5
    sample.add(4, perVertex<float>(4, [](int, int k) { return k ? 0 : 1; }));
    // Three bytes an element, so that a stride keeps them apart.
    const auto odd = perVertex<std::int8_t>(4, [](int v, int k) { return k < 3 ? v - k : 99; });
    const std::size_t oddView = sample.addView(GltfSample::packed(odd), 4);
    sample.addAccessor({{"bufferView", oddView},
                        {"componentType", GltfSample::byteType},
                        {"count", 9},
                        {"type", "VEC3"}});
    const std::size_t where = sample.addView(GltfSample::packed(std::vector<std::uint8_t>{2, 4}));
    const std::size_t what =
        sample.addView(GltfSample::packed(std::vector<float>{0, 0, 1, 0.5F, 0, 2}));
    sample.addAccessor(
        {{"componentType", GltfSample::floatType},
         {"count", 9},
         {"type", "VEC3"},
         {"sparse",
          {{"count", 2},
           {"indices", {{"bufferView", where}, {"componentType", GltfSample::unsignedByteType}}},
           {"values", {{"bufferView", what}}}}}});
    sample.add(3, perVertex<float>(3, [](int v, int k) { return 3 * v + k; }));
    sample.add(1, square.indices); // 10
    sample.add(3, std::vector<float>{5, 5, 5});
    sample.add(1, std::vector<float>{0, 1});
    sample.add(3, std::vector<float>{0, 0, 0, 1, 0, 0});
    const std::size_t image = sample.addView("\x89PNG not really an image");

    sample.json.update(Json::parse(R"({
        "meshes": [
            {"name": "square", "weights": [0.25, 0.5], "extras": {"targetNames": ["a", "b"]},
             "primitives": [{"attributes": {"POSITION": 0, "NORMAL": 1, "TEXCOORD_0": 2,
                                            "TEXCOORD_1": 3, "COLOR_0": 4, "JOINTS_0": 5,
                                            "WEIGHTS_0": 6, "_ODD": 7},
                             "targets": [{"POSITION": 8}, {"POSITION": 9}],
                             "indices": 10, "material": 0, "extras": {"kept": "yes"},
                             "extensions": {"KHR_materials_variants": {"mappings": [1]}}}]},
            {"name": "points", "primitives": [{"attributes": {"POSITION": 11}, "mode": 0}]}],
        "nodes": [{"mesh": 0, "skin": 0, "translation": [10.0, 0.0, 0.0], "children": [1, 2]},
                  {"name": "bone", "extras": 7},
                  {"mesh": 1, "extensions": {"EXT_unknown": {"thing": 1.5}}}],
        "scenes": [{"nodes": [0]}],
        "scene": 0,
        "skins": [{"joints": [1, 0]}],
        "animations": [{"channels": [{"sampler": 0, "target": {"node": 1, "path": "translation"}}],
                        "samplers": [{"input": 12, "output": 13}]}],
        "images": [{"mimeType": "image/png"}, {"uri": "missing.png"}],
        "textures": [{"source": 0}],
        "materials": [{"name": "red",
                       "pbrMetallicRoughness": {"baseColorFactor": [0.8, 0.1, 0.1, 1.0],
                                                "baseColorTexture": {"index": 0}}}],
        "extensionsUsed": ["EXT_unknown"],
        "something": {"nobody": "knows", "numbers": [1, 2.5, 1e-7]}})"));
    sample.json["images"][0]["bufferView"] = image;
    return sample;
}
