#pragma once

#include "document/Document.h"
#include "document/FileError.h"

#include <cstddef>
#include <filesystem>
#include <string>

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

/// What a kind of file can hold.
struct FormatTraits
{
    bool isWritable = false; ///< writeDocument knows the extension
    std::size_t slots = 0;   ///< UV slots, counted from 0
    /// v runs downward in the file. It is turned by 1 - v on the way out, so that of a written
    /// value only what survives that in single precision gets into the file.
    bool vRunsDownward = false;
    /// A vertex has one value of every attribute; else each corner chooses.
    bool hasWholeVertices = false;
};

/// By the extension of `path`; of no use for one that isn't known.
FormatTraits traitsOfFormat(const std::filesystem::path& path);

/// The extensions that writeDocument knows, as a list for a sentence: ".obj, .glb or .gltf".
std::string writableExtensions();

} // namespace uvtool
