#pragma once

#include "document/Document.h"

#include <filesystem>

namespace uvtool
{

/// Reads a glTF 2.0, as text (.gltf, buffers embedded or beside it) or binary (.glb).
///
/// Each primitive of triangles, strips and fans included, is a geometry; points and lines stay in
/// the file untouched. TEXCOORD_0 to 7 are the slots, v turned upward. `toWorld` is that of the
/// first node of the scene that shows the mesh.
///
/// A FileError names the accessor, primitive or buffer. Compressed files
/// (KHR_draco_mesh_compression, EXT_meshopt_compression) are refused.
Document readGltf(const std::filesystem::path& path);

/// Writes a glTF 2.0, binary when the name ends in .glb.
///
/// What came from a glTF is written back whole; only the changed UV slots are new, and where they
/// split vertices, the other attributes, morph targets and indices of these primitives, their bytes
/// copied as they are. When nothing was changed, so is the text. Data goes into a file named after
/// `path` with the extension .bin, or stays embedded where it was; images beside a file go along to
/// another folder as files, and into a .glb as bytes.
///
/// A document of another format is written with positions, normals, colours, UVs and the names and
/// colours of materials.
void writeGltf(const Document& document, const std::filesystem::path& path);

} // namespace uvtool
