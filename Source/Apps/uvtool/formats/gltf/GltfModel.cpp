#include "formats/gltf/GltfModel.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace uvtool
{
namespace
{

GltfComponent componentOf(const GltfObject& owner)
{
    const std::size_t type = owner.count("componentType");
    for (const GltfComponent known :
         {GltfComponent::Byte, GltfComponent::UnsignedByte, GltfComponent::Short,
          GltfComponent::UnsignedShort, GltfComponent::UnsignedInt, GltfComponent::Float})
    {
        if (type == static_cast<std::size_t>(known))
            return known;
    }
    owner.fail("has the unknown componentType " + std::to_string(type));
}

struct ElementShape
{
    const char* type;
    std::size_t columns;
    std::size_t rows;
};

constexpr std::array elementShapes{
    ElementShape{"SCALAR", 1, 1}, ElementShape{"VEC2", 1, 2}, ElementShape{"VEC3", 1, 3},
    ElementShape{"VEC4", 1, 4},   ElementShape{"MAT2", 2, 2}, ElementShape{"MAT3", 3, 3},
    ElementShape{"MAT4", 4, 4},
};

ElementShape shapeOf(const GltfObject& owner)
{
    const std::string type = owner.textOr("type", "");
    for (const ElementShape& shape : elementShapes) {
        if (type == shape.type)
            return shape;
    }
    owner.fail("has the unknown type \"" + type + '"');
}

/// Columns of matrices begin at multiples of four bytes.
std::size_t elementSizeOf(const ElementShape& shape, GltfComponent component)
{
    const std::size_t column = shape.rows * componentSize(component);
    return shape.columns == 1 ? column : shape.columns * ((column + 3) / 4 * 4);
}

bool isIndexType(GltfComponent type)
{
    return type == GltfComponent::UnsignedByte || type == GltfComponent::UnsignedShort ||
           type == GltfComponent::UnsignedInt;
}

template <class T>
T load(const char* bytes)
{
    T value{};
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

double numberAt(const char* bytes, GltfComponent type)
{
    switch (type) {
    case GltfComponent::Byte:
        return load<std::int8_t>(bytes);
    case GltfComponent::UnsignedByte:
        return load<std::uint8_t>(bytes);
    case GltfComponent::Short:
        return load<std::int16_t>(bytes);
    case GltfComponent::UnsignedShort:
        return load<std::uint16_t>(bytes);
    case GltfComponent::UnsignedInt:
        return load<std::uint32_t>(bytes);
    case GltfComponent::Float:
        return static_cast<double>(load<float>(bytes));
    }
    return 0;
}

/// What 1 is stored as in a normalised component.
double storedOne(GltfComponent type)
{
    switch (type) {
    case GltfComponent::Byte:
        return std::numeric_limits<std::int8_t>::max();
    case GltfComponent::UnsignedByte:
        return std::numeric_limits<std::uint8_t>::max();
    case GltfComponent::Short:
        return std::numeric_limits<std::int16_t>::max();
    case GltfComponent::UnsignedShort:
        return std::numeric_limits<std::uint16_t>::max();
    case GltfComponent::UnsignedInt:
        return std::numeric_limits<std::uint32_t>::max();
    case GltfComponent::Float:
        return 1;
    }
    return 1;
}

/// True when `count` elements, `stride` apart, end within `length`.
bool fits(std::size_t offset, std::size_t count, std::size_t stride, std::size_t size,
          std::size_t length)
{
    if (offset > length || size > length - offset)
        return false;
    return count - 1 <= (length - offset - size) / stride;
}

} // namespace

std::size_t componentSize(GltfComponent type)
{
    switch (type) {
    case GltfComponent::Byte:
    case GltfComponent::UnsignedByte:
        return 1;
    case GltfComponent::Short:
    case GltfComponent::UnsignedShort:
        return 2;
    case GltfComponent::UnsignedInt:
    case GltfComponent::Float:
        return 4;
    }
    return 4;
}

GltfModel::GltfModel(const Json& json, std::span<const std::string> buffers)
    : json_(&json), buffers_(buffers)
{
    readViews();
}

void GltfModel::readViews()
{
    const std::size_t count = gltfArray(*json_, "bufferViews").size();
    views_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const GltfObject object = gltfElement(*json_, "bufferViews", "buffer view", i);
        const std::optional<std::size_t> buffer = object.index("buffer", buffers_.size());
        if (!buffer)
            object.fail("has no buffer");
        const GltfView view{*buffer, object.countOr("byteOffset", 0), object.count("byteLength"),
                            object.countOr("byteStride", 0)};
        const std::size_t size = buffers_[view.buffer].size();
        if (view.offset > size || view.length > size - view.offset)
            object.fail("reaches over the end of buffer " + std::to_string(view.buffer));
        views_.push_back(view);
    }
}

GltfAccessor GltfModel::accessor(std::size_t index) const
{
    const GltfObject object = gltfElement(*json_, "accessors", "accessor", index);
    GltfAccessor accessor;
    accessor.view = object.index("bufferView", views_.size());
    accessor.offset = object.countOr("byteOffset", 0);
    accessor.count = object.count("count");
    accessor.component = componentOf(object);
    accessor.isNormalized = object.flag("normalized");
    const ElementShape shape = shapeOf(object);
    accessor.dimension = shape.columns * shape.rows;
    accessor.elementSize = elementSizeOf(shape, accessor.component);
    if (accessor.count == 0 || accessor.count >= std::numeric_limits<std::uint32_t>::max())
        object.fail("has " + std::to_string(accessor.count) + " elements");
    checkRange(object, accessor);
    if (const std::optional<GltfObject> sparse = object.object("sparse"))
        accessor.sparse = readSparse(*sparse, accessor);
    return accessor;
}

void GltfModel::checkRange(const GltfObject& owner, const GltfAccessor& accessor) const
{
    if (!accessor.view)
        return;
    const GltfView& view = views_[*accessor.view];
    if (view.stride != 0 && view.stride < accessor.elementSize)
        owner.fail("has elements larger than the stride of its buffer view");
    const std::size_t stride = view.stride != 0 ? view.stride : accessor.elementSize;
    if (!fits(accessor.offset, accessor.count, stride, accessor.elementSize, view.length))
        owner.fail("reaches over the end of buffer view " + std::to_string(*accessor.view));
}

GltfAccessor::Sparse GltfModel::readSparse(const GltfObject& object,
                                           const GltfAccessor& accessor) const
{
    const std::size_t count = object.count("count");
    const std::optional<GltfObject> indices = object.object("indices");
    const std::optional<GltfObject> values = object.object("values");
    if (count == 0 || count > accessor.count || !indices || !values)
        object.fail("is incomplete");

    const auto viewOf = [this](const GltfObject& owner, std::size_t offset, std::size_t elements,
                               std::size_t size) {
        const std::optional<std::size_t> view = owner.index("bufferView", views_.size());
        if (!view || !fits(offset, elements, size, size, views_[*view].length))
            owner.fail("reaches over the end of its buffer view");
        return *view;
    };
    const GltfComponent type = componentOf(*indices);
    if (!isIndexType(type))
        indices->fail("has a componentType that isn't one of indices");
    const std::size_t offset = indices->countOr("byteOffset", 0);
    const std::size_t view = viewOf(*indices, offset, count, componentSize(type));

    GltfAccessor::Sparse sparse;
    sparse.elements = decodeIndices(type, bytesAt(view, offset), count);
    for (std::size_t i = 0; i < count; ++i) {
        if (sparse.elements[i] >= accessor.count ||
            (i > 0 && sparse.elements[i] <= sparse.elements[i - 1]))
            indices->fail("doesn't ascend within the elements of the accessor");
    }
    sparse.valuesOffset = values->countOr("byteOffset", 0);
    sparse.valuesView = viewOf(*values, sparse.valuesOffset, count, accessor.elementSize);
    return sparse;
}

std::string GltfModel::elements(const GltfAccessor& accessor,
                                std::span<const std::uint32_t> numbers) const
{
    const std::size_t size = accessor.elementSize;
    std::string packed(numbers.size() * size, '\0');
    if (accessor.view) {
        const GltfView& view = views_[*accessor.view];
        const std::size_t stride = view.stride != 0 ? view.stride : size;
        const char* const first = bytesAt(*accessor.view, accessor.offset);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            std::memcpy(&packed[i * size], first + numbers[i] * stride, size);
    }
    if (accessor.sparse) {
        const std::vector<std::uint32_t>& replaced = accessor.sparse->elements;
        const char* const first =
            bytesAt(accessor.sparse->valuesView, accessor.sparse->valuesOffset);
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const auto found = std::lower_bound(replaced.begin(), replaced.end(), numbers[i]);
            if (found == replaced.end() || *found != numbers[i])
                continue;
            const auto at = static_cast<std::size_t>(found - replaced.begin());
            std::memcpy(&packed[i * size], first + at * size, size);
        }
    }
    return packed;
}

