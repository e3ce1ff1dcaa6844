#include "uvtool/TempFolder.h"
#include "uvtool/formats/GltfSample.h"

#include "document/Format.h"
#include "document/Transform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace uvtool;

/// Everything that both formats hold, corner by corner in the order of the triangles.
struct CornerList
{
    std::vector<Vec3d> positions;
    std::vector<Vec2f> uvs;
    std::vector<Vec3d> normals;
    std::vector<std::string> materials;

    bool operator==(const CornerList&) const = default;
};

CornerList cornersOf(const Document& document)
{
    CornerList all;
    for (const DocumentGeometry& geometry : document.geometries)
        for (std::size_t i = 0; i < geometry.triangles.size(); ++i) {
            const std::uint32_t corner = geometry.triangles[i];
            all.positions.push_back(toScene(geometry.toWorld, geometry.positions.at(corner)));
            all.uvs.push_back(geometry.uvs[0].has(corner) ? geometry.uvs[0].at(corner) : Vec2f{});
            if (geometry.normals.has(corner))
                all.normals.push_back(normalToScene(geometry.toWorld, geometry.normals.at(corner)));
            const std::uint32_t polygon = geometry.polygonOfTriangle[i / 3];
            if (!geometry.materialOfPolygon.empty() && geometry.materialOfPolygon[polygon] >= 0)
                all.materials.push_back(
                    document.materials
                        .at(static_cast<std::size_t>(geometry.materialOfPolygon[polygon]))
                        .name);
        }
    return all;
}

const char* const object = "v 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 1 1 0 0 0 1\nv 0 1 0 1 1 1\nv 2 3 4\n"
                           "vt 0.25 0.5\nvt 0.75 0.5\nvt 0.75 1\nvt 0.25 1\nvn 0 0 1\nvn 1 0 0\n"
                           "o first part\nusemtl red\nf 1/1/1 2/2/1 3/3/1 4/4/1\n"
                           "usemtl blue\nf 3/1/2 2/1/2 5/2/1\no second\nf 1/1/1 3/3/2 5/3/1\n";

TEST(Conversion, ObjToGltfAndBack)
{
    for (const char* const name : {"out.glb", "out.gltf"}) {
        SCOPED_TRACE(name);
        const TempFolder folder;
        const Document obj = readDocument(folder.write("in.obj", object));
        writeDocument(obj, folder / name);
        const Document gltf = readDocument(folder / name);
        EXPECT_TRUE(cornersOf(gltf) == cornersOf(obj));
        EXPECT_THAT(gltf.geometries.at(0).name, testing::StartsWith("first part"));
        EXPECT_EQ(gltf.geometries.at(0).colors.at(1), (Vec4f{0, 1, 0, 1}));

        writeDocument(gltf, folder / "back.obj");
        EXPECT_TRUE(cornersOf(readDocument(folder / "back.obj")) == cornersOf(obj));
    }
}

TEST(Conversion, CornersWithoutAValueAreFilledUp)
{
    const TempFolder folder;
    const Document obj =
        readDocument(folder.write("in.obj", "v 0 0 0\nv 2 0 0\nv 0 2 0\nv 0 0 2\nvt 1 1\nvn 1 0 0\n"
                                            "f 1/1/1 2/1/1 3\nf 1 2 4\n"));
    writeDocument(obj, folder / "out.glb");
    const DocumentGeometry geometry = readDocument(folder / "out.glb").geometries.at(0);
    EXPECT_EQ(geometry.uvs[0].at(0), (Vec2f{1, 1}));
    EXPECT_EQ(geometry.uvs[0].at(2), (Vec2f{0, 1}));
    EXPECT_EQ(geometry.normals.at(0), (Vec3f{1, 0, 0}));
    EXPECT_EQ(geometry.normals.at(2), (Vec3f{0, 0, 1}));
    EXPECT_EQ(geometry.normals.at(5), (Vec3f{0, -1, 0}));
}

TEST(Conversion, TransformsAndOtherSlotsGoAlong)
{
    const TempFolder folder;
    GltfSample sample = fullSample();
    const Document in = readDocument(folder.write("in.glb", sample.glb()));
    writeDocument(in, folder / "out.obj");
    const Document obj = readDocument(folder / "out.obj");
    EXPECT_TRUE(cornersOf(obj) == cornersOf(in));
    EXPECT_EQ(obj.geometries.at(0).positions.at(0), (Vec3d{10, 0, 0}));

    Document plain = in;
    plain.payload = nullptr;
    writeDocument(plain, folder / "plain.glb");
    const Document again = readDocument(folder / "plain.glb");
    EXPECT_TRUE(cornersOf(again) == cornersOf(in));
    EXPECT_EQ(again.geometries.at(0).uvs[1].at(1), in.geometries.at(0).uvs[1].at(1));
}

} // namespace
