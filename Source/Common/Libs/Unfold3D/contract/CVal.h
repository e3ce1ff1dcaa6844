#pragma once

#include "Unfold3D/contract/CRef.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace NU3D
{

/// A value behind a handle: a number, a text, an array, a box, or a table of named values.
///
/// A table keeps its entries in the order in which they were entered. A name can stand in it in
/// three ways that are told apart: with a value (`Add(name, value)`), without one (`Add(name)`),
/// and as an option that is switched on (`Enable(name)`).
class CVal
{
public:
    /// How a name stands in a table.
    enum Mark : std::int32_t
    {
        WithValue,
        NameOnly,
        Enabled
    };

    /// One entry of a table.
    struct Entry
    {
        std::string name;
        Mark mark = WithValue;
        CRef value; ///< refers to nothing unless mark is WithValue
    };

    using Table = std::vector<Entry>;
    using Content = std::variant<Table, bool, int, float, double, std::string, std::vector<int>,
                                 std::vector<double>, CBox2D>;

    explicit CVal(Content content);
    virtual ~CVal();
    CVal(const CVal&) = delete;
    CVal& operator=(const CVal&) = delete;

    /// Enters a value under a name. A name that stands already is replaced where it stands.
    void Add(const std::string& name, CRef value);
    /// Enters a name without a value.
    void Add(const std::string& name);
    /// Switches a named option on.
    void Enable(const std::string& name);

    /// Does the name stand in this table, in any of the three ways?
    bool Exists(const std::string& name) const;
    /// The value under a name; a handle to nothing where there is none.
    CRef GetRef(const std::string& name) const;
    /// The array under a name; empty where there is none or where it is of another type.
    std::vector<int> GetInts(const std::string& name) const;
    std::vector<double> GetDoubles(const std::string& name) const;

    /// Called before GetRef on tables whose values are made late; does nothing here.
    virtual void UpdateIfNeeded();

    const Content& content() const { return content_; }
    /// The entries of a table; empty for any other value.
    const Table& entries() const;

    /// The value as a T, or nothing where it is of another type.
    template <class T>
    const T* as() const
    {
        return std::get_if<T>(&content_);
    }

private:
    const Entry* find(std::string_view name) const;
    void enter(Entry entry);

    Content content_;
};

} // namespace NU3D
