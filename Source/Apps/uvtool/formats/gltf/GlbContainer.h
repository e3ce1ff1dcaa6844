#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace uvtool
{

/// A chunk of a binary glTF, a view into its bytes.
struct GlbChunk
{
    static constexpr std::uint32_t jsonType = 0x4E4F534A;   ///< "JSON"
    static constexpr std::uint32_t binaryType = 0x004E4942; ///< "BIN"

    std::uint32_t type = 0;
    std::string_view bytes;
};

/// True when a file begins like a binary glTF.
bool isGlb(std::string_view file);

/// The chunks of a binary glTF; the first one is JSON, the second one binary if there is such a
/// one. A GltfError when the file is cut off or is no binary glTF of version 2.
std::vector<GlbChunk> splitGlb(std::string_view file);

/// Puts chunks together; JSON is filled up with spaces, the others with zeros. A GltfError when the
/// whole is 4 GB or more, which the format can't hold.
std::string joinGlb(std::span<const GlbChunk> chunks);

} // namespace uvtool
