#include "formats/gltf/GltfEdit.h"

#include "formats/gltf/BufferCompaction.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace uvtool
{
namespace
{

constexpr std::size_t alignment = 4;

std::size_t aligned(std::size_t size)
{
    return (size + alignment - 1) / alignment * alignment;
}

/// Elements of vertices begin at multiples of four bytes.
std::string padElements(const std::string& packed, std::size_t size, std::size_t stride)
{
    std::string padded(packed.size() / size * stride, '\0');
    for (std::size_t i = 0; i * size < packed.size(); ++i)
        std::memcpy(&padded[i * stride], &packed[i * size], size);
    return padded;
}

/// Sets a member to its default by leaving it out.
void setOrErase(Json& object, const char* key, std::size_t value)
{
    if (value != 0)
        object[key] = value;
    else
        object.erase(key);
}

std::size_t largestIndex(GltfComponent type)
{
    // The largest number of a type is kept for marking the end of a strip.
    switch (type) {
    case GltfComponent::UnsignedByte:
        return std::numeric_limits<std::uint8_t>::max() - 1U;
    case GltfComponent::UnsignedShort:
        return std::numeric_limits<std::uint16_t>::max() - 1U;
    default:
        return std::numeric_limits<std::uint32_t>::max() - 1U;
    }
}

} // namespace

GltfEdit::GltfEdit(const Json& json, std::span<const std::string> buffers)
    : json_(json), buffers_(buffers.begin(), buffers.end()), isChanged_(buffers.size(), false),
      model_(json, buffers), before_(countReferences(json))
{}

std::size_t GltfEdit::duplicate(std::size_t accessor)
{
    Json& accessors = json_["accessors"];
    accessors.push_back(Json(accessors[accessor]));
    return accessors.size() - 1;
}

std::size_t GltfEdit::addZeros(const char* type, std::size_t count)
{
    Json& accessors = json_["accessors"];
    accessors.push_back(
        {{"componentType", GltfComponent::Float}, {"count", count}, {"type", type}});
    return accessors.size() - 1;
}

void GltfEdit::addView(NewView view)
{
    // Not a number until it is placed, so that nothing counts it as a reference.
    json_[view.place] = nullptr;
    newViews_.push_back(std::move(view));
}

void GltfEdit::setData(std::size_t accessor, std::size_t count, std::string bytes,
                       std::size_t elementSize, Target target)
{
    Json& json = accessorJson(accessor);
    json["count"] = count;
    json.erase("byteOffset");
    json.erase("sparse");
    const std::size_t stride = target == Vertices ? aligned(elementSize) : elementSize;
    if (stride != elementSize)
        bytes = padElements(bytes, elementSize, stride);
    addView({std::move(bytes), stride != elementSize ? stride : 0, target,
             Json::json_pointer("/accessors/" + std::to_string(accessor) + "/bufferView")});
}

void GltfEdit::takeElements(std::size_t accessor, std::size_t from,
                            std::span<const std::uint32_t> elements)
{
    GltfAccessor old = model_.accessor(from);
    const Json sparse = old.sparse ? json_["accessors"][accessor]["sparse"] : Json();
    GltfAccessor base = old;
    base.sparse.reset();
    if (old.view)
        setData(accessor, elements.size(), model_.elements(base, elements), old.elementSize,
                Vertices);
    else
        accessorJson(accessor)["count"] = elements.size();
    if (old.sparse) {
        accessorJson(accessor)["sparse"] = sparse;
        takeSparse(accessor, old, old.sparse->elements, elements);
    }
}

void GltfEdit::takeSparse(std::size_t accessor, const GltfAccessor& from,
                          std::span<const std::uint32_t> old,
                          std::span<const std::uint32_t> elements)
{
    std::vector<std::uint32_t> replaced; // numbers of the new elements
    std::vector<std::uint32_t> sources;
    for (std::uint32_t i = 0; i < elements.size(); ++i) {
        if (!std::binary_search(old.begin(), old.end(), elements[i]))
            continue;
        replaced.push_back(i);
        sources.push_back(elements[i]);
    }
    Json& sparse = accessorJson(accessor)["sparse"];
    const GltfComponent least = sparse["indices"]["componentType"].get<GltfComponent>();
    const GltfComponent type = indexTypeFor(elements.size(), least);
    sparse["count"] = replaced.size();
    sparse["indices"]["componentType"] = type;
    sparse["indices"].erase("byteOffset");
    sparse["values"].erase("byteOffset");
    const std::string place = "/accessors/" + std::to_string(accessor) + "/sparse/";
    addView(
        {encodeIndices(type, replaced), 0, 0, Json::json_pointer(place + "indices/bufferView")});
    addView(
        {model_.elements(from, sources), 0, 0, Json::json_pointer(place + "values/bufferView")});
}

GltfParts GltfEdit::finish()
{
    const std::vector<std::size_t> orphans = orphanedViews();
    compactBuffers(orphans);
    placeViews(orphans);
    for (std::size_t i = 0; i < buffers_.size(); ++i) {
        if (isChanged_[i])
            json_["buffers"][i]["byteLength"] = buffers_[i].size();
    }
    return {std::move(json_), std::move(buffers_), std::move(isChanged_)};
}

/// Views that were named when the file was read and no longer are.
std::vector<std::size_t> GltfEdit::orphanedViews() const
{
    const GltfReferences after = countReferences(json_);
    std::vector<std::size_t> orphans;
    for (std::size_t view = 0; view < before_.ofView.size(); ++view) {
        if (before_.ofView[view] > 0 && after.ofView[view] == 0)
            orphans.push_back(view);
    }
    return orphans;
}

void GltfEdit::compactBuffers(std::span<const std::size_t> orphans)
{
    std::vector<std::vector<ByteRange>> freed(buffers_.size());
    std::vector<std::vector<ByteRange>> kept(buffers_.size());
    for (std::size_t i = 0; i < model_.views().size(); ++i) {
        const GltfView& view = model_.views()[i];
        const std::size_t end = view.offset + view.length;
        // What fills up a view to four bytes goes with it.
        if (std::binary_search(orphans.begin(), orphans.end(), i))
            freed[view.buffer].push_back({view.offset, aligned(end)});
        else
            kept[view.buffer].push_back({view.offset, end});
    }
    std::vector<BufferCompaction> compactions;
    for (std::size_t b = 0; b < buffers_.size(); ++b) {
        compactions.emplace_back(buffers_[b].size(), freed[b], kept[b]);
        if (freed[b].empty())
            continue;
        buffers_[b] = compactions[b].apply(buffers_[b]);
        isChanged_[b] = true;
    }
    for (std::size_t i = 0; i < model_.views().size(); ++i) {
        const GltfView& view = model_.views()[i];
        if (isChanged_[view.buffer] && !std::binary_search(orphans.begin(), orphans.end(), i))
            setOrErase(json_["bufferViews"][i], "byteOffset",
                       compactions[view.buffer].newOffset(view.offset));
    }
}

/// New data goes to the end of the first buffer; its views take the numbers of orphans.
void GltfEdit::placeViews(std::span<const std::size_t> orphans)
{
    if (newViews_.empty())
        return;
    Json& views = json_["bufferViews"];
    std::string& buffer = buffers_[0];
    isChanged_[0] = true;
    for (std::size_t i = 0; i < newViews_.size(); ++i) {
        const NewView& view = newViews_[i];
        buffer.resize(aligned(buffer.size()), '\0');
        Json json{{"buffer", 0}};
        setOrErase(json, "byteOffset", buffer.size());
        json["byteLength"] = view.bytes.size();
        setOrErase(json, "byteStride", view.stride);
        setOrErase(json, "target", view.target);
        buffer += view.bytes;
        std::size_t number = views.size();
        if (i < orphans.size())
            views[number = orphans[i]] = std::move(json);
        else
            views.push_back(std::move(json));
        json_[view.place] = number;
    }
}

std::string encodeIndices(GltfComponent type, std::span<const std::uint32_t> indices)
{
    const std::size_t size = componentSize(type);
    std::string bytes;
    bytes.reserve(indices.size() * size);
    for (const std::uint32_t index : indices) {
        for (std::size_t i = 0; i < size; ++i)
            bytes += static_cast<char>((index >> (8 * i)) & 0xFFU);
    }
    return bytes;
}

GltfComponent indexTypeFor(std::size_t vertexCount, GltfComponent least)
{
    GltfComponent type = least;
    if (vertexCount - 1 > largestIndex(type) && type == GltfComponent::UnsignedByte)
        type = GltfComponent::UnsignedShort;
    if (vertexCount - 1 > largestIndex(type))
        type = GltfComponent::UnsignedInt;
    return type;
}

std::string encodeFloats(std::span<const float> numbers)
{
    std::string bytes(numbers.size_bytes(), '\0');
    std::memcpy(bytes.data(), numbers.data(), bytes.size());
    return bytes;
}

} // namespace uvtool
