#pragma once

#include "document/Document.h"

#include <filesystem>

namespace uvtool
{

/// Reads a Wavefront OBJ. Each `o` that has faces is a geometry, or the whole file when there is
/// no `o`. Indices may be relative; line ends may be of any kind. A FileError names the line.
Document readObj(const std::filesystem::path& path);

/// Writes a Wavefront OBJ. What came from an OBJ is written line by line as it stood; only the `vt`
/// lines of changed slots and the `vt` numbers of their faces are new. An OBJ holds slot 0 only:
/// other slots are not written.
void writeObj(const Document& document, const std::filesystem::path& path);

} // namespace uvtool
