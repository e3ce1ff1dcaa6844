#pragma once

#include "Unfold3D/Unfold3D.h"

namespace kyUnfold3D
{

/// The table of named values that goes with a command of the solver, in the order of the calls.
class SolverTable
{
public:
    SolverTable() : table_(NU3D::VALTYPE_TABLE, NU3D::VALPROP_VALUE) {}

    /// The value keeps the type that it has here: the solver tells a float from a double.
    template <class Value>
    SolverTable& add(const char* key, const Value& value)
    {
        table_->Add(key, NU3D::CRef(value, NU3D::VALPROP_VALUE));
        return *this;
    }
    /// Enters a key without a value.
    SolverTable& addName(const char* key)
    {
        table_->Add(key);
        return *this;
    }
    /// Switches an option on.
    SolverTable& enable(const char* key)
    {
        table_->Enable(key);
        return *this;
    }

    const NU3D::CRef& ref() const { return table_; }

private:
    NU3D::CRef table_;
};

} // namespace kyUnfold3D
