#include "uvtool/Refusals.h"
#include "uvtool/TempFolder.h"

#include "document/Transform.h"

namespace
{

using namespace uvtool;

Document read(const TempFolder& folder, const std::string& name, const std::string& text)
{
    return readDocument(folder.write(name, text));
}

TEST(Assimp, PlyKeepsPolygonsColorsAndUVs)
{
    const TempFolder folder;
    const Document document =
        read(folder, "in.PLY",
             "ply\nformat ascii 1.0\nelement vertex 5\n"
             "property float x\nproperty float y\nproperty float z\n"
             "property float s\nproperty float t\n"
             "property uchar red\nproperty uchar green\nproperty uchar blue\n"
             "element face 2\nproperty list uchar int vertex_indices\nend_header\n"
             "0 0 0 0 0 255 0 0\n1 0 0 1 0 0 255 0\n1 1 0 1 0.75 0 0 255\n0 1 0 0 1 0 0 0\n"
             "0.5 2 0 0.5 2 255 255 255\n4 0 1 2 3\n3 3 2 4\n");
    ASSERT_EQ(document.geometries.size(), 1U);
    const DocumentGeometry& geometry = document.geometries[0];
    EXPECT_THAT(geometry.polygonOffsets, testing::ElementsAre(0U, 4U, 7U));
    EXPECT_EQ(geometry.triangleCount(), 3U);
    EXPECT_EQ(geometry.positions.at(2), (Vec3d{1, 1, 0}));
    EXPECT_EQ(geometry.uvs[0].at(2), (Vec2f{1, 0.75F}));
    EXPECT_EQ(geometry.colors.at(1), (Vec4f{0, 1, 0, 1}));
    EXPECT_FALSE(geometry.uvs[1].exists());
    for (const DocumentMaterial& material : document.materials)
        EXPECT_NE(material.name, "") << "an OBJ can't do without";
}

TEST(Assimp, StlVerticesAreNotJoined)
{
    const TempFolder folder;
    const Document document =
        read(folder, "in.stl",
             "solid part\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
             "vertex 1 1 0\nendloop\nendfacet\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\n"
             "vertex 1 1 0\nvertex 0 1 0\nendloop\nendfacet\nendsolid part\n");
    const DocumentGeometry& geometry = document.geometries.at(0);
    EXPECT_EQ(geometry.positions.values.size(), 6U);
    EXPECT_EQ(geometry.normals.at(4), (Vec3f{0, 0, 1}));
    EXPECT_FALSE(geometry.uvs[0].exists());
}

/// A triangle in a node that moves by (5 0 0) below one that turns by 90 degrees about z.
const char* const collada = R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><up_axis>Y_UP</up_axis></asset>
<library_geometries><geometry id="leaf"><mesh>
<source id="p"><float_array id="pa" count="9">0 0 0 1 0 0 0 1 0</float_array>
<technique_common><accessor source="#pa" count="3" stride="3">
<param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/>
</accessor></technique_common></source>
<source id="t"><float_array id="ta" count="6">0 0 1 0 0 0.5</float_array>
<technique_common><accessor source="#ta" count="3" stride="2">
<param name="S" type="float"/><param name="T" type="float"/>
</accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/>
<input semantic="TEXCOORD" source="#t" offset="1" set="0"/><p>0 0 1 1 2 2</p></triangles>
</mesh></geometry></library_geometries>
<library_visual_scenes><visual_scene id="s"><node id="a" name="turned">
<rotate>0 0 1 90</rotate><node id="b" name="moved"><translate>5 0 0</translate>
<instance_geometry url="#leaf"/></node></node></visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#s"/></scene></COLLADA>
)";

TEST(Assimp, ColladaHasNodesAndNames)
{
    const TempFolder folder;
    const Document document = read(folder, "in.dae", collada);
    const DocumentGeometry& geometry = document.geometries.at(0);
    EXPECT_EQ(geometry.name, "leaf");
    EXPECT_EQ(geometry.uvs[0].at(2), (Vec2f{0, 0.5F}));
    const Vec3d there = toScene(geometry.toWorld, {1, 0, 0});
    EXPECT_NEAR(there[0], 0, 1e-5);
    EXPECT_NEAR(there[1], 6, 1e-5);
    EXPECT_NEAR(there[2], 0, 1e-5);
}

TEST(Assimp, BadFilesAreRefused)
{
    const TempFolder folder;
    const struct
    {
        const char* name;
        const char* text;
        const char* message;
    } cases[] = {
        {"words.ply", "Once upon a time", "cannot be understood: "},
        {"endless.ply", "ply\nformat ascii 1.0\ncomment end_header\n", "its header has no end"},
        {"empty.stl", "", "cannot be understood: "},
        {"range.ply",
         "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
         "property float z\nelement face 1\nproperty list uchar int vertex_indices\nend_header\n"
         "0 0 0\n1 0 0\n1 1 0\n3 0 1 7\n",
         "range.ply: "},
        {"nan.off", "OFF\n3 1 0\nnan 0 0\n1 0 0\n1 1 0\n3 0 1 2\n", "isn't finite"},
        {"what.xyzzy", "text", "unknown kind"},
        {"none", "text", "unknown kind"},
    };
    for (const auto& c : cases)
        expectRefused(folder.write(c.name, c.text), c.message);
    std::filesystem::create_directory(folder / "folder.ply");
    for (const char* const name : {"missing.ply", "folder.ply"})
        expectRefused(folder / name, "");
}

} // namespace
