#include "Unfold3D/contract/CUnfold3DAPI.h"

#include "Unfold3D/contract/CVal.h"
#include "Unfold3D/contract/EngineBackend.h"

namespace NU3D
{

namespace
{

// Leaked on purpose: a static that outlives main may still open a run.
CUnfold3DAPI::BackendFactory& backendFactory()
{
    static auto* factory = new CUnfold3DAPI::BackendFactory;
    return *factory;
}

std::string textUnder(const CRef& result, const char* key)
{
    const CRef ref = result ? result->GetRef(key) : CRef();
    const std::string* text = ref ? ref->as<std::string>() : nullptr;
    return text ? *text : std::string();
}

} // namespace

CUnfold3DAPI::CUnfold3DAPI()
    : backend_(backendFactory() ? backendFactory()() : unfold3d::makeEngine())
{}

CUnfold3DAPI::~CUnfold3DAPI() = default;

void CUnfold3DAPI::RegisterUpdateProgressCallback(Backend::ProgressCallback callback)
{
    backend_->registerProgress(callback);
}

void CUnfold3DAPI::RegisterStopCallback(Backend::StopCallback callback)
{
    backend_->registerStop(callback);
}

CRef CUnfold3DAPI::Do(const std::string& command, const CRef& params)
{
    return backend_->run(command, params);
}

bool CUnfold3DAPI::HasWarning(const CRef& result)
{
    return result && result->Exists("Warning");
}

std::string CUnfold3DAPI::GetWarningString(const CRef& result)
{
    return textUnder(result, "Warning");
}

bool CUnfold3DAPI::HasError(const CRef& result)
{
    return result && result->Exists("Error");
}

std::string CUnfold3DAPI::GetErrorString(const CRef& result)
{
    return textUnder(result, "Error");
}

std::string CUnfold3DAPI::APIVersionString()
{
    return "1.0";
}

void CUnfold3DAPI::setBackendFactory(BackendFactory factory)
{
    backendFactory() = std::move(factory);
}

} // namespace NU3D
