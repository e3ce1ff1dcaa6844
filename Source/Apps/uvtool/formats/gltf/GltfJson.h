#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace uvtool
{

/// JSON whose members keep the order of the file.
using Json = nlohmann::ordered_json;

/// What is wrong with a glTF file; one line, without the name of the file. Never leaves the
/// directory of this format.
struct GltfError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Parses a text. A GltfError names line and column. Nesting is limited, so that walking the result
/// cannot run out of stack.
Json parseGltfJson(std::string_view text);

/// An object of the file and its name in messages, such as "accessor 5".
class GltfObject
{
public:
    GltfObject(const Json& json, std::string place);

    const Json& json() const { return *json_; }
    const std::string& place() const { return place_; }

    bool has(const char* key) const { return json_->contains(key); }

    /// Whole numbers from 0; a GltfError when the member is something else.
    std::size_t count(const char* key) const;
    std::size_t countOr(const char* key, std::size_t otherwise) const;

    /// A number of another object; null when there is no such member. A GltfError when it isn't
    /// below `size`.
    std::optional<std::size_t> index(const char* key, std::size_t size) const;

    std::string textOr(const char* key, std::string otherwise) const;
    bool flag(const char* key) const;

    /// A member that is an object.
    std::optional<GltfObject> object(const char* key) const;

    [[noreturn]] void fail(const std::string& what) const;

private:
    const Json* json_;
    std::string place_;
};

/// The array `key` of the root; empty when there is none.
const Json& gltfArray(const Json& root, const char* key);

/// Element `index` of the array `key` of the root, named "`name` `index`".
GltfObject gltfElement(const Json& root, const char* key, const char* name, std::size_t index);

/// A whole number from 0, also one written with a decimal point.
std::optional<std::size_t> wholeNumber(const Json& value);

/// A whole number that was checked when the file was read.
std::size_t checkedNumber(const Json& value);

} // namespace uvtool
