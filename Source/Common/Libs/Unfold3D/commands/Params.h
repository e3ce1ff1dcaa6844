#pragma once

#include "Unfold3D/contract/CVal.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace unfold3d
{

/// Ends a command: its text becomes the "Error" of the result. Say what is wrong, where, and what
/// the user can do.
class CommandError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The parameters of a command, read by key. A key that is absent gives the fallback; one whose
/// value is of another kind ends the command with an error that names the key.
class Params
{
public:
    /// `table` may refer to nothing, which reads as an empty table.
    explicit Params(NU3D::CRef table) : table_(std::move(table)) {}

    bool has(const std::string& key) const;
    /// A name that was enabled or entered without a value reads as true.
    bool flag(const std::string& key, bool fallback) const;
    int integer(const std::string& key, int fallback) const;
    /// Takes an int, a float or a double.
    double number(const std::string& key, double fallback) const;
    std::string text(const std::string& key, const std::string& fallback) const;
    std::vector<int> ints(const std::string& key) const;
    std::vector<double> doubles(const std::string& key) const;
    NU3D::CBox2D box(const std::string& key, const NU3D::CBox2D& fallback) const;

private:
    const NU3D::CVal* valueUnder(const std::string& key) const;

    NU3D::CRef table_;
};

} // namespace unfold3d
