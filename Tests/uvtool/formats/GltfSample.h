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

    /// An accessor over a view of its own. `dimension` values make an element.
    template <class T>
    std::size_t add(int componentType, std::size_t dimension, const std::vector<T>& values,
                    bool isNormalized = false)
    {
        static constexpr std::array types{"SCALAR", "VEC2", "VEC3", "VEC4"};
        Json accessor{{"bufferView", addView(packed(values))},
                      {"componentType", componentType},
                      {"count", values.size() / dimension},
                      {"type", types[dimension - 1]}};
        if (isNormalized)
            accessor["normalized"] = true;
        return addAccessor(accessor);
    }

    Json& addMesh(const std::string& name, const Json& primitives)
    {
        json["meshes"].push_back({{"name", name}, {"primitives", primitives}});
        return json["meshes"].back();
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

/// A flat square of 3 by 3 vertices and 8 triangles, numbered row by row from below:
///   6-7-8
///   |/|/|
///   3-4-5
///   |/|/|
///   0-1-2
struct SquareArrays
{
    std::vector<float> positions;
    std::vector<float> normals;
    std::vector<float> uvs; ///< as they stand in the file
    std::vector<std::uint8_t> indices;

    SquareArrays()
    {
        for (int vertex = 0; vertex < 9; ++vertex) {
            const int row = vertex / 3;
            const auto x = static_cast<float>(vertex - 3 * row);
            const auto y = static_cast<float>(row);
            positions.insert(positions.end(), {x, y, 0});
            normals.insert(normals.end(), {0, 0, 1});
            uvs.insert(uvs.end(), {x / 3 + 0.1F, 0.9F - y / 3});
        }
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
    for (std::size_t v = 0; v < 9; ++v) {
        interleaved.insert(interleaved.end(), &square.positions[3 * v],
                           &square.positions[3 * v] + 3);
        interleaved.insert(interleaved.end(), &square.normals[3 * v], &square.normals[3 * v] + 3);
    }
    const std::size_t view = sample.addView(GltfSample::packed(interleaved), 24);
    Json positions{{"bufferView", view},
                   {"componentType", GltfSample::floatType},
                   {"count", 9},
                   {"type", "VEC3"},
                   {"min", {0.0, 0.0, 0.0}},
                   {"max", {2.0, 2.0, 0.0}}};
    Json normals{{"bufferView", view}, {"byteOffset", 12}, {"componentType", GltfSample::floatType},
                 {"count", 9},         {"type", "VEC3"},   {"name", "normals"}};
    Json attributes{{"POSITION", sample.addAccessor(positions)},
                    {"NORMAL", sample.addAccessor(normals)}};
    attributes["TEXCOORD_0"] = sample.add(GltfSample::floatType, 2, square.uvs);
    std::vector<std::uint16_t> second;
    std::vector<std::uint8_t> colors;
    std::vector<std::uint8_t> joints;
    std::vector<float> weights;
    std::vector<std::int8_t> odd;
    for (int v = 0; v < 9; ++v) {
        second.insert(second.end(), {static_cast<std::uint16_t>(7000 * v), 65535});
        for (int k = 0; k < 4; ++k) {
            colors.push_back(static_cast<std::uint8_t>(20 * v + k));
            joints.push_back(static_cast<std::uint8_t>(k == 0 ? v % 2 : 0));
            weights.push_back(k == 0 ? 1.0F : 0.0F);
        }
        for (int k = 0; k < 3; ++k)
            odd.push_back(static_cast<std::int8_t>(v - k));
    }
    attributes["TEXCOORD_1"] = sample.add(GltfSample::unsignedShortType, 2, second, true);
    attributes["COLOR_0"] = sample.add(GltfSample::unsignedByteType, 4, colors, true);
    attributes["JOINTS_0"] = sample.add(GltfSample::unsignedByteType, 4, joints);
    attributes["WEIGHTS_0"] = sample.add(GltfSample::floatType, 4, weights);

    // Three bytes an element, so that a stride keeps them apart.
    std::string padded;
    for (std::size_t v = 0; v < 9; ++v)
        padded += GltfSample::packed(
            std::vector<std::int8_t>{odd[3 * v], odd[3 * v + 1], odd[3 * v + 2], std::int8_t{99}});
    attributes["_ODD"] = sample.addAccessor({{"bufferView", sample.addView(padded, 4)},
                                             {"componentType", GltfSample::byteType},
                                             {"count", 9},
                                             {"type", "VEC3"}});

    const std::size_t where = sample.addView(GltfSample::packed(std::vector<std::uint8_t>{2, 4}));
    const std::size_t what =
        sample.addView(GltfSample::packed(std::vector<float>{0, 0, 1, 0.5F, 0, 2}));
    const std::size_t sparse = sample.addAccessor(
        {{"componentType", GltfSample::floatType},
         {"count", 9},
         {"type", "VEC3"},
         {"sparse",
          {{"count", 2},
           {"indices", {{"bufferView", where}, {"componentType", GltfSample::unsignedByteType}}},
           {"values", {{"bufferView", what}}}}}});
    std::vector<float> moved;
    moved.reserve(27);
    for (int i = 0; i < 27; ++i)
        moved.push_back(static_cast<float>(i) / 7);
    const std::size_t dense = sample.add(GltfSample::floatType, 3, moved);
    const std::size_t indices = sample.add(GltfSample::unsignedByteType, 1, square.indices);

    Json& mesh = sample.addMesh(
        "square", Json::array({{{"attributes", attributes},
                                {"indices", indices},
                                {"material", 0},
                                {"targets", {{{"POSITION", sparse}}, {{"POSITION", dense}}}},
                                {"extensions", {{"KHR_materials_variants", {{"mappings", {1}}}}}},
                                {"extras", {{"kept", "yes"}}}}}));
    mesh["weights"] = {0.25, 0.5};
    mesh["extras"] = {{"targetNames", {"a", "b"}}};
    sample.addMesh(
        "points",
        Json::array(
            {{{"attributes",
               {{"POSITION", sample.add(GltfSample::floatType, 3, std::vector<float>{5, 5, 5})}}},
              {"mode", 0}}}));

    const std::size_t times = sample.add(GltfSample::floatType, 1, std::vector<float>{0, 1});
    const std::size_t moves =
        sample.add(GltfSample::floatType, 3, std::vector<float>{0, 0, 0, 1, 0, 0});
    sample.json["nodes"] = {
        {{"mesh", 0}, {"skin", 0}, {"translation", {10.0, 0.0, 0.0}}, {"children", {1, 2}}},
        {{"name", "bone"}, {"extras", 7}},
        {{"mesh", 1}, {"extensions", {{"EXT_unknown", {{"thing", 1.5}}}}}}};
    sample.json["scenes"] = {{{"nodes", {0}}}};
    sample.json["scene"] = 0;
    sample.json["skins"] = {{{"joints", {1, 0}}}};
    sample.json["animations"] = {
        {{"channels", {{{"sampler", 0}, {"target", {{"node", 1}, {"path", "translation"}}}}}},
         {"samplers", {{{"input", times}, {"output", moves}}}}}};
    sample.json["images"] = {
        {{"bufferView", sample.addView("\x89PNG not really an image")}, {"mimeType", "image/png"}},
        {{"uri", "missing.png"}}};
    sample.json["textures"] = {{{"source", 0}}};
    sample.json["materials"] = {
        {{"name", "red"},
         {"pbrMetallicRoughness",
          {{"baseColorFactor", {0.8, 0.1, 0.1, 1.0}}, {"baseColorTexture", {{"index", 0}}}}}}};
    sample.json["extensionsUsed"] = {"EXT_unknown"};
    sample.json["something"] = {{"nobody", "knows"}, {"numbers", {1, 2.5, 1e-7}}};
    return sample;
}
