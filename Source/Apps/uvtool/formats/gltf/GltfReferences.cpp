#include "formats/gltf/GltfReferences.h"

#include <string>

namespace uvtool
{
namespace
{

/// Extensions of the standard don't name accessors.
bool isStandardExtension(const std::string& name)
{
    return name.starts_with("KHR_");
}

class ReferenceCounter
{
public:
    explicit ReferenceCounter(const Json& json) : json_(json)
    {
        references_.ofAccessor.assign(gltfArray(json, "accessors").size(), 0);
        references_.ofView.assign(gltfArray(json, "bufferViews").size(), 0);
    }

    GltfReferences count()
    {
        countMeshes();
        for (const Json& animation : gltfArray(json_, "animations")) {
            for (const Json& sampler : listIn(animation, "samplers")) {
                countMember(references_.ofAccessor, sampler, "input");
                countMember(references_.ofAccessor, sampler, "output");
            }
        }
        for (const Json& skin : gltfArray(json_, "skins"))
            countMember(references_.ofAccessor, skin, "inverseBindMatrices");
        countEverywhere(json_);
        return std::move(references_);
    }

private:
    static const Json& listIn(const Json& owner, const char* key)
    {
        static const Json none = Json::array();
        return owner.is_object() && owner.contains(key) ? owner[key] : none;
    }

    static void countNumber(std::vector<std::uint32_t>& counts, const Json& value)
    {
        const std::optional<std::size_t> number = wholeNumber(value);
        if (number && *number < counts.size())
            ++counts[*number];
    }

    static void countMember(std::vector<std::uint32_t>& counts, const Json& owner, const char* key)
    {
        if (owner.is_object() && owner.contains(key))
            countNumber(counts, owner[key]);
    }

    void countMeshes()
    {
        for (const Json& mesh : gltfArray(json_, "meshes")) {
            for (const Json& primitive : listIn(mesh, "primitives")) {
                countMember(references_.ofAccessor, primitive, "indices");
                countAllNumbers(listIn(primitive, "attributes"));
                countAllNumbers(listIn(primitive, "targets"));
            }
        }
    }

    void countAllNumbers(const Json& json)
    {
        countNumber(references_.ofAccessor, json);
        if (json.is_structured()) {
            for (const Json& member : json)
                countAllNumbers(member);
        }
    }

    /// Views are named under the same key wherever they are; extensions may be anywhere.
    void countEverywhere(const Json& json)
    {
        if (json.is_object()) {
            countMember(references_.ofView, json, "bufferView");
            if (json.contains("extensions") && json["extensions"].is_object()) {
                for (const auto& [name, extension] : json["extensions"].items()) {
                    if (!isStandardExtension(name))
                        countAllNumbers(extension);
                }
            }
        }
        if (json.is_structured()) {
            for (const Json& member : json)
                countEverywhere(member);
        }
    }

    const Json& json_;
    GltfReferences references_;
};

} // namespace

GltfReferences countReferences(const Json& json)
{
    return ReferenceCounter(json).count();
}

} // namespace uvtool
