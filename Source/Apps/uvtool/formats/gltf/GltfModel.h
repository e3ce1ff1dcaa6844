#pragma once

#include "formats/gltf/GltfJson.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace uvtool
{

/// How the components of an accessor are stored; the numbers are those of the file.
enum class GltfComponent : std::uint32_t
{
    Byte = 5120,
    UnsignedByte = 5121,
    Short = 5122,
    UnsignedShort = 5123,
    UnsignedInt = 5125,
    Float = 5126
};

std::size_t componentSize(GltfComponent type);

struct GltfView
{
    std::size_t buffer = 0;
    std::size_t offset = 0;
    std::size_t length = 0;
    std::size_t stride = 0; ///< 0 when elements follow each other without gaps
};

/// A list of vectors somewhere in the buffers.
struct GltfAccessor
{
    /// Elements that replace those of the list itself.
    struct Sparse
    {
        std::vector<std::uint32_t> elements; ///< ascending
        std::size_t valuesView = 0;
        std::size_t valuesOffset = 0;
    };

    std::optional<std::size_t> view; ///< null when all elements are zero
    std::size_t offset = 0;          ///< in the view
    std::size_t count = 0;
    GltfComponent component = GltfComponent::Float;
    bool isNormalized = false;
    std::size_t dimension = 1;   ///< components of an element
    std::size_t elementSize = 4; ///< bytes of an element, with the gaps in some matrices
    std::optional<Sparse> sparse;
};

/// Accessors of a primitive by their semantic, in the order of the file.
using GltfAttributes = std::vector<std::pair<std::string, std::size_t>>;

/// The ways in which indices become triangles; the numbers are those of the file.
enum class GltfMode : std::uint32_t
{
    Triangles = 4,
    TriangleStrip = 5,
    TriangleFan = 6
};

/// The parts of a file that the tool works with. All that stands here has been checked: indices are
/// in range, elements lie inside their views and these inside their buffers.
class GltfModel
{
public:
    /// `buffers` are the bytes of the file's buffers; they and `json` have to outlive the model.
    GltfModel(const Json& json, std::span<const std::string> buffers);

    const Json& json() const { return *json_; }
    const std::vector<GltfView>& views() const { return views_; }
    std::size_t accessorCount() const { return gltfArray(*json_, "accessors").size(); }

    /// Reads and checks an accessor.
    GltfAccessor accessor(std::size_t index) const;

    /// The bytes of the given elements, one after another without gaps.
    std::string elements(const GltfAccessor& accessor,
                         std::span<const std::uint32_t> numbers) const;

    /// The attributes of a primitive or a morph target.
    GltfAttributes attributes(const GltfObject& owner, const char* key) const;

private:
    const char* bytesAt(std::size_t view, std::size_t offset) const;
    void readViews();
    void checkRange(const GltfObject& owner, const GltfAccessor& accessor) const;
    GltfAccessor::Sparse readSparse(const GltfObject& sparse, const GltfAccessor& accessor) const;

    const Json* json_;
    std::span<const std::string> buffers_;
    std::vector<GltfView> views_;
};

/// The components of packed elements as numbers, normalised ones from 0 or -1 to 1.
/// [count * dimension]
std::vector<double> decodeComponents(const GltfAccessor& accessor, const std::string& elements);

/// Whole numbers of a packed list of indices.
std::vector<std::uint32_t> decodeIndices(GltfComponent type, const char* bytes, std::size_t count);

} // namespace uvtool
