#include "UVUtils/RecordingSolver.h"

#include <memory>
#include <sstream>
#include <type_traits>

using NU3D::CRef;
using NU3D::CVal;

namespace
{

template <class Number>
void print(std::ostream& out, const char* type, const std::vector<Number>& values)
{
    out << type << " [";
    for (std::size_t i = 0; i < values.size(); ++i)
        out << (i ? " " : "") << values[i];
    out << "]";
}

void print(std::ostream& out, const CVal::Table& table)
{
    out << "table of " << table.size();
}
void print(std::ostream& out, bool value)
{
    out << "bool " << (value ? "true" : "false");
}
void print(std::ostream& out, int value)
{
    out << "int " << value;
}
void print(std::ostream& out, float value)
{
    out << "float " << value;
}
void print(std::ostream& out, double value)
{
    out << "double " << value;
}
void print(std::ostream& out, const std::string& value)
{
    out << "string " << value;
}
void print(std::ostream& out, const std::vector<int>& values)
{
    print(out, "ints", values);
}
void print(std::ostream& out, const std::vector<double>& values)
{
    print(out, "doubles", values);
}
void print(std::ostream& out, const NU3D::CBox2D& box)
{
    out << "box " << box.minU << " " << box.maxU << " " << box.minV << " " << box.maxV;
}

std::string textOf(const CVal::Entry& entry)
{
    std::ostringstream out;
    out << entry.name;
    if (entry.mark == CVal::NameOnly)
        out << " (name)";
    else if (entry.mark == CVal::Enabled)
        out << " (enabled)";
    else {
        out << " = ";
        std::visit([&](const auto& value) { print(out, value); }, entry.value->content());
    }
    return out.str();
}

} // namespace

class RecordingSolver::Instance : public NU3D::Backend
{
public:
    explicit Instance(RecordingSolver& recorder) : recorder_(recorder) { ++recorder_.alive_; }
    ~Instance() override { --recorder_.alive_; }
    void registerProgress(ProgressCallback callback) override { run_.progress = callback; }
    void registerStop(StopCallback callback) override { run_.asksToStop = callback; }
    CRef run(const std::string& command, const CRef& params) override
    {
        run_.params = params;
        return recorder_.answer(command, run_);
    }

private:
    RecordingSolver& recorder_;
    Run run_;
};

RecordingSolver::RecordingSolver()
{
    NU3D::CUnfold3DAPI::setBackendFactory([this] { return std::make_unique<Instance>(*this); });
}

RecordingSolver::~RecordingSolver()
{
    NU3D::CUnfold3DAPI::setBackendFactory(nullptr);
}

void RecordingSolver::reset()
{
    scripts_.clear();
    islandOfVertex.clear();
    commands_.clear();
    tables_.clear();
}

CRef RecordingSolver::answer(const std::string& command, const Run& run)
{
    commands_.push_back(command);
    tables_.emplace_back();
    for (const CVal::Entry& entry : run.params->entries())
        tables_.back().push_back(textOf(entry));
    if (command == "Import")
        importedUVW_ = run.params->GetDoubles("#Data.CoordsUVW doubles");

    const auto script = scripts_.find(command);
    if (script != scripts_.end())
        return script->second(run);
    return command == "Export" ? answerExport(run) : nothing();
}

CRef RecordingSolver::answerExport(const Run& run) const
{
    if (!run.params->Exists("#IndexTable.VertexIDsToIslandIDs bool"))
        return doubles("#Data.CoordsUVW doubles", importedUVW_);
    const CRef result = nothing();
    result->Add("#IndexTable.VertexIDsToIslandIDs ints", CRef(islandOfVertex, NU3D::VALPROP_VALUE));
    return result;
}

std::vector<std::string> RecordingSolver::table(const std::string& command, int nth) const
{
    for (std::size_t i = 0; i < commands_.size(); ++i)
        if (commands_[i] == command && nth-- == 0)
            return tables_[i];
    return {"(not sent)"};
}

CRef RecordingSolver::nothing()
{
    return {NU3D::VALTYPE_TABLE, NU3D::VALPROP_VALUE};
}

CRef RecordingSolver::error(const std::string& text)
{
    const CRef result = nothing();
    result->Add("Error", CRef(text, NU3D::VALPROP_VALUE));
    return result;
}

CRef RecordingSolver::warning(const std::string& text)
{
    const CRef result = nothing();
    result->Add("Warning", CRef(text, NU3D::VALPROP_VALUE));
    return result;
}

CRef RecordingSolver::doubles(const std::string& name, std::vector<double> values)
{
    const CRef result = nothing();
    result->Add(name, CRef(std::move(values), NU3D::VALPROP_VALUE));
    return result;
}
