#pragma once

#include "document/Document.h"

#include <filesystem>

namespace uvtool
{

/// Reads any file that the Assimp library knows (PLY, STL, OFF, 3DS, DAE, FBX and others).
///
/// Each of its meshes that has faces is a geometry, polygons stay polygons, points and lines are
/// passed over. Vertices are taken as they are: none are joined. UV channels are the slots.
/// `toWorld` is that of the first node that shows the mesh. There is no payload, so that only
/// another format can be written.
///
/// A FileError when the library refuses the file or what it gives isn't fit for use.
Document readAssimp(const std::filesystem::path& path);

/// True when the library has a reader for the extension of `path`.
bool isAssimpFormat(const std::filesystem::path& path);

} // namespace uvtool
