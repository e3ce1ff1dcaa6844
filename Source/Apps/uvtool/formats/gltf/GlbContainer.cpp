#include "formats/gltf/GlbContainer.h"

#include "formats/gltf/GltfJson.h"

#include <limits>

namespace uvtool
{
namespace
{

constexpr std::string_view magic = "glTF";
constexpr std::size_t headerSize = 12;
constexpr std::size_t chunkHeaderSize = 8;

/// Four bytes, the lowest first. They have to be there.
std::uint32_t wordAt(std::string_view bytes, std::size_t at)
{
    std::uint32_t word = 0;
    for (std::size_t i = 4; i-- > 0;)
        word = (word << 8U) | static_cast<unsigned char>(bytes[at + i]);
    return word;
}

void addWord(std::string& bytes, std::size_t word)
{
    for (unsigned i = 0; i < 4; ++i)
        bytes += static_cast<char>((word >> (8 * i)) & 0xFFU);
}

[[noreturn]] void failCutOff()
{
    throw GltfError("is cut off: its header says that it is longer");
}

} // namespace

bool isGlb(std::string_view file)
{
    return file.substr(0, magic.size()) == magic;
}

std::vector<GlbChunk> splitGlb(std::string_view file)
{
    if (!isGlb(file))
        throw GltfError("is no binary glTF (is it a text under the name of one?)");
    if (file.size() < headerSize)
        failCutOff();
    if (wordAt(file, 4) != 2)
        throw GltfError("is a binary glTF of version " + std::to_string(wordAt(file, 4)) +
                        "; only version 2 can be read");
    const std::size_t length = wordAt(file, 8);
    if (length > file.size())
        failCutOff();

    std::vector<GlbChunk> chunks;
    std::size_t at = headerSize;
    while (at + chunkHeaderSize <= length) {
        const std::size_t size = wordAt(file, at);
        const std::uint32_t type = wordAt(file, at + 4);
        at += chunkHeaderSize;
        if (size > length - at)
            throw GltfError("is damaged: a part of it reaches over the end");
        chunks.push_back({type, file.substr(at, size)});
        at += size;
    }
    if (chunks.empty() || chunks[0].type != GlbChunk::jsonType)
        throw GltfError("is damaged: a binary glTF without its JSON part");
    return chunks;
}

std::string joinGlb(std::span<const GlbChunk> chunks)
{
    const auto padded = [](std::size_t size) { return (size + 3) / 4 * 4; };
    std::size_t length = headerSize;
    for (const GlbChunk& chunk : chunks)
        length += chunkHeaderSize + padded(chunk.bytes.size());
    if (length > std::numeric_limits<std::uint32_t>::max())
        throw GltfError("would be larger than the 4 GB that a .glb can hold; write a .gltf");

    std::string file(magic);
    file.reserve(length);
    addWord(file, 2);
    addWord(file, length);
    for (const GlbChunk& chunk : chunks) {
        const std::size_t size = padded(chunk.bytes.size());
        addWord(file, size);
        addWord(file, chunk.type);
        file += chunk.bytes;
        file.append(size - chunk.bytes.size(), chunk.type == GlbChunk::jsonType ? ' ' : '\0');
    }
    return file;
}

} // namespace uvtool