GltfAttributes GltfModel::attributes(const GltfObject& owner, const char* key) const
{
    const std::optional<GltfObject> map = key == nullptr ? std::optional(owner) : owner.object(key);
    GltfAttributes attributes;
    if (!map)
        return attributes;
    for (const auto& [semantic, value] : map->json().items())
        attributes.emplace_back(semantic,
                                map->index(semantic.c_str(), accessorCount()).value_or(0));
    return attributes;
}

const char* GltfModel::bytesAt(std::size_t view, std::size_t offset) const
{
    return buffers_[views_[view].buffer].data() + views_[view].offset + offset;
}

std::vector<double> decodeComponents(const GltfAccessor& accessor, const std::string& elements)
{
    const std::size_t size = componentSize(accessor.component);
    const double one = accessor.isNormalized ? storedOne(accessor.component) : 1;
    std::vector<double> numbers(elements.size() / accessor.elementSize * accessor.dimension);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t element = i / accessor.dimension;
        const std::size_t component = i % accessor.dimension;
        const char* const bytes = &elements[element * accessor.elementSize + component * size];
        // The lowest of the signed numbers stands for -1 too.
        numbers[i] = numberAt(bytes, accessor.component) / one;
        if (accessor.isNormalized)
            numbers[i] = std::max(numbers[i], -1.0);
    }
    return numbers;
}

std::vector<std::uint32_t> decodeIndices(GltfComponent type, const char* bytes, std::size_t count)
{
    std::vector<std::uint32_t> indices(count);
    for (std::size_t i = 0; i < count; ++i)
        indices[i] = static_cast<std::uint32_t>(numberAt(bytes + i * componentSize(type), type));
    return indices;
}

} // namespace uvtool
