#pragma once

#include "document/Document.h"
#include "document/FileError.h"

#include <filesystem>

namespace uvtool
{

/// Reads a mesh file; the format goes by the extension of its name.
///
/// The file is read whole and checked whole: a FileError of kind Read names what is wrong (no such
/// file, a directory, no permission, not the format that the name says, an index out of range, a
/// coordinate that isn't finite, no triangles at all).
Document readDocument(const std::filesystem::path& path);

/// Writes the document; the format goes by the extension of `path` and may differ from the one
/// that was read, in which case what only the old format knows is lost.
///
/// On failure the FileError is of kind Write and a file that stood at `path` still stands there.
void writeDocument(const Document& document, const std::filesystem::path& path);

/// True when writeDocument knows the extension of `path`.
bool isWritableFormat(const std::filesystem::path& path);

} // namespace uvtool
