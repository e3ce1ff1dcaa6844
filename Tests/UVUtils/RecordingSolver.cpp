#include "UVUtils/RecordingSolver.h"

#include <memory>
#include <sstream>
#include <variant>

using NU3D::CRef;
using NU3D::CVal;

namespace
{

template <class... Lambdas>
struct Overloaded : Lambdas...
{
    using Lambdas::operator()...;
};
template <class... Lambdas>
Overloaded(Lambdas...) -> Overloaded<Lambdas...>;

void print(std::ostream& out, const CVal::Content& content)
{
    const auto printList = [&](const char* type, const auto& values) {
        out << type << " [";
        for (std::size_t i = 0; i < values.size(); ++i)
            out << (i ? " " : "") << values[i];
        out << "]";
    };
    std::visit(Overloaded{[&](const CVal::Table& table) { out << "table of " << table.size(); },
                          [&](bool value) { out << "bool " << (value ? "true" : "false"); },
                          [&](int value) { out << "int " << value; },
                          [&](float value) { out << "float " << value; },
                          [&](double value) { out << "double " << value; },
                          [&](const std::string& value) { out << "string " << value; },
                          [&](const std::vector<int>& values) { printList("ints", values); },
                          [&](const std::vector<double>& values) { printList("doubles", values); },
                          [&](const NU3D::CBox2D& box) {
                              out << "box " << box.minU << " " << box.maxU << " " << box.minV << " "
                                  << box.maxV;
                          }},
               content);
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
        print(out, entry.value->content());
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
    if (run.params->Exists("#IndexTable.VertexIDsToIslandIDs bool"))
        return holding("#IndexTable.VertexIDsToIslandIDs ints", islandOfVertex);
    return holding("#Data.CoordsUVW doubles", importedUVW_);
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
