#include "Unfold3D/commands/Answer.h"

#include "Unfold3D/contract/CTopoErrors.h"

#include <memory>

namespace unfold3d
{

Answer::Answer() : table_(NU3D::VALTYPE_TABLE, NU3D::VALPROP_VALUE) {}

void Answer::set(const std::string& key, NU3D::CRef value)
{
    table_->Add(key, std::move(value));
}

void Answer::warn(const std::string& text)
{
    appendText("Warning", text);
}

void Answer::fail(const std::string& text)
{
    appendText("Error", text);
}

void Answer::setTopology(const std::string& key, const TopologyLines& lines)
{
    if (lines.empty())
        return;
    std::vector<NU3D::CTopoError> errors;
    for (std::string& line : lines.lines())
        errors.emplace_back(std::move(line));
    table_->Add(key, NU3D::CRef(std::make_shared<NU3D::CTopoErrors>(std::move(errors))));
}

void Answer::appendText(const char* key, const std::string& text)
{
    const NU3D::CRef present = table_->GetRef(key);
    const std::string* before = present ? present->as<std::string>() : nullptr;
    const std::string whole = before ? *before + "\n" + text : text;
    table_->Add(key, NU3D::CRef(whole, NU3D::VALPROP_VALUE));
}

} // namespace unfold3d
