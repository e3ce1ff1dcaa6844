#include "uvtool/Refusals.h"
#include "uvtool/SlotValuesFor.h"
#include "uvtool/TempFolder.h"
#include "uvtool/formats/GltfCorners.h"
#include "uvtool/formats/GltfSample.h"

#include "document/FileError.h"
#include "document/Transform.h"
#include "formats/gltf/GltfFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using Json = GltfSample::Json;
using testing::HasSubstr;

/// The JSON of a binary glTF.
Json jsonOf(const std::string& glb)
{
    std::uint32_t length = 0;
    std::memcpy(&length, &glb[12], 4);
    return Json::parse(glb.substr(20, length));
}

/// A square with positions, UVs and indices only.
GltfSample plainSquare()
{
    GltfSample sample;
    const SquareArrays square;
    Json& primitive = sample.addMesh(square.positions);
    primitive["attributes"]["TEXCOORD_0"] = sample.add(2, square.uvs);
    primitive["indices"] = sample.add(1, square.indices);
    return sample;
}

/// A triangle without indices. Its positions are zeros, or stand elsewhere.
GltfSample triangleOf(const std::vector<float>& positions = std::vector<float>(9))
{
    GltfSample sample;
    sample.addMesh(positions);
    return sample;
}

/// (0,0,0) (1,0,0) (0,1,0)
const std::string embedded = "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA";

class Gltf : public testing::Test
{
protected:
    Document read(const GltfSample& sample) const
    {
        return readGltf(folder.write("in.glb", sample.glb()));
    }
    /// The JSON of what is written to out.glb.
    Json write(const Document& document) const
    {
        writeGltf(document, folder / "out.glb");
        return jsonOf(bytesOf(folder / "out.glb"));
    }
    tinygltf::Model load(const char* name) const
    {
        return gltfCorners::load((folder / name).string());
    }
    /// Every attribute and morph target of the first primitive, at its triangle corners.
    std::map<std::string, std::vector<std::string>> cornersOf(const char* name) const
    {
        const tinygltf::Model model = load(name);
        const tinygltf::Primitive& primitive = model.meshes[0].primitives[0];
        std::map<std::string, std::vector<std::string>> all;
        for (const auto& [semantic, accessor] : primitive.attributes)
            all[semantic] = gltfCorners::atCorners(model, primitive, accessor);
        for (std::size_t t = 0; t < primitive.targets.size(); ++t)
            for (const auto& [semantic, accessor] : primitive.targets[t])
                all["target " + std::to_string(t) + semantic] =
                    gltfCorners::atCorners(model, primitive, accessor);
        return all;
    }
    static void splitAll(Document& document, unsigned slot = 0)
    {
        writeSlot(document.geometries[0], slot, ownValueForEachCorner(document.geometries[0]));
    }

    const TempFolder folder;
};

TEST_F(Gltf, ReadsWhatTheDocumentCanHold)
{
    const Document document = read(fullSample());
    ASSERT_EQ(document.geometries.size(), 1U);
    const DocumentGeometry& geometry = document.geometries[0];
    EXPECT_EQ(geometry.name, "square");
    EXPECT_EQ(geometry.triangleCount(), 8U);
    EXPECT_EQ(geometry.positions.at(2), (Vec3d{1, 1, 0}));
    EXPECT_EQ(geometry.normals.at(2), (Vec3f{0, 0, 1}));
    EXPECT_EQ(geometry.uvs[0].at(0), (Vec2f{0.1F, 1 - 0.9F}));
    EXPECT_EQ(geometry.uvs[1].at(1), (Vec2f{static_cast<float>(7000.0 / 65535), 0}));
    EXPECT_FALSE(geometry.uvs[2].exists());
    EXPECT_FLOAT_EQ(geometry.colors.at(1)[2], 22.0F / 255);
    ASSERT_EQ(document.materials.size(), 1U);
    EXPECT_EQ(document.materials[0].name, "red");
    EXPECT_EQ(document.materials[0].color, (Vec4f{0.8F, 0.1F, 0.1F, 1}));
    EXPECT_EQ(geometry.materialOfPolygon, std::vector<std::int32_t>(8, 0));
    EXPECT_EQ(toScene(geometry.toWorld, {1, 2, 3}), (Vec3d{11, 2, 3}));
}

