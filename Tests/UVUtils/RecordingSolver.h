#pragma once

#include "Unfold3D/Unfold3D.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// Stands behind the contract of the solver in the place of the engine, for as long as it lives:
/// notes each command with its table, and answers as told.
///
/// Untold it answers as a solver that has nothing to say and leaves the UVs as they were imported.
class RecordingSolver
{
public:
    RecordingSolver();
    ~RecordingSolver();
    RecordingSolver(const RecordingSolver&) = delete;
    RecordingSolver& operator=(const RecordingSolver&) = delete;

    /// What a script can do while its command runs.
    struct Run
    {
        NU3D::CRef params;
        NU3D::Backend::ProgressCallback progress = nullptr;
        NU3D::Backend::StopCallback asksToStop = nullptr;
    };
    using Script = std::function<NU3D::CRef(const Run&)>;

    /// Has the script answer a command from here on.
    void on(const std::string& command, Script script) { scripts_[command] = std::move(script); }
    /// Has this done during a command, which answers nothing.
    void during(const std::string& command, std::function<void(const Run&)> action)
    {
        on(command, [action = std::move(action)](const Run& run) {
            action(run);
            return nothing();
        });
    }
    /// Has a command fail.
    void fail(const std::string& command)
    {
        on(command, [](const Run&) { return holding("Error", "no"); });
    }
    /// Forgets what it noted and what it was told.
    void reset();
    /// The island of each vertex, for an "Export" that asks for it.
    std::vector<int> islandOfVertex;

    /// The commands so far, in order.
    const std::vector<std::string>& commands() const { return commands_; }
    /// The entries of a command's table, in order, as "key = type value", "key (name)" or
    /// "key (enabled)". `nth` counts the commands of that name from 0.
    std::vector<std::string> table(const std::string& command, int nth = 0) const;
    /// Solver instances that have not been destroyed.
    int alive() const { return alive_; }

    static NU3D::CRef nothing();
    /// A result that holds one value.
    template <class Value>
    static NU3D::CRef holding(const char* name, const Value& value)
    {
        NU3D::CRef result = nothing();
        result->Add(name, NU3D::CRef(value, NU3D::VALPROP_VALUE));
        return result;
    }

private:
    class Instance;
    NU3D::CRef answer(const std::string& command, const Run& run);
    NU3D::CRef answerExport(const Run& run) const;

    std::map<std::string, Script> scripts_;
    std::vector<std::string> commands_;
    std::vector<std::vector<std::string>> tables_;
    std::vector<double> importedUVW_;
    int alive_ = 0;
};
