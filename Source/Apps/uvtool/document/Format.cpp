#include "document/Format.h"

#include "document/Extension.h"
#include "formats/assimp/AssimpFormat.h"
#include "formats/gltf/GltfFormat.h"
#include "formats/obj/ObjFormat.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace uvtool
{
namespace
{

struct Format
{
    const char* extension;
    Document (*read)(const std::filesystem::path&);
    void (*write)(const Document&, const std::filesystem::path&);
    FormatTraits traits;
};

/// Those that can be written too. All others are for the Assimp library to read.
constexpr std::array formats{
    Format{".obj", readObj, writeObj, {true, 1, false, false}},
    Format{".glb", readGltf, writeGltf, {true, slotCount, true, true}},
    Format{".gltf", readGltf, writeGltf, {true, slotCount, true, true}},
};

const Format* formatOf(const std::filesystem::path& path)
{
    const std::string extension = lowerExtension(path);
    const auto* found = std::find_if(formats.begin(), formats.end(),
                                     [&](const Format& f) { return extension == f.extension; });
    return found == formats.end() ? nullptr : found;
}

} // namespace

Document readDocument(const std::filesystem::path& path)
{
    const Format* const format = formatOf(path);
    if (format == nullptr && !isAssimpFormat(path))
        throw FileError(FileError::Read, path,
                        "a file of an unknown kind; give an OBJ, glTF, PLY, STL or FBX file");
    Document document = format != nullptr ? format->read(path) : readAssimp(path);
    document.path = path;
    return document;
}

void writeDocument(const Document& document, const std::filesystem::path& path)
{
    const Format* const format = formatOf(path);
    if (format == nullptr)
        throw FileError(FileError::Write, path,
                        "a file of an unknown kind; use " + writableExtensions());
    format->write(document, path);
}

FormatTraits traitsOfFormat(const std::filesystem::path& path)
{
    const Format* const format = formatOf(path);
    return format != nullptr ? format->traits : FormatTraits{};
}

std::string writableExtensions()
{
    std::string list;
    for (std::size_t i = 0; i < formats.size(); ++i) {
        if (i > 0)
            list += i + 1 < formats.size() ? ", " : " or ";
        list += formats[i].extension;
    }
    return list;
}

} // namespace uvtool
