#pragma once

#include "formats/gltf/GltfJson.h"
#include "formats/gltf/GltfModel.h"
#include "formats/gltf/GltfReferences.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// What a glTF consists of, whatever the container.
struct GltfParts
{
    Json json;
    std::vector<std::string> buffers;
    std::vector<bool> isChanged; ///< by buffer
};

/// Puts new data into a file and takes out what nothing names any more.
///
/// Numbers of accessors and buffer views never change their meaning: new data takes the place of
/// what it replaces, or stands at the end.
class GltfEdit
{
public:
    /// What new data is for; the numbers are those of the file.
    enum Target : std::uint32_t
    {
        Vertices = 34962,
        Indices = 34963
    };

    GltfEdit(const Json& json, std::span<const std::string> buffers);

    Json& json() { return json_; }
    const GltfModel& model() const { return model_; }

    /// True when `references` is how often the file as it was read names the accessor: then those
    /// who do so own it and its number can be taken for its replacement.
    bool isOwnedBy(std::size_t accessor, std::size_t references) const
    {
        return before_.ofAccessor[accessor] == references;
    }

    /// A copy of an accessor, behind all others.
    std::size_t duplicate(std::size_t accessor);

    /// A new accessor without data, which stands for zeros.
    std::size_t addZeros(const char* type, std::size_t count);

    /// Gives an accessor these elements of the accessor `from` as it was read, their bytes as they
    /// are; a sparse one stays sparse.
    void takeElements(std::size_t accessor, std::size_t from,
                      std::span<const std::uint32_t> elements);

    /// Gives an accessor new data, packed. `count` and the view are set, the rest is the caller's.
    void setData(std::size_t accessor, std::size_t count, std::string bytes,
                 std::size_t elementSize, Target target);

    /// Places all new data. Call it last.
    GltfParts finish();

private:
    /// New data, and where its view has to be named.
    struct NewView
    {
        std::string bytes;
        std::size_t stride; ///< 0 for tightly packed
        std::uint32_t target;
        Json::json_pointer place;
    };

    Json& accessorJson(std::size_t accessor) { return json_["accessors"][accessor]; }
    void addView(NewView view);
    void takeSparse(std::size_t accessor, const GltfAccessor& from,
                    std::span<const std::uint32_t> old, std::span<const std::uint32_t> elements);
    std::vector<std::size_t> orphanedViews() const;
    void compactBuffers(std::span<const std::size_t> orphans);
    void placeViews(std::span<const std::size_t> orphans);

    Json json_;
    std::vector<std::string> buffers_;
    std::vector<bool> isChanged_;
    GltfModel model_; ///< of the file as it was read
    GltfReferences before_;
    std::vector<NewView> newViews_;
};

/// Whole numbers packed as indices of a type.
std::string encodeIndices(GltfComponent type, std::span<const std::uint32_t> indices);

/// The smallest type from `least` on that holds indices of this many vertices.
GltfComponent indexTypeFor(std::size_t vertexCount, GltfComponent least);

/// UVs as packed floats.
std::string encodeFloats(std::span<const float> numbers);

} // namespace uvtool
