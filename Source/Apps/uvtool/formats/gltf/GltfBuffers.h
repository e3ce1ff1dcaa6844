#pragma once

#include "formats/gltf/GltfJson.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace uvtool
{

/// Where an address in a glTF points to.
struct GltfUri
{
    enum Kind : std::int32_t
    {
        Embedded, ///< the data itself stands in the address
        Beside,   ///< a file, relative to that of the glTF
        Elsewhere ///< on a network, or an absolute path
    };

    Kind kind = Elsewhere;
    std::filesystem::path file; ///< of Beside; relative, decoded
};

GltfUri parseUri(const std::string& uri);

/// The address in a buffer or an image; empty when there is none.
std::string uriIn(const Json& owner);

/// The address of a file beside the glTF.
std::string uriOfFile(const std::filesystem::path& relative);

/// The bytes of an embedded address. A GltfError when they are no base64.
std::string decodeEmbedded(std::string_view uri);

/// An address that holds the bytes; `like` is one whose media type it gets.
std::string encodeEmbedded(std::string_view bytes, std::string_view like);

/// A regular file beside the glTF, whole. A GltfError when it can't be read.
std::string readBeside(const std::filesystem::path& folder, const std::filesystem::path& file);

/// The bytes of all buffers of a file. `binary` is that part of a binary glTF, null without one.
/// Each has the length that the file names. A GltfError names the buffer.
std::vector<std::string> loadBuffers(const Json& json, const std::filesystem::path& folder,
                                     const std::optional<std::string_view>& binary);

} // namespace uvtool
