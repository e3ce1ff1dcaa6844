#include "uvtool/ObjBuilders.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "Utils/kyStackedProgress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

nlohmann::json infoOf(const std::string& path)
{
    return runTool({"info", path, "--json"}).json();
}

/// Lines of a text that start like this.
std::vector<std::string> linesOf(const std::string& text, const std::string& start)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with(start))
            lines.push_back(line);
    return lines;
}

class Unfold : public testing::Test
{
protected:
    void write(const ObjBuilder& builder) const { folder.write("in.obj", builder.text()); }
    ToolRun unfold(const std::vector<std::string>& options = {}, bool onTerminal = false) const
    {
        std::vector<std::string> arguments{"unfold", in, "-o", out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runTool(arguments, onTerminal);
    }

    const TempFolder folder;
    const std::string in = folder / "in.obj";
    const std::string out = folder / "out.obj";
};

TEST_F(Unfold, WritesASoundLayoutInTheUnitSquareAndItsPicture)
{
    write(ObjBuilder().dome(8));
    const ToolRun run = unfold({"--json", "--picture", folder / "layout.svg"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_THAT(bytesOf(folder / "layout.svg"), HasSubstr("<svg"));

    const nlohmann::json report = run.json();
    EXPECT_EQ(report["result"], "success");
    EXPECT_EQ(report["geometries"][0]["islandsDone"], 1);
    EXPECT_EQ(report["check"]["sound"], true);
    EXPECT_GE(report["check"]["marginTexels"], 0.999);

    const nlohmann::json written = infoOf(out);
    EXPECT_EQ(written["check"]["triangles"], 128);
    EXPECT_EQ(written["geometries"][0]["polygons"], 64);
    EXPECT_EQ(linesOf(bytesOf(out), "v "), linesOf(bytesOf(in), "v "));
}

TEST_F(Unfold, LaysTheGeometriesOfAFileOutTogether)
{
    write(ObjBuilder().object("a").dome(4).object("b").dome(6, 2).object("c").dome(3, 4));
    const nlohmann::json shared = unfold({"--json", "--resolution", "64"}).json();
    EXPECT_EQ(shared["check"]["islands"], 3);
    EXPECT_EQ(shared["check"]["sound"], true);
    EXPECT_GE(shared["check"]["gapTexels"], 1.999);

    const nlohmann::json each = unfold({"--json", "--atlas", "each", "--resolution", "64"}).json();
    EXPECT_FALSE(each.contains("check"));
    for (const nlohmann::json& geometry : each["geometries"])
        EXPECT_GT(geometry["check"]["area"], 0.5);
    EXPECT_EQ(infoOf(out)["check"]["sound"], false);
}

TEST_F(Unfold, TouchesOnlyTheGeometryThatWasChosen)
{
    write(ObjBuilder().object("a").square(0, 1).object("b").dome(3, 2));
    const ToolRun run = unfold({"--geometry", "1", "--json"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_EQ(run.json()["geometries"].size(), 1U);
    const std::string text = bytesOf(out);
    EXPECT_THAT(text, HasSubstr("f -4/-4 -3/-3 -2/-2\nf -4/-4 -2/-2 -1/-1\n"));
    EXPECT_EQ(linesOf(text, "vt ").size(), 4U + 16U);
}

TEST_F(Unfold, ClosedPiecesKeepTheirUVsAndAreNamed)
{
    write(ObjBuilder().dome(3).tetrahedron(3));
    const ToolRun run = unfold({"--json"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_THAT(run.err, HasSubstr("1 island is closed and keeps its UVs"));
    const nlohmann::json geometry = run.json()["geometries"][0];
    ASSERT_EQ(geometry["closedIslands"].size(), 1U);
    EXPECT_EQ(geometry["closedIslands"][0]["firstTriangle"], 18);
    EXPECT_EQ(geometry["check"]["triangles"], 18);
    EXPECT_THAT(bytesOf(out), HasSubstr("vt .25 .75\n"));
}

TEST_F(Unfold, SaysWhyThereIsNothingToDo)
{
    const std::pair<std::string, const char*> cases[] = {
        {ObjBuilder().tetrahedron(0).text(), "closed"},
        {"v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 2\nf 3 3 3\n", "every triangle has a repeated corner"}};
    for (const auto& [text, says] : cases) {
        folder.write("in.obj", text);
        const ToolRun run = unfold({"--json"});
        EXPECT_EQ(run.status, Failed);
        EXPECT_EQ(run.lineCount(), 1) << run.err;
        EXPECT_THAT(run.err, HasSubstr(says));
        EXPECT_EQ(run.json()["result"], "failure");
        EXPECT_THAT(run.json()["error"], HasSubstr("nothing to unfold"));
        EXPECT_FALSE(std::filesystem::exists(out));
    }
}

TEST_F(Unfold, TrianglesWithARepeatedCornerGoWithTheirNeighbours)
{
    // The first quad is a triangle in truth.
    folder.write("in.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                           "f 1 2 3 3\nf 1 3 4\nf 1 1 2\n");
    const ToolRun run = unfold({"--json"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_EQ(run.json()["geometries"][0]["degenerateTriangles"], 2);
    EXPECT_EQ(run.json()["geometries"][0]["splitPolygons"], 0);
    EXPECT_EQ(linesOf(bytesOf(out), "vt ").size(), 4U);
    EXPECT_EQ(linesOf(bytesOf(out), "f "),
              (std::vector<std::string>{"f 1/1 2/2 3/3 3/3", "f 1/1 3/3 4/4", "f 1/1 1/1 2/2"}));
}

TEST_F(Unfold, LeavesLayoutsUnpackedWhereAsked)
{
    write(ObjBuilder().square(0, 5));
    const ToolRun run = unfold({"--no-pack", "--json"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_NEAR(run.json()["check"]["area"], 25.0, 1e-4); // the scale of the mesh
    EXPECT_FALSE(run.json()["check"].contains("gapTexels"));
}

TEST_F(Unfold, KeepsStandardOutputToItselfAndItsProgressToTerminals)
{
    write(ObjBuilder().dome(3));
    std::ostringstream text;
    std::streambuf* const before = std::cout.rdbuf(text.rdbuf());
    const ToolRun quiet = unfold({"--quiet"});
    const ToolRun json = unfold({"--json"});
    const ToolRun verbose = unfold({"--verbose"});
    const ToolRun plain = unfold();
    const ToolRun onTerminal = unfold({}, true);
    std::cout.rdbuf(before);
    EXPECT_THAT(text.str(), IsEmpty());
    EXPECT_THAT(quiet.out + quiet.err, IsEmpty());
    EXPECT_THAT(json.err, IsEmpty());
    EXPECT_THAT(verbose.out, IsEmpty());
    EXPECT_THAT(verbose.err, HasSubstr("Unfolding..."));
    EXPECT_THAT(plain.err, Not(HasSubstr("100 %")));
    EXPECT_THAT(onTerminal.err, HasSubstr("100 %"));
}

/// Asks the work to stop as soon as a text goes through.
class StopsAt : public std::stringbuf
{
public:
    explicit StopsAt(std::string text) : text_(std::move(text)) {}

protected:
    std::streamsize xsputn(const char* s, std::streamsize count) override
    {
        if (std::string_view(s, static_cast<std::size_t>(count)).find(text_) !=
            std::string_view::npos)
            kyStackedProgress::requestCancel();
        return std::stringbuf::xsputn(s, count);
    }

private:
    std::string text_;
};

TEST_F(Unfold, StopsWithoutAFileWhenAskedTo)
{
    write(ObjBuilder().dome(5));
    for (const char* const stage : {"Importing...", "Unfolding...", "Packing..."}) {
        SCOPED_TRACE(stage);
        std::ostringstream report;
        StopsAt buffer(stage);
        std::ostream err(&buffer);
        const std::vector<std::string> arguments{"unfold", in, "-o", out, "--json", "--verbose"};
        EXPECT_EQ(runUvtool(arguments, report, err), Interrupted);
        EXPECT_EQ(nlohmann::json::parse(report.str())["result"], "cancelled");
        EXPECT_FALSE(std::filesystem::exists(out));
    }
    EXPECT_EQ(unfold().status, Done);
}

TEST_F(Unfold, OutputsThatCannotBeWrittenFailBeforeTheWork)
{
    write(ObjBuilder().dome(3));
    std::filesystem::create_directory(folder / "folder.obj");
    struct Case
    {
        std::vector<std::string> outputs;
        const char* says;
    };
    const std::string good = folder / "good.obj";
    const Case cases[] = {
        {{"-o", folder / "absent/out.obj"}, "absent/out.obj"},
        {{"-o", folder / "folder.obj"}, "Is a directory"},
        {{"-o", good, "--picture", folder / "absent/picture.png"}, "picture.png"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.says);
        std::vector<std::string> arguments{"unfold", in};
        arguments.insert(arguments.end(), c.outputs.begin(), c.outputs.end());
        const ToolRun run = runTool(arguments);
        EXPECT_EQ(run.status, Unwritable);
        EXPECT_EQ(run.lineCount(), 1) << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.says));
        EXPECT_FALSE(std::filesystem::exists(good));
    }
}

TEST_F(Unfold, EveryFormatHoldsTheValuesThatWereChecked)
{
    write(ObjBuilder().dome(7));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path()); // a name without a folder has to do
    for (const char* const name : {"out.obj", "out.gltf", "out.glb"}) {
        SCOPED_TRACE(name);
        const ToolRun run = runTool({"unfold", in, "-o", name, "--json"});
        EXPECT_EQ(run.status, Done) << run.err;
        nlohmann::json checked = run.json()["check"];
        nlohmann::json written = infoOf(folder / name)["check"];
        for (const char* const key : {"bounds", "area", "triangles", "sound"})
            EXPECT_EQ(checked[key], written[key]) << key;
    }
    std::filesystem::current_path(before);
    EXPECT_TRUE(std::filesystem::exists(folder / "out.bin"));
}

} // namespace
