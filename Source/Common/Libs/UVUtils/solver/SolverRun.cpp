#include "UVUtils/solver/SolverRun.h"

#include "UVUtils/solver/ResultCheck.h"
#include "UVUtils/solver/SteadyClock.h"
#include "UVUtils/solver/steps/InitStep.h"
#include "Utils/kyLog.h"

#include <exception>

namespace kyUnfold3D
{

SolverRun::Published::Published(kyStackedProgress& reporter)
{
    state.lastChangeTime = steadyNanoseconds();
    state.lastReportTime = state.lastChangeTime;
    state.progress = &reporter;
    gSolverProgress = &state;
}

SolverRun::Published::~Published()
{
    gSolverProgress = nullptr;
}

SolverRun::SolverRun(const char* progressName, kyUnfold3DData& mesh)
    : mesh_(mesh), reporter_(progressName, 1.0), published_(reporter_)
{
    solver_.RegisterUpdateProgressCallback(onSolverProgress);
    solver_.RegisterStopCallback(onSolverStopQuestion);
}

SolverRun::Answer SolverRun::perform(const char* command, const SolverTable& table)
{
    Answer answer;
    answer.result = solver_.Do(command, table.ref());
    answer.code = checkResult(answer.result);
    if (!answer.result)
        answer.result = SolverTable().ref();
    return answer;
}

kyUVTypes::ReturnCode runInOrder(std::initializer_list<SolverStep> steps)
{
    for (const SolverStep& step : steps) {
        const kyUVTypes::ReturnCode code = step();
        if (code != kyUVTypes::Success)
            return code;
    }
    return kyUVTypes::Success;
}

kyUVTypes::ReturnCode runSolver(const RunNames& names, const MeshSource& source,
                                const std::function<kyUVTypes::ReturnCode(SolverRun&)>& steps)
{
    try {
        kyUnfold3DData mesh(source.geometry, source.uvSet, source.inputMode, source.uvs);
        if (!mesh.isValid())
            return kyUVTypes::Failure;
        SolverRun run(names.progress, mesh);
        return runInOrder({[&] { return initStep(run); }, [&] { return steps(run); }});
    } catch (const NU3D::CEx& exception) {
        kyLog::error("Unfold3D (%s) exception %s", names.inErrors, exception.what());
    } catch (const std::exception& exception) {
        kyLog::error("Unfold3D (%s) unknown exception %s", names.inErrors, exception.what());
    } catch (...) {
        kyLog::error("Unfold3D (%s) unknown exception", names.inErrors);
    }
    return kyUVTypes::Failure;
}

} // namespace kyUnfold3D
