#pragma once

#include "Unfold3D/contract/CRef.h"

#include <functional>
#include <memory>
#include <string>

namespace NU3D
{

/// What stands behind a CUnfold3DAPI and does its commands. The engine is one; a test may put
/// another in its place.
class Backend
{
public:
    using ProgressCallback = void (*)(double fraction);
    using StopCallback = bool (*)();

    virtual ~Backend() = default;
    virtual void registerProgress(ProgressCallback callback) = 0;
    virtual void registerStop(StopCallback callback) = 0;
    virtual CRef run(const std::string& command, const CRef& params) = 0;
};

/// One solver run. It keeps the imported mesh, its UVs and the selection between commands.
///
/// The callbacks take no user argument, so one run at a time can be under way in a process. They
/// are called on the thread that calls Do, and only during it.
class CUnfold3DAPI
{
public:
    CUnfold3DAPI();
    ~CUnfold3DAPI();
    CUnfold3DAPI(const CUnfold3DAPI&) = delete;
    CUnfold3DAPI& operator=(const CUnfold3DAPI&) = delete;

    /// The callback receives the progress of the running command, a fraction that ends with 1.0.
    void RegisterUpdateProgressCallback(Backend::ProgressCallback callback);
    /// The callback answers whether the running command is to stop. A stopped command still
    /// returns a result, and leaves the UVs of the run as they were before it.
    void RegisterStopCallback(Backend::StopCallback callback);

    /// Runs one command to its end. The result holds its outputs, warnings and errors.
    CRef Do(const std::string& command, const CRef& params);

    static bool HasWarning(const CRef& result);
    static std::string GetWarningString(const CRef& result);
    static bool HasError(const CRef& result);
    static std::string GetErrorString(const CRef& result);
    static std::string APIVersionString();

    using BackendFactory = std::function<std::unique_ptr<Backend>()>;
    /// Instances made from here on are served by what `factory` makes; null brings the engine back.
    static void setBackendFactory(BackendFactory factory);

private:
    std::unique_ptr<Backend> backend_;
};

} // namespace NU3D
