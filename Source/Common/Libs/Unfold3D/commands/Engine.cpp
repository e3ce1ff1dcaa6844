#include "Unfold3D/contract/EngineBackend.h"

#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/contract/CVal.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace unfold3d
{

namespace
{

struct NamedCommand
{
    const char* name;
    Command* run;
    bool needsMesh;
};

constexpr NamedCommand commands[] = {
    {"Init", runInit, false},          {"Import", runImport, false},    {"Select", runSelect, true},
    {"Constrain", runConstrain, true}, {"Unfold", runUnfold, true},     {"Pack", runPack, true},
    {"Export", runExport, true},       {"Optimize", runOptimize, true},
};

class Engine : public NU3D::Backend
{
public:
    void registerProgress(ProgressCallback callback) override { progress_ = callback; }
    void registerStop(StopCallback callback) override { stop_ = callback; }
    NU3D::CRef run(const std::string& name, const NU3D::CRef& params) override;

private:
    void runCommand(const std::string& name, const Params& params, Answer& answer);

    ProgressCallback progress_ = nullptr;
    StopCallback stop_ = nullptr;
    Session session_;
};

NU3D::CRef Engine::run(const std::string& name, const NU3D::CRef& params)
{
    Answer answer;
    try {
        runCommand(name, Params(params), answer);
    } catch (const CommandError& error) {
        answer.fail(error.what());
    } catch (const std::bad_alloc&) {
        answer.fail("Not enough memory for the command \"" + name + "\".");
    }
    return answer.table();
}

void Engine::runCommand(const std::string& name, const Params& params, Answer& answer)
{
    const auto* command = std::find_if(std::begin(commands), std::end(commands),
                                       [&](const NamedCommand& c) { return name == c.name; });
    if (command == std::end(commands))
        throw CommandError("Unknown command \"" + name + "\".");
    if (command->needsMesh && !session_.imported)
        throw CommandError("The command \"" + name + "\" needs a mesh: call \"Import\" first.");

    const bool finished = runWatched(progress_, stop_, [&](RunControl& control) {
        command->run(session_, params, answer, control);
    });
    if (!finished)
        answer.set("#Stopped bool", NU3D::CRef(true, NU3D::VALPROP_VALUE));
}

} // namespace

std::unique_ptr<NU3D::Backend> makeEngine()
{
    return std::make_unique<Engine>();
}

} // namespace unfold3d
