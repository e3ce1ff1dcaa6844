#pragma once

#include <tiny_gltf.h>

#include <cstring>
#include <string>
#include <vector>

/// What an independent reader finds at the triangle corners of a file.
namespace gltfCorners
{

inline tinygltf::Model load(const std::string& path)
{
    tinygltf::TinyGLTF loader;
    loader.SetImageLoader([](tinygltf::Image*, int, std::string*, std::string*, int, int,
                             const unsigned char*, int, void*) { return true; },
                          nullptr);
    tinygltf::Model model;
    std::string error;
    std::string warning;
    const bool isBinary = path.ends_with(".glb");
    const bool isLoaded = isBinary ? loader.LoadBinaryFromFile(&model, &error, &warning, path)
                                   : loader.LoadASCIIFromFile(&model, &error, &warning, path);
    if (!isLoaded)
        throw std::runtime_error(error);
    return model;
}

inline const unsigned char* bytesAt(const tinygltf::Model& model, int view, std::size_t offset)
{
    const tinygltf::BufferView& v = model.bufferViews.at(static_cast<std::size_t>(view));
    return &model.buffers.at(static_cast<std::size_t>(v.buffer)).data.at(v.byteOffset + offset);
}

inline std::uint32_t indexAt(const unsigned char* bytes, int type, std::size_t i)
{
    const auto size = static_cast<std::size_t>(
        tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(type)));
    std::uint32_t value = 0;
    std::memcpy(&value, bytes + i * size, size);
    return value;
}

/// The bytes of each element, sparse ones put in.
inline std::vector<std::string> elements(const tinygltf::Model& model, int index)
{
    const tinygltf::Accessor& accessor = model.accessors.at(static_cast<std::size_t>(index));
    const auto unsignedOf = [](int number) { return static_cast<std::uint32_t>(number); };
    const std::size_t size =
        std::size_t{
            unsignedOf(tinygltf::GetComponentSizeInBytes(unsignedOf(accessor.componentType)))} *
        unsignedOf(tinygltf::GetNumComponentsInType(unsignedOf(accessor.type)));
    std::vector<std::string> all(accessor.count, std::string(size, '\0'));
    if (accessor.bufferView >= 0) {
        const tinygltf::BufferView& view =
            model.bufferViews.at(static_cast<std::size_t>(accessor.bufferView));
        const auto stride = static_cast<std::size_t>(accessor.ByteStride(view));
        for (std::size_t i = 0; i < all.size(); ++i)
            std::memcpy(all[i].data(),
                        bytesAt(model, accessor.bufferView, accessor.byteOffset + i * stride),
                        size);
    }
    if (accessor.sparse.isSparse) {
        const auto& sparse = accessor.sparse;
        const auto at = [](int offset) { return static_cast<std::size_t>(offset); };
        for (std::size_t i = 0; i < at(sparse.count); ++i) {
            const std::uint32_t element =
                indexAt(bytesAt(model, sparse.indices.bufferView, at(sparse.indices.byteOffset)),
                        sparse.indices.componentType, i);
            std::memcpy(
                all.at(element).data(),
                bytesAt(model, sparse.values.bufferView, at(sparse.values.byteOffset) + i * size),
                size);
        }
    }
    return all;
}

inline std::vector<std::uint32_t> indices(const tinygltf::Model& model,
                                          const tinygltf::Primitive& primitive)
{
    std::vector<std::uint32_t> list;
    for (const std::string& bytes : elements(model, primitive.indices)) {
        std::uint32_t value = 0;
        std::memcpy(&value, bytes.data(), bytes.size());
        list.push_back(value);
    }
    return list;
}

/// The elements of an accessor at the corners of an indexed list of triangles.
inline std::vector<std::string> atCorners(const tinygltf::Model& model,
                                          const tinygltf::Primitive& primitive, int accessor)
{
    const std::vector<std::string> all = elements(model, accessor);
    std::vector<std::string> corners;
    for (const std::uint32_t index : indices(model, primitive))
        corners.push_back(all.at(index));
    return corners;
}

} // namespace gltfCorners
