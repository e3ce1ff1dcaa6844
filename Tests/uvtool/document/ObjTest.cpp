#include "uvtool/Refusals.h"
#include "uvtool/SlotValuesFor.h"
#include "uvtool/TempFolder.h"

#include "document/FileError.h"
#include "formats/obj/ObjFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tiny_obj_loader.h>

#include <algorithm>

namespace
{

using namespace uvtool;
using testing::HasSubstr;

const char* const twoTriangles = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";
const char* const oneQuad = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt .5 0.50\nf 1 2 3 4\n";

class Obj : public testing::Test
{
protected:
    Document read(const std::string& text) const { return readObj(folder.write("in.obj", text)); }
    std::string written(const Document& document) const
    {
        writeObj(document, folder / "out.obj");
        return bytesOf(folder / "out.obj");
    }
    /// The text once polygon corners that share a position share a UV.
    std::string writtenWithNewUVs(const std::string& text) const
    {
        Document document = read(text);
        DocumentGeometry& geometry = document.geometries[0];
        EXPECT_EQ(writeSlot(geometry, 0, valueForEachPosition(geometry)), 0U);
        return written(document);
    }

    const TempFolder folder;
};

TEST_F(Obj, UnchangedTextComesBackByteForByte)
{
    const std::string corners = "v 0 0 0 1 0 0\nv 1.00 0 0 0 1 0\nv 1e0 1 0 0 0 1\n";
    const char* const rest[] = {
        "f 1 2 3",
        "# a comment with \\ and a path C:\\\n\no part\ng side\nusemtl #1\ns off\nf 1 2 3\n\n",
        "vt 0.10 0.20 0\nvn 0 0 1\nf 1/1/1 2/1/1 3/1/1 # end\r\n\r\nl 1 2\n",
        "vt 0 0\nvn 0 0 1\nf -3//-1 -2//-1 -1//-1\nf 1/-1 2 3/1\n",
        "f 1 \\\n 2 \\\r\n 3\nunknown statement\n\tf 3 2 1   \n",
    };
    for (const char* const text : rest) {
        SCOPED_TRACE(text);
        EXPECT_EQ(written(read(corners + text)), corners + text);
    }
}

TEST_F(Obj, SharedMeshesComeBackByteForByte)
{
    int seen = 0;
    for (const char* const name : {"spot.obj", "race_car.obj", "sword_quads.obj", "motor.obj"}) {
        const std::filesystem::path path = std::filesystem::path(KYUV_MESHES) / name;
        if (!std::filesystem::exists(path))
            continue;
        ++seen;
        EXPECT_EQ(written(readObj(path)), bytesOf(path)) << name;
    }
    if (seen == 0)
        GTEST_SKIP() << "no meshes in " KYUV_MESHES;
}

TEST_F(Obj, CornersAgreeWithAnIndependentReader)
{
    for (const char* const name : {"spot.obj", "milk_truck.obj", "sword_quads.obj"}) {
        const std::filesystem::path path = std::filesystem::path(KYUV_MESHES) / name;
        if (!std::filesystem::exists(path))
            GTEST_SKIP() << "no meshes in " KYUV_MESHES;
        tinyobj::ObjReaderConfig config;
        config.triangulate = false;
        tinyobj::ObjReader theirs;
        ASSERT_TRUE(theirs.ParseFromFile(path.string(), config));

        std::vector<double> expected;
        for (const tinyobj::shape_t& shape : theirs.GetShapes()) {
            for (const tinyobj::index_t& index : shape.mesh.indices) {
                const tinyobj::real_t* position =
                    &theirs.GetAttrib().vertices[3 * static_cast<std::size_t>(index.vertex_index)];
                expected.insert(expected.end(), position, position + 3);
            }
        }
        std::vector<double> actual;
        for (const DocumentGeometry& geometry : readObj(path).geometries) {
            for (std::size_t c = 0; c < geometry.cornerCount(); ++c) {
                for (const double x : geometry.positions.at(c))
                    actual.push_back(x);
            }
        }
        ASSERT_EQ(actual.size(), expected.size()) << name;
        double worst = 0;
        for (std::size_t i = 0; i < actual.size(); ++i)
            worst = std::max(worst, std::abs(actual[i] - expected[i]));
        EXPECT_LT(worst, 1e-12) << name;
    }
}

TEST_F(Obj, EachObjectWithFacesIsAGeometry)
{
    const Document document =
        read(std::string(twoTriangles) + "f 1 2 3\no empty\no second part\nf 4 2 1\n"
                                         "g group\nf 1 2 3 4\n");
    ASSERT_EQ(document.geometries.size(), 2U);
    EXPECT_EQ(document.geometries[0].name, "in");
    EXPECT_EQ(document.geometries[1].name, "second part");
    EXPECT_EQ(document.geometries[1].polygonCount(), 2U);
    EXPECT_EQ(document.geometries[1].triangleCount(), 3U);
    EXPECT_EQ(document.geometries[1].positions.at(0), (Vec3d{0, 1, 0}));
}

TEST_F(Obj, ColorsAndMissingUVsStayWithTheirCorners)
{
    const Document document = read("v 0 0 0 1 0.5 0\nv 1 0 0\nv 1 1 0 0 0 1\nvt 0.25 1\n"
                                   "f 1/1 2 3/1\n");
    const DocumentGeometry& geometry = document.geometries[0];
    EXPECT_EQ(geometry.colors.at(0), (Vec4f{1, 0.5F, 0, 1}));
    EXPECT_FALSE(geometry.colors.has(1));
    EXPECT_FALSE(geometry.uvs[0].has(1));
    EXPECT_EQ(geometry.uvs[0].at(2), (Vec2f{0.25F, 1}));
}

TEST_F(Obj, NewUVsChangeOnlyValueLinesAndTheirNumbers)
{
    const std::string v = twoTriangles;
    const struct
    {
        const char* name;
        std::string before;
        std::string after;
    } cases[] = {
        {"whatever stands between",
         v + "vt 9 9 # old\nvn 0 0 1\no a\ns 1\nf 1/1/1 -3//1 3/1 # why\nf 1/1 3/1 4\n",
         v + "vn 0 0 1\no a\ns 1\nvt 0.125 0\nvt 0.125 1\nvt 0.125 2\nvt 0.125 3\n"
             "f 1/1/1 -3/2/1 3/3 # why\nf 1/1 3/3 4/4\n"},
        {"other geometries keep their values under new numbers",
         v + "vt 7 7\nvt 8.0 8\no a\nf 1/1 2/1 3/1\no b\nf 1/2 3/-1 4/2\nl 1/1 2/2\n",
         v + "vt 7 7\nvt 8.0 8\no a\nvt 0.125 0\nvt 0.125 1\nvt 0.125 2\n"
             "f 1/3 2/4 3/5\no b\nf 1/2 3/-4 4/2\nl 1/1 2/2\n"},
        {"line ends stay", "v 0 0 0\r\nv 1 0 0\r\nv 0 1 0\r\nvt 0 0\r\nf 1/1 2/1 3/1\r\n",
         "v 0 0 0\r\nv 1 0 0\r\nv 0 1 0\r\nvt 0.125 0\r\nvt 0.125 1\r\n"
         "vt 0.125 2\r\nf 1/1 2/2 3/3\r\n"},
        {"a polygon stays one", v + "vt .5 0.50\nf 1 2 3 4\n",
         v + "vt .5 0.50\nvt 0.125 0\nvt 0.125 1\nvt 0.125 2\nvt 0.125 3\n"
             "f 1/2 2/3 3/4 4/5\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(writtenWithNewUVs(c.before), c.after);
    }
}

TEST_F(Obj, NewUVsAreTheSameToReadersOfEitherPrecision)
{
    Document document = read(std::string(twoTriangles) + "f 1 2 3\n");
    const float thirds = 1.0F / 3;
    writeSlot(document.geometries[0], 0, {{{thirds, 0.1F}}, {0, 0, 0}});
    const std::string text = written(document);
    const std::size_t at = text.find("vt ") + 3;
    EXPECT_EQ(std::stod(text.substr(at)), static_cast<double>(thirds));
    EXPECT_EQ(std::stod(text.substr(text.find(' ', at))), static_cast<double>(0.1F));
}

TEST_F(Obj, PolygonUnderASeamIsCut)
{
    Document document = read(oneQuad);
    const SlotValues uvs = ownValueForEachCorner(document.geometries[0]);
    EXPECT_EQ(writeSlot(document.geometries[0], 0, uvs), 1U);
    EXPECT_EQ(document.geometries[0].polygonCount(), 2U);
    EXPECT_THAT(written(document), HasSubstr("f 1/2 2/3 3/4\nf 1/5 3/6 4/7\n"));
}

TEST_F(Obj, ConcavePolygonIsCutWithoutFolding)
{
    // A dart: the fan from its first corner would cover the notch.
    //      2
    //     /3\      corner 3 lies inside the hull
    //    1   4
    const Document document = read("v -1 0 0\nv 0 2 0\nv 1 0 0\nv 0 1 0\nf 4 1 2 3\nf 1 2 3 4\n");
    const DocumentGeometry& geometry = document.geometries[0];
    for (std::size_t t = 0; t < geometry.triangleCount(); ++t) {
        const Vec3d& a = geometry.positions.at(geometry.triangles[3 * t]);
        const Vec3d& b = geometry.positions.at(geometry.triangles[3 * t + 1]);
        const Vec3d& c = geometry.positions.at(geometry.triangles[3 * t + 2]);
        EXPECT_LT((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]), 0) << t;
    }
}

TEST_F(Obj, BadFilesAreRefusedNamingTheLine)
{
    const std::string v = twoTriangles;
    const struct
    {
        std::string text;
        const char* message;
    } cases[] = {
        {"", "no faces"},
        {"Once upon a time\nthere was", "no faces"},
        {v, "no faces"},
        {v + "v 0 nan 0\nf 1 2 3\n", "line 5: a vertex with \"nan\""},
        {v + "vt inf 0\nf 1 2 3\n", "line 5: a texture coordinate with \"inf\""},
        {v + "v 1e39 0 0\nf 1 2 3\n", "line 5: a vertex with \"1e39\""},
        {v + "v 0 0 x1\nf 1 2 3\n", "\"x1\", which is no finite number"},
        {v + "v 0 0\nf 1 2 3\n", "line 5: a vertex with 2 coordinates"},
        {v + "f 1 2 3\nf 1 2 5\n", "line 6: a face with vertex 5"},
        {v + "f 0 1 2\n", "line 5: a face with vertex 0"},
        {v + "f -5 1 2\n", "line 5: a face with vertex -5"},
        {v + "f 1/1 2/1 3/1\n", "texture coordinate 1, which is not in the file"},
        {v + "f 1//2 2//1 3//1\n", "normal 2, which is not in the file"},
        {v + "f 1 2 99999999999999999999\n", "line 5"},
        {v + "f 1 2 b\n", "\"b\" where a number of a vertex"},
        {v + "f 1 2", "line 5: a face with 2 corners"},
    };
    for (const auto& c : cases)
        expectRefused(folder.write("in.obj", c.text), c.message);
}

TEST_F(Obj, FailedWriteLeavesTheOldFile)
{
    const Document document = read(oneQuad);
    std::filesystem::create_directory(folder / "sub.obj");
    EXPECT_THROW(writeObj(document, folder / "sub.obj"), FileError);
    EXPECT_THROW(writeObj(document, folder / "no/such/folder.obj"), FileError);
    EXPECT_THROW(writeObj(document, "/dev/full"), FileError);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "sub.obj"));
}

TEST_F(Obj, DocumentOfAnotherFormatIsWrittenPlainly)
{
    Document document = read("v 0 0 0\nv 1 0 0\nv 0 2 0\nvt 0 0\nvt 1 0\nvt 0 1\n"
                             "vn 0 0 1\nusemtl red\nf 1/1/1 2/2/1 3/3/1\n");
    document.payload = nullptr;
    document.geometries[0].toWorld = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1};
    EXPECT_EQ(written(document), "o in\nv 5 0 0\nv 5 1 0\nv 3 0 0\nvt 0 0\nvt 1 0\nvt 0 1\n"
                                 "vn 0 0 1\nusemtl red\nf 1/1/1 2/2/1 3/3/1\n");
}

} // namespace
