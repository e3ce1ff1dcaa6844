// The tool as a process of its own: what a shell sees of it.

#include "uvtool/ObjBuilders.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "cli/ExitStatus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;

/// A process whose standard output and error go to files.
class Process
{
public:
    Process(std::vector<std::string> arguments, const std::string& out, const std::string& err)
    {
        std::string program = UVTOOL_PROGRAM;
        std::vector<char*> pointers{program.data()};
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        id_ = ::fork();
        if (id_ != 0)
            return;
        ::dup2(::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
        ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        ::execv(program.c_str(), pointers.data());
        ::_exit(99);
    }

    void interrupt() const { ::kill(id_, SIGINT); }

    /// The exit status; -1 when a signal ended it.
    int wait() const
    {
        int state = 0;
        ::waitpid(id_, &state, 0);
        return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    }

private:
    pid_t id_;
};

std::vector<std::string> filesIn(const TempFolder& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

struct Ended
{
    int status;
    std::string out;
    std::string err;
};

Ended runProcess(const TempFolder& folder, const std::vector<std::string>& arguments,
                 const std::string& out = {})
{
    const std::string outFile = out.empty() ? (folder / "stdout").string() : out;
    const int status = Process(arguments, outFile, folder / "stderr").wait();
    return {status, out.empty() ? bytesOf(outFile) : "", bytesOf(folder / "stderr")};
}

TEST(Process, AFullDiskLeavesTheOldFileAndNoOther)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    const TempFolder folder;
    const std::string in = folder.write("in.obj", ObjBuilder().dome(3).text());
    EXPECT_EQ(runProcess(folder, {"info", in}).status, Done);
    std::filesystem::create_symlink("/dev/full", folder / "full.obj");
    const Ended file = runProcess(folder, {"unfold", in, "-o", folder / "full.obj"});
    EXPECT_EQ(file.status, Unwritable);
    EXPECT_THAT(file.err, HasSubstr("No space left"));

    const Ended report = runProcess(folder, {"info", in, "--json"}, "/dev/full");
    EXPECT_EQ(report.status, Unwritable);
    EXPECT_THAT(report.err, HasSubstr("standard output"));
    EXPECT_EQ(filesIn(folder),
              (std::vector<std::string>{"full.obj", "in.obj", "stderr", "stdout"}));
}

TEST(Process, APathIsCutInOnePipe)
{
    const TempFolder folder;
    const std::string in = folder.write("in.obj", ObjBuilder().square(0, 2).text());
    const std::string tool = std::string(UVTOOL_PROGRAM) + " ";
    const std::string line = tool + "path " + in + " --vertices 0,2 --quiet | " + tool + "cut " +
                             in + " -o " + (folder / "out.obj").string() + " --edges - --quiet";
    ASSERT_EQ(std::system(line.c_str()), 0);
    EXPECT_EQ(runTool({"islands", folder / "out.obj", "--json"}).json()["geometries"][0]["islands"],
              2);
}

/// A dome seen from above in UV; large enough that work on it isn't done before a signal comes.
std::string mappedDome()
{
    std::istringstream dome(ObjBuilder().dome(150).text());
    std::string text;
    for (std::string line; std::getline(dome, line);) {
        std::istringstream words(line);
        std::string kind;
        words >> kind;
        text += kind;
        for (std::string word; words >> word;) {
            text.append(" ").append(word);
            if (kind == "f")
                text.append("/").append(word);
        }
        text += "\n" + (kind == "v" ? "vt " + line.substr(2, line.rfind(' ') - 2) + "\n" : "");
    }
    return text;
}

TEST(Process, CtrlCEndsItWithoutAFile)
{
    const std::string dome = mappedDome();
    const std::string sphere = ObjBuilder().cube(70, true).text();
    struct Case
    {
        const char* command;
        std::string obj;
        const char* says; ///< when it is time
    };
    const Case cases[] = {{"unfold", dome, "Unfolding..."},
                          {"optimize", dome, "Optimizing..."},
                          {"unfold", sphere, "Importing..."}, // seams are searched for next
                          {"seams", sphere, "Importing..."}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.command) + " " + c.says);
        const TempFolder folder;
        const std::string in = folder.write("in.obj", c.obj);
        std::vector<std::string> arguments{c.command, in, "-o", folder / "out.obj", "--verbose"};
        if (c.command == std::string("seams"))
            arguments.insert(arguments.end(), {"--edges", folder / "edges.txt"});
        const Process process(arguments, folder / "stdout", folder / "stderr");
        while (bytesOf(folder / "stderr").find(c.says) == std::string::npos)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        process.interrupt();
        EXPECT_EQ(process.wait(), Interrupted);
        EXPECT_THAT(bytesOf(folder / "stderr"), HasSubstr("cancelled"));
        EXPECT_EQ(filesIn(folder), (std::vector<std::string>{"in.obj", "stderr", "stdout"}));
    }
}

} // namespace
