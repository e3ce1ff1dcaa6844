#include "UVUtils/solver/ResultCheck.h"

#include "UVUtils/solver/SolverProgress.h"
#include "Utils/kyLog.h"

#include <string>

namespace kyUnfold3D
{

namespace
{

void logTopologyLines(const NU3D::CRef& result, const std::string& kind)
{
    for (const char* const where : {".Topo3D", ".TopoUV"}) {
        const std::string key = kind + where;
        if (!result->Exists(key))
            continue;
        result->UpdateIfNeeded();
        const NU3D::CRef ref = result->GetRef(key);
        const auto* errors = dynamic_cast<const NU3D::CTopoErrors*>(ref.get());
        const int count = errors ? errors->ErrorsNB() : 0;
        for (int i = 0; i < count; ++i)
            kyLog::info("%s", errors->GetError(i).Msg().c_str());
    }
}

} // namespace

kyUVTypes::ReturnCode checkResult(const NU3D::CRef& result)
{
    if (NU3D::CUnfold3DAPI::HasWarning(result)) {
        const std::string text = NU3D::CUnfold3DAPI::GetWarningString(result);
        kyLog::warning("Unfold3D warning: %s", text.c_str());
        logTopologyLines(result, "Warning");
    }
    if (NU3D::CUnfold3DAPI::HasError(result)) {
        const std::string text = NU3D::CUnfold3DAPI::GetErrorString(result);
        kyLog::error("Unfold3D error: %s", text.c_str());
        logTopologyLines(result, "Error");
        return kyUVTypes::Failure;
    }
    const bool cancelled = gSolverProgress && gSolverProgress->progress->cancelled();
    return cancelled ? kyUVTypes::Cancelled : kyUVTypes::Success;
}

} // namespace kyUnfold3D
