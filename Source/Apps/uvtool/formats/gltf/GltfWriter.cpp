#include "formats/gltf/GltfFormat.h"

#include "document/Extension.h"
#include "document/FileError.h"
#include "document/OutputFile.h"
#include "formats/gltf/GlbContainer.h"
#include "formats/gltf/GltfBuffers.h"
#include "formats/gltf/GltfOutput.h"
#include "formats/gltf/GltfPayload.h"
#include "formats/gltf/GltfRewrite.h"
#include "formats/gltf/PlainGltf.h"

#include <memory>
#include <utility>

namespace fs = std::filesystem;

namespace uvtool
{
namespace
{

constexpr int plainIndent = 2;

/// Spaces at the start of the second line; -1 for a text of one line.
int indentOf(std::string_view text)
{
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd == std::string_view::npos || lineEnd + 1 == text.size())
        return -1;
    const std::size_t word = text.find_first_not_of(" \t", lineEnd + 1);
    return word == std::string_view::npos ? -1 : static_cast<int>(word - lineEnd - 1);
}

char indentCharacter(std::string_view text)
{
    const std::size_t lineEnd = text.find('\n');
    return lineEnd != std::string_view::npos && text.substr(lineEnd + 1).starts_with('\t') ? '\t'
                                                                                           : ' ';
}

/// In the layout of the text that was read.
std::string textOf(const Json& json, std::string_view like)
{
    const int indent = indentOf(like);
    std::string text = json.dump(indent, indentCharacter(like));
    if (indent >= 0 && like.ends_with('\n'))
        text += '\n';
    return text;
}

/// The bytes of the file itself, and the files beside it.
struct GltfFiles
{
    std::string main;
    std::vector<SideFile> beside;
};

std::string binaryFile(const std::string& text, const std::string& buffer,
                       const GltfPayload* payload)
{
    std::vector<GlbChunk> chunks{{GlbChunk::jsonType, text}};
    if (!buffer.empty())
        chunks.push_back({GlbChunk::binaryType, buffer});
    if (payload != nullptr) {
        for (const auto& [type, bytes] : payload->otherChunks)
            chunks.push_back({type, bytes});
    }
    return joinGlb(chunks);
}

GltfFiles plainFiles(const Document& document, const fs::path& path, bool isBinary)
{
    GltfParts parts = plainGltf(document);
    GltfFiles files;
    if (!isBinary)
        files.beside = prepareText(parts, path, path.parent_path());
    const std::string text = parts.json.dump(isBinary ? -1 : plainIndent) + (isBinary ? "" : "\n");
    files.main = isBinary ? binaryFile(text, parts.buffers[0], nullptr) : text;
    return files;
}

/// A binary file needs no other one beside it, but one that was read may have had some.
bool needsOthers(const Json& json)
{
    for (const char* const key : {"buffers", "images"}) {
        for (const Json& element : gltfArray(json, key)) {
            if (parseUri(uriIn(element)).kind == GltfUri::Beside)
                return true;
        }
    }
    return false;
}

GltfFiles rewrittenFiles(const Document& document, const GltfPayload& payload, const fs::path& path,
                         bool isBinary)
{
    const bool changed = isChanged(document);
    const bool staysBinary = isBinary && payload.isBinary;
    const bool staysPut = isSameFolder(path.parent_path(), payload.folder);
    if (!changed && staysBinary && (staysPut || !needsOthers(payload.json)))
        return {payload.file, {}};

    GltfParts parts = changed ? rewriteGltf(document, payload)
                              : GltfParts{payload.json, payload.buffers,
                                          std::vector<bool>(payload.buffers.size(), false)};
    const std::string& like = payload.isBinary ? payload.text : payload.file;
    GltfFiles files;
    if (isBinary) {
        prepareBinary(parts, payload.folder);
        files.main = binaryFile(textOf(parts.json, like), parts.buffers[0], &payload);
        return files;
    }
    files.beside = prepareText(parts, path, payload.folder);
    const bool isSameText = !changed && !payload.isBinary && parts.json == payload.json;
    files.main = isSameText ? payload.file : textOf(parts.json, like);
    return files;
}

GltfFiles filesOf(const Document& document, const fs::path& path)
{
    const bool isBinary = lowerExtension(path) == ".glb";
    const auto* const payload = dynamic_cast<const GltfPayload*>(document.payload.get());
    return payload != nullptr ? rewrittenFiles(document, *payload, path, isBinary)
                              : plainFiles(document, path, isBinary);
}

std::unique_ptr<OutputFile> written(const fs::path& path, const std::string& bytes)
{
    auto file = std::make_unique<OutputFile>(path);
    file->write(bytes);
    return file;
}

void makeFolderOf(const fs::path& path)
{
    if (!path.has_parent_path())
        return;
    std::error_code failed;
    fs::create_directories(path.parent_path(), failed);
    if (failed)
        throw FileError(FileError::Write, path, "cannot be written: " + failed.message());
}

} // namespace

void writeGltf(const Document& document, const fs::path& path)
{
    GltfFiles files;
    try {
        files = filesOf(document, path);
    } catch (const GltfError& error) {
        throw FileError(FileError::Write, path, error.what());
    }
    // All files are complete before the first one appears, and the one that names the others comes
    // last.
    const std::unique_ptr<OutputFile> main = written(path, files.main);
    std::vector<std::unique_ptr<OutputFile>> beside;
    for (const SideFile& file : files.beside) {
        makeFolderOf(file.path);
        beside.push_back(written(file.path, file.bytes));
    }
    for (const std::unique_ptr<OutputFile>& file : beside)
        file->finish();
    main->finish();
    for (const std::unique_ptr<OutputFile>& file : beside)
        file->commit();
    main->commit();
}

} // namespace uvtool
