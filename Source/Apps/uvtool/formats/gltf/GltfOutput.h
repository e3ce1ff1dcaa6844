#pragma once

#include "formats/gltf/GltfEdit.h"

#include <filesystem>
#include <string>
#include <vector>

namespace uvtool
{

/// A file that goes with a glTF.
struct SideFile
{
    std::filesystem::path path;
    std::string bytes;
};

/// Makes the parts fit for a text file at `path`; what has to lie beside it is returned.
///
/// Buffers that are embedded stay so. Others that were changed, or had no address, become files
/// named after `path`; unchanged ones and images that lie beside the file of `folder` go along when
/// `path` is in another folder, under their own names unless another file has that name already.
std::vector<SideFile> prepareText(GltfParts& parts, const std::filesystem::path& path,
                                  const std::filesystem::path& folder);

/// Joins all buffers into one without an address, for a binary file; images beside the file of
/// `folder` become a part of it. Those that can't be found keep their address.
void prepareBinary(GltfParts& parts, const std::filesystem::path& folder);

/// True when two folders are one.
bool isSameFolder(const std::filesystem::path& a, const std::filesystem::path& b);

} // namespace uvtool