TEST_F(Gltf, UnchangedFilesComeBackByteForByte)
{
    const GltfSample sample = fullSample();
    std::filesystem::create_directory(folder / "other");
    folder.write("data file.bin", sample.buffer);
    std::string extra = sample.glb();
    extra += std::string("\4\0\0\0SOMEdata", 12);
    std::string length;
    GltfSample::addWord(length, extra.size());
    extra.replace(8, 4, length);

    const struct
    {
        const char* name;
        std::string bytes;
    } cases[] = {{"binary.glb", sample.glb()},
                 {"parts.glb", extra},
                 {"lines.glb", GltfSample::glb(sample.finished().dump(1, '\t'), sample.buffer)},
                 {"pretty.gltf", sample.gltf("data%20file.bin")},
                 {"dense.gltf", sample.gltf("data%20file.bin", -1)},
                 {"embedded.gltf",
                  triangleOf().gltf("data:application/octet-stream;base64," + embedded, 4) + "\n"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Document document = readGltf(folder.write(c.name, c.bytes));
        for (const char* const target : {"copy_", "other/"}) {
            const std::filesystem::path path = folder / (target + std::string(c.name));
            writeGltf(document, path);
            EXPECT_EQ(bytesOf(path), c.bytes) << target;
        }
    }
    EXPECT_EQ(bytesOf(folder / "other/data file.bin"), sample.buffer);
}

TEST_F(Gltf, SplitVerticesTakeAllTheirAttributesAlong)
{
    Document document = read(fullSample());
    splitAll(document);
    const Json json = write(document);

    auto before = cornersOf("in.glb");
    auto after = cornersOf("out.glb");
    for (std::size_t i = 0; i < 24; ++i) {
        const std::vector<float> uv{static_cast<float>(i), 0.5F};
        EXPECT_EQ(after["TEXCOORD_0"][i], GltfSample::packed(uv));
    }
    before.erase("TEXCOORD_0");
    after.erase("TEXCOORD_0");
    EXPECT_EQ(before.size(), 9U);
    EXPECT_EQ(after, before);

    // Everything else is as it was; the morph target is still sparse and its number the same.
    const Json& old = fullSample().json;
    for (const char* const key : {"nodes", "scenes", "scene", "skins", "animations", "materials",
                                  "textures", "something", "extensionsUsed", "images", "meshes"})
        EXPECT_EQ(json[key], old[key]) << key;
    EXPECT_EQ(json["accessors"].size(), old["accessors"].size());
    EXPECT_EQ(json["accessors"][0]["max"], old["accessors"][0]["max"]);
    EXPECT_EQ(json["accessors"][1]["name"], "normals");
    EXPECT_TRUE(json["accessors"][8].contains("sparse"));
    const auto movedBytes = [&](const char* name) {
        const tinygltf::Model model = load(name);
        const int view = model.images[0].bufferView;
        const auto length = model.bufferViews[static_cast<std::size_t>(view)].byteLength;
        const unsigned char* const image = gltfCorners::bytesAt(model, view, 0);
        return std::pair(std::string(image, image + length),
                         gltfCorners::elements(model, model.animations[0].samplers[0].output));
    };
    EXPECT_EQ(movedBytes("out.glb"), movedBytes("in.glb"));

    // Nothing that was replaced is left over: each byte belongs to a view, or fills up four.
    std::size_t inViews = 0;
    for (const Json& view : json["bufferViews"])
        inViews += (view["byteLength"].get<std::size_t>() + 3) / 4 * 4;
    EXPECT_LE(json["buffers"][0]["byteLength"].get<std::size_t>(), inViews);
}

TEST_F(Gltf, UVsThatSplitNothingChangeTheirSlotOnly)
{
    Document document = read(fullSample());
    const std::size_t sizeBefore = bytesOf(folder / "in.glb").size();
    writeSlot(document.geometries[0], 0, valueForEachPosition(document.geometries[0]));
    write(document);
    const std::size_t sizeAfter = bytesOf(folder / "out.glb").size();
    EXPECT_LE(sizeAfter, sizeBefore + 64);
    auto before = cornersOf("in.glb");
    auto after = cornersOf("out.glb");
    EXPECT_NE(after["TEXCOORD_0"], before["TEXCOORD_0"]);
    EXPECT_EQ(after["TEXCOORD_0"][1], GltfSample::packed(std::vector<float>{0.125F, 1 - 1.0F}));
    before.erase("TEXCOORD_0");
    after.erase("TEXCOORD_0");
    EXPECT_EQ(after, before);
    EXPECT_EQ(load("out.glb").accessors[0].count, 9U);

    // A second round doesn't grow the file.
    Document again = readGltf(folder / "out.glb");
    writeSlot(again.geometries[0], 0, valueForEachPosition(again.geometries[0]));
    write(again);
    EXPECT_EQ(bytesOf(folder / "out.glb").size(), sizeAfter);
}

TEST_F(Gltf, CornersWithoutANewValueKeepTheirBits)
{
    Document document = read(plainSquare());
    SlotValues uvs = ownValueForEachCorner(document.geometries[0]);
    for (std::size_t i = 3; i < uvs.ofTriangleCorner.size(); ++i)
        uvs.ofTriangleCorner[i] = absentIndex;
    writeSlot(document.geometries[0], 0, uvs);
    write(document);
    const auto before = cornersOf("in.glb")["TEXCOORD_0"];
    const auto after = cornersOf("out.glb")["TEXCOORD_0"];
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(after[i] == before[i], i >= 3) << i;
}

TEST_F(Gltf, StripsAndFansAreTriangles)
{
    const std::vector<float> positions{0, 0, 0, 1, 0, 0, 2, 1, 0, 3, 1, 0, 4, 2, 0};
    const struct
    {
        int mode;
        std::vector<std::uint16_t> indices; ///< empty for none
        std::vector<double> expected;       ///< of the corners, as x tells them
    } cases[] = {
        {4, {0, 1, 2, 2, 1, 3}, {0, 1, 2, 2, 1, 3}},
        {4, {0, 1, 2, 3}, {0, 1, 2}},
        {5, {0, 1, 2, 3, 4}, {0, 1, 2, 1, 3, 2, 2, 3, 4}},
        {5, {}, {0, 1, 2, 1, 3, 2, 2, 3, 4}},
        {6, {0, 1, 3, 2}, {1, 3, 0, 3, 2, 0}},
        {6, {}, {1, 2, 0, 2, 3, 0, 3, 4, 0}},
    };
    const auto corners = [](const Document& document) {
        std::vector<double> xs;
        for (const std::uint32_t corner : document.geometries[0].triangles)
            xs.push_back(document.geometries[0].positions.at(corner)[0]);
        return xs;
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        GltfSample sample;
        Json& primitive = sample.addMesh(positions);
        primitive["mode"] = c.mode;
        if (!c.indices.empty())
            primitive["indices"] = sample.add(1, c.indices);
        Document document = read(sample);
        EXPECT_EQ(corners(document), c.expected);
        splitAll(document);
        EXPECT_EQ(write(document)["meshes"][0]["primitives"][0].value("mode", 4), 4);
        EXPECT_EQ(corners(readGltf(folder / "out.glb")), c.expected);
    }
}

TEST_F(Gltf, IndicesGrowWithTheVertices)
{
    GltfSample sample;
    std::vector<std::uint8_t> indices;
    for (unsigned i = 0; i < 3 * 198; ++i)
        indices.push_back(static_cast<std::uint8_t>(i / 3 + i % 3));
    sample.addMesh(std::vector<float>(std::size_t{3} * 200))["indices"] = sample.add(1, indices);
    Document document = read(sample);
    splitAll(document);
    const Json json = write(document);
    EXPECT_EQ(json["accessors"][0]["componentType"], GltfSample::unsignedShortType);
    EXPECT_EQ(json["accessors"][1]["count"], indices.size());
    EXPECT_EQ(readGltf(folder / "out.glb").geometries[0].triangleCount(), 198U);
}

TEST_F(Gltf, PrimitivesThatShareVerticesKeepTheirs)
{
    // Two primitives over the same accessors, a third one over the same positions without UVs, and
    // points.
    GltfSample sample = plainSquare();
    Json& primitives = sample.json["meshes"][0]["primitives"];
    Json second = primitives[0];
    second["indices"] = sample.add(1, std::vector<std::uint8_t>{0, 4, 3, 1, 5, 4});
    primitives.push_back(second);
    Json third = second;
    third["attributes"].erase("TEXCOORD_0");
    Json points = primitives[0];
    points["mode"] = 0;
    points.erase("indices");
    for (const std::vector<Json>& more : {std::vector<Json>{}, {third}, {points}, {third, points}})
    {
        GltfSample shared = sample;
        for (const Json& primitive : more)
            shared.json["meshes"][0]["primitives"].push_back(primitive);
        Document document = read(shared);
        splitAll(document);
        write(document);

        const tinygltf::Model before = load("in.glb");
        const tinygltf::Model after = load("out.glb");
        for (std::size_t p = 0; p < before.meshes[0].primitives.size(); ++p) {
            const tinygltf::Primitive& old = before.meshes[0].primitives[p];
            const tinygltf::Primitive& now = after.meshes[0].primitives[p];
            for (const auto& [semantic, accessor] : old.attributes) {
                if (old.indices < 0) {
                    // The points of the file come first; repeated vertices may follow.
                    auto elements = gltfCorners::elements(after, now.attributes.at(semantic));
                    elements.resize(9);
                    EXPECT_EQ(elements, gltfCorners::elements(before, accessor));
                } else if (p > 0 || semantic == "POSITION") {
                    EXPECT_EQ(gltfCorners::atCorners(after, now, now.attributes.at(semantic)),
                              gltfCorners::atCorners(before, old, accessor))
                        << semantic << ' ' << p;
                }
            }
        }
    }
}

TEST_F(Gltf, NewSlotsComeWithThoseBelowThemAndPartFromWhatTheyShared)
{
    GltfSample sample = plainSquare();
    Json& attributes = sample.json["meshes"][0]["primitives"][0]["attributes"];
    attributes["TEXCOORD_1"] = attributes["TEXCOORD_0"];
    for (const unsigned slot : {1U, 4U}) {
        Document document = read(sample);
        splitAll(document, slot);
        write(document);
        const auto corners = cornersOf("out.glb");
        EXPECT_EQ(corners.at("TEXCOORD_0"), cornersOf("in.glb")["TEXCOORD_0"]);
        EXPECT_EQ(corners.at("TEXCOORD_" + std::to_string(slot))[7],
                  GltfSample::packed(std::vector<float>{7, 0.5F}));
        if (slot > 1) {
            EXPECT_EQ(corners.at("TEXCOORD_2"), std::vector<std::string>(24, std::string(8, '\0')));
        }
    }
}

TEST_F(Gltf, ToWorldIsTheFirstNodeThatShowsTheMesh)
{
    GltfSample sample = plainSquare();
    // A quarter turn about z, then twice as large, then moved; below a node that moves by (0 0 5).
    const double h = std::sqrt(0.5);
    sample.json["nodes"] = {{{"mesh", 0}},
                            {{"translation", {0, 0, 5}}, {"children", {2}}},
                            {{"mesh", 0},
                             {"rotation", {0, 0, h, h}},
                             {"scale", {2, 2, 2}},
                             {"translation", {1, 0, 0}}}};
    sample.json["scenes"] = {{{"nodes", {0}}}, {{"nodes", {1, 0}}}};
    sample.json["scene"] = 1;
    const Document document = read(sample);
    const Vec3d there = toScene(document.geometries[0].toWorld, {1, 0, 0});
    EXPECT_NEAR(there[0], 1, 1e-12);
    EXPECT_NEAR(there[1], 2, 1e-12);
    EXPECT_NEAR(there[2], 5, 1e-12);
}

TEST_F(Gltf, GoesFromTextToBinaryAndBack)
{
    GltfSample sample = fullSample();
    sample.json["images"].push_back({{"uri", "pictures/a%20b.png"}});
    folder.write("data.bin", sample.buffer);
    std::filesystem::create_directories(folder / "pictures");
    folder.write("pictures/a b.png", "\x89PNG bytes");
    Document document = readGltf(folder.write("in.gltf", sample.gltf("data.bin")));

    std::filesystem::create_directory(folder / "out");
    writeGltf(document, folder / "out/all.glb");
    EXPECT_EQ(cornersOf("out/all.glb"), cornersOf("in.gltf"));
    const Json json = jsonOf(bytesOf(folder / "out/all.glb"));
    EXPECT_EQ(json["images"][2]["mimeType"], "image/png");
    EXPECT_FALSE(json["images"][2].contains("uri"));
    EXPECT_EQ(json["images"][1]["uri"], "missing.png");
    EXPECT_THAT(bytesOf(folder / "out/all.glb"), HasSubstr("\x89PNG bytes"));

    writeGltf(readGltf(folder / "out/all.glb"), folder / "out/text.gltf");
    EXPECT_EQ(cornersOf("out/text.gltf"), cornersOf("in.gltf"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/text.bin"));

    splitAll(document);
    writeGltf(document, folder / "changed.gltf");
    EXPECT_EQ(bytesOf(folder / "data.bin"), sample.buffer) << "another file may use it";
    writeGltf(document, folder / "out/changed.gltf");
    EXPECT_EQ(cornersOf("changed.gltf"), cornersOf("out/changed.gltf"));
    EXPECT_EQ(bytesOf(folder / "out/pictures/a b.png"), "\x89PNG bytes");
}

TEST_F(Gltf, EmbeddedDataStaysEmbedded)
{
    const std::string uri = "data:application/gltf-buffer;base64,";
    Document document = readGltf(folder.write("in.gltf", triangleOf().gltf(uri + embedded)));
    EXPECT_EQ(document.geometries[0].positions.at(2), (Vec3d{0, 1, 0}));
    splitAll(document);
    writeGltf(document, folder / "out.gltf");
    EXPECT_THAT(bytesOf(folder / "out.gltf"), HasSubstr(uri + "AAAA"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out.bin"));
    EXPECT_EQ(readGltf(folder / "out.gltf").geometries[0].uvs[0].at(1), (Vec2f{1, 0.5F}));
}

TEST_F(Gltf, BadFilesAreRefusedNamingThePlace)
{
    const GltfSample square = plainSquare();
    const std::string good = square.glb();
    const std::string deep =
        "{\"asset\":{\"version\":\"2.0\"},\"extras\":" + std::string(100000, '[') +
        std::string(100000, ']') + "}";
    const struct
    {
        const char* name;
        std::string bytes;
        const char* message;
    } cases[] = {
        {"empty.glb", "", "is no binary glTF"},
        {"text.glb", square.gltf("a.bin"), "is no binary glTF (is it a text"},
        {"cut.glb", good.substr(0, good.size() - 20), "is cut off"},
        {"first.glb", "glTF\1" + good.substr(5), "of version 1;"},
        {"chunk.glb", good.substr(0, 12) + "\xFF\xFF\xFF\x7F" + good.substr(16), "is damaged"},
        {"type.glb", good.substr(0, 16) + "JSOM" + good.substr(20), "without its JSON part"},
        {"words.gltf", "Once upon a time", "not valid JSON at line 1, column 1"},
        {"list.gltf", "[1]", "the JSON is no object"},
        {"other.gltf", "{}", "has no \"asset\""},
        {"deep.gltf", deep, "more than 200 levels"},
        {"huge.gltf", "{\"a\":1e999}", "a number that is too large"},
        {"old.gltf", "{\"asset\":{\"version\":\"1.0\"}}", "of version \"1.0\""},
        {"nothing.gltf", "{\"asset\":{\"version\":\"2.0\"}}", "holds no triangles"},
        {"missing.gltf", square.gltf("missing.bin"), "buffer 0 is in another file: "},
        {"web.gltf", square.gltf("https://example.com/a.bin"), "is not beside the file"},
        {"device.gltf", square.gltf("../../../../../../../../dev/zero"), "which is no file"},
        {"base64.gltf", square.gltf("data:;base64,A*A="), "damaged base64"},
        {"short.gltf", square.gltf("data:;base64,AAAA"), "buffer 0 should have"},
        {"nouri.gltf", square.finished().dump(), "buffer 0 has no data"},
        {"nan.glb", triangleOf({0, 0, 0, 1, 0, 0, 0, std::nanf(""), 0}).glb(),
         "a POSITION that isn't finite at vertex 2"},
    };
    for (const auto& c : cases)
        expectRefused(folder.write(c.name, c.bytes), c.message);

    const struct
    {
        const char* place;
        const char* value;
        const char* message;
    } damages[] = {
        {"/bufferViews/0/buffer", "1", "buffer view 0 has the buffer 1"},
        {"/bufferViews/0/byteLength", "100000", "buffer view 0 reaches over"},
        {"/bufferViews/0/byteOffset", "-4", "no whole number from 0"},
        {"/bufferViews/0/byteStride", "8", "larger than the stride"},
        {"/bufferViews/0/extensions", R"({"EXT_meshopt_compression": {}})",
         "is compressed with EXT_meshopt_compression"},
        {"/accessors/0/count", "4294967294", "accessor 0 reaches over the end"},
        {"/accessors/0/count", "1e15", "accessor 0 has 1000000000000000 elements"},
        {"/accessors/0/count", "5", "index 8 but only 5 vertices"},
        {"/accessors/1/count", "8", "has 9 vertices but 8 of TEXCOORD_0"},
        {"/accessors/0/byteOffset", "18446744073709551615", "accessor 0 has a"},
        {"/accessors/0/componentType", "5124", "unknown componentType 5124"},
        {"/accessors/0/type", R"("VEC9")", "unknown type \"VEC9\""},
        {"/accessors/0/type", R"("VEC2")", "a POSITION with 2 components"},
        {"/accessors/0", R"({"componentType": 5126, "count": 9, "type": "VEC3"})",
         "a POSITION without data"},
        {"/meshes/0/primitives/0/indices", "1", "indices of a wrong kind"},
        {"/meshes/0/primitives/0/indices", "9", "has the indices 9, which is not"},
        {"/meshes/0/primitives/0/attributes/NORMAL", "7",
         "mesh 0, primitive 0, attributes has the NORMAL 7"},
        {"/meshes/0/primitives/0/mode", "7", "unknown mode 7"},
        {"/meshes/0/primitives/0/material", "0", "the material 0, which is not"},
        {"/meshes/0/primitives/0/extensions", R"({"KHR_draco_mesh_compression": {}})",
         "is compressed with KHR_draco_mesh_compression"},
        {"/extensionsRequired", R"(["KHR_draco_mesh_compression"])",
         "is compressed with KHR_draco_mesh_compression"},
        {"/nodes", R"([{"children": [1]}, {"children": [0]}])", "its own ancestor"},
        {"/nodes", R"([{"children": [1, 1]}, {}])", "two parents"},
        {"/nodes", R"([{"mesh": 0, "matrix": [1, 2]}])", "no list of 16 numbers"},
        {"/nodes",
         R"([{"scale": [1e200, 1, 1], "children": [1]}, {"scale": [1e200, 1, 1], "mesh": 0}])",
         "a place that isn't finite"},
    };
    for (const auto& damage : damages) {
        GltfSample sample = square;
        sample.json[Json::json_pointer(damage.place)] = Json::parse(damage.value);
        expectRefused(folder.write("damaged.glb", sample.glb()), damage.message);
    }
}

TEST_F(Gltf, FailedWriteLeavesTheOldFiles)
{
    const GltfSample sample = plainSquare();
    folder.write("data.bin", sample.buffer);
    Document document = readGltf(folder.write("in.gltf", sample.gltf("data.bin")));
    splitAll(document);
    folder.write("out.gltf", "old");
    std::filesystem::create_directory(folder / "out.bin");
    EXPECT_THROW(writeGltf(document, folder / "out.gltf"), FileError);
    EXPECT_EQ(bytesOf(folder / "out.gltf"), "old");
    EXPECT_THROW(writeGltf(document, folder / "no/such/folder.glb"), FileError);
    EXPECT_THROW(writeGltf(document, "/dev/full"), FileError);
}

} // namespace
