#include "Unfold3D/commands/Engine.h"

#include "Unfold3D/contract/CVal.h"

namespace unfold3d
{

namespace
{

class Engine : public NU3D::Backend
{
public:
    void registerProgress(ProgressCallback callback) override { progress_ = callback; }
    void registerStop(StopCallback callback) override { stop_ = callback; }
    NU3D::CRef run(const std::string& command, const NU3D::CRef& params) override;

private:
    ProgressCallback progress_ = nullptr;
    StopCallback stop_ = nullptr;
};

NU3D::CRef Engine::run(const std::string& command, const NU3D::CRef&)
{
    NU3D::CRef result(NU3D::VALTYPE_TABLE, NU3D::VALPROP_VALUE);
    result->Add("Error", NU3D::CRef("Unknown command \"" + command + "\".", NU3D::VALPROP_VALUE));
    return result;
}

} // namespace

std::unique_ptr<NU3D::Backend> makeEngine()
{
    return std::make_unique<Engine>();
}

} // namespace unfold3d
