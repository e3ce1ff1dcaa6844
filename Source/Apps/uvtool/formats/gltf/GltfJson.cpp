#include "formats/gltf/GltfJson.h"

#include "document/PlaceInText.h"

#include <cmath>
#include <utility>

namespace uvtool
{
namespace
{

/// Real files have about ten levels.
constexpr int deepestNesting = 200;

/// Whole numbers up to this are exact in a double, and far above any size of a file.
constexpr double largestWhole = 9007199254740992.0;

bool refuseDeepNesting(int depth, Json::parse_event_t, Json&)
{
    if (depth > deepestNesting)
        throw GltfError("JSON with more than " + std::to_string(deepestNesting) + " levels");
    return true;
}

} // namespace

Json parseGltfJson(std::string_view text)
{
    Json json;
    try {
        json = Json::parse(text.begin(), text.end(), refuseDeepNesting);
    } catch (const Json::parse_error& error) {
        throw GltfError("is no glTF: not valid JSON at " + placeOfByte(text, error.byte));
    } catch (const Json::exception&) {
        throw GltfError("is no glTF: JSON with a number that is too large");
    }
    if (!json.is_object())
        throw GltfError("is no glTF: the JSON is no object");
    return json;
}

std::optional<std::size_t> wholeNumber(const Json& value)
{
    if (!value.is_number())
        return std::nullopt;
    const auto number = value.get<double>();
    const bool isWhole = number >= 0 && number <= largestWhole && number == std::floor(number);
    return isWhole ? std::optional(static_cast<std::size_t>(number)) : std::nullopt;
}

std::size_t checkedNumber(const Json& value)
{
    return wholeNumber(value).value_or(0);
}

GltfObject::GltfObject(const Json& json, std::string place) : json_(&json), place_(std::move(place))
{
    if (!json.is_object())
        fail("is no object");
}

std::size_t GltfObject::count(const char* key) const
{
    if (!has(key))
        fail(std::string("has no ") + key);
    const std::optional<std::size_t> number = wholeNumber((*json_)[key]);
    if (!number)
        fail(std::string("has a ") + key + " that is no whole number from 0");
    return *number;
}

std::size_t GltfObject::countOr(const char* key, std::size_t otherwise) const
{
    return has(key) ? count(key) : otherwise;
}

std::optional<std::size_t> GltfObject::index(const char* key, std::size_t size) const
{
    if (!has(key))
        return std::nullopt;
    const std::size_t number = count(key);
    if (number >= size)
        fail("has the " + std::string(key) + ' ' + std::to_string(number) +
             ", which is not in the file");
    return number;
}

std::string GltfObject::textOr(const char* key, std::string otherwise) const
{
    if (!has(key))
        return otherwise;
    if (!(*json_)[key].is_string())
        fail(std::string("has a ") + key + " that is no text");
    return (*json_)[key].get<std::string>();
}

bool GltfObject::flag(const char* key) const
{
    return has(key) && (*json_)[key].is_boolean() && (*json_)[key].get<bool>();
}

std::optional<GltfObject> GltfObject::object(const char* key) const
{
    if (!has(key))
        return std::nullopt;
    return GltfObject((*json_)[key], place_ + ", " + key);
}

void GltfObject::fail(const std::string& what) const
{
    throw GltfError(place_ + ' ' + what);
}

const Json& gltfArray(const Json& root, const char* key)
{
    static const Json none = Json::array();
    const auto found = root.find(key);
    if (found == root.end())
        return none;
    if (!found->is_array())
        throw GltfError(std::string("is no glTF: ") + key + " is no list");
    return *found;
}

GltfObject gltfElement(const Json& root, const char* key, const char* name, std::size_t index)
{
    return {gltfArray(root, key)[index], name + (' ' + std::to_string(index))};
}

} // namespace uvtool
