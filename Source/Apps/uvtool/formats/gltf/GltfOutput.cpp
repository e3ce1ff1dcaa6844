#include "formats/gltf/GltfOutput.h"

#include "document/Extension.h"
#include "formats/gltf/GltfBuffers.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace fs = std::filesystem;

namespace uvtool
{
namespace
{

/// Stays below the folder that it is relative to.
bool staysBelow(const fs::path& relative)
{
    const fs::path normal = relative.lexically_normal();
    return !normal.empty() && *normal.begin() != "..";
}

std::optional<std::string> bytesBeside(const fs::path& folder, const fs::path& file)
{
    try {
        return readBeside(folder, file);
    } catch (const GltfError&) {
        return std::nullopt;
    }
}

/// Decides where the buffers and images of a text file go.
class TextPlan
{
public:
    TextPlan(GltfParts& parts, const fs::path& path, const fs::path& folder)
        : parts_(parts), path_(path), folder_(folder),
          isElsewhere_(!isSameFolder(path.parent_path(), folder))
    {}

    std::vector<SideFile> plan()
    {
        for (std::size_t i = 0; i < parts_.buffers.size(); ++i)
            planBuffer(i);
        if (isElsewhere_ && parts_.json.contains("images")) {
            for (Json& image : parts_.json["images"])
                planImage(image);
        }
        return std::move(files_);
    }

private:
    void planBuffer(std::size_t i)
    {
        Json& buffer = parts_.json["buffers"][i];
        const std::string uri = uriIn(buffer);
        const GltfUri target = parseUri(uri);
        if (!uri.empty() && target.kind == GltfUri::Embedded) {
            if (parts_.isChanged[i])
                buffer["uri"] = encodeEmbedded(parts_.buffers[i], uri);
            return;
        }
        if (!uri.empty() && !parts_.isChanged[i]) {
            if (!isElsewhere_)
                return;
            if (canKeepName(target.file, parts_.buffers[i])) {
                files_.push_back({path_.parent_path() / target.file, parts_.buffers[i]});
                return;
            }
        }
        const fs::path name = newName();
        buffer["uri"] = uriOfFile(name);
        files_.push_back({path_.parent_path() / name, parts_.buffers[i]});
    }

    void planImage(Json& image) const
    {
        const std::string uri = uriIn(image);
        const GltfUri target = parseUri(uri);
        if (target.kind != GltfUri::Beside)
            return;
        const std::optional<std::string> bytes = bytesBeside(folder_, target.file);
        if (!bytes)
            return;
        if (canKeepName(target.file, *bytes)) {
            files_.push_back({path_.parent_path() / target.file, *bytes});
            return;
        }
        std::error_code failed;
        const fs::path there =
            fs::relative(folder_ / target.file, outputFolder(path_.parent_path()), failed);
        if (!failed && !there.empty())
            image["uri"] = uriOfFile(there);
    }

    static fs::path outputFolder(const fs::path& folder) { return folder.empty() ? "." : folder; }

    bool canKeepName(const fs::path& relative, const std::string& bytes) const
    {
        if (!staysBelow(relative))
            return false;
        std::error_code ignored;
        return !fs::exists(path_.parent_path() / relative, ignored) ||
               bytesBeside(path_.parent_path(), relative) == bytes;
    }

    /// After the glTF; numbered from the second one on.
    fs::path newName()
    {
        fs::path name = path_.stem();
        if (newNames_ > 0)
            name += '_' + std::to_string(newNames_);
        name += ".bin";
        ++newNames_;
        return name;
    }

    GltfParts& parts_;
    const fs::path& path_;
    const fs::path& folder_;
    const bool isElsewhere_;
    mutable std::vector<SideFile> files_;
    std::size_t newNames_ = 0;
};

/// By the first bytes, as the formats define them; by the name where these say nothing.
std::string mediaType(const std::string& bytes, const fs::path& file)
{
    if (bytes.starts_with("\x89PNG"))
        return "image/png";
    if (bytes.starts_with("\xFF\xD8"))
        return "image/jpeg";
    if (bytes.starts_with("RIFF"))
        return "image/webp";
    if (bytes.starts_with("\xABKTX 20"))
        return "image/ktx2";
    const std::string extension = lowerExtension(file);
    return extension.size() > 1 ? "image/" + extension.substr(1) : "application/octet-stream";
}

/// Adds a view of new bytes at the end of the first buffer.
std::size_t appendView(GltfParts& parts, const std::string& bytes)
{
    std::string& buffer = parts.buffers[0];
    buffer.resize((buffer.size() + 3) / 4 * 4, '\0');
    Json& views = parts.json["bufferViews"];
    views.push_back({{"buffer", 0}, {"byteOffset", buffer.size()}, {"byteLength", bytes.size()}});
    buffer += bytes;
    return views.size() - 1;
}

void embedImage(GltfParts& parts, Json& image, const fs::path& folder)
{
    const std::string uri = uriIn(image);
    const GltfUri target = parseUri(uri);
    if (target.kind != GltfUri::Beside)
        return;
    const std::optional<std::string> bytes = bytesBeside(folder, target.file);
    if (!bytes || bytes->empty())
        return;
    image.erase("uri");
    image["bufferView"] = appendView(parts, *bytes);
    if (!image.contains("mimeType"))
        image["mimeType"] = mediaType(*bytes, target.file);
}

void joinBuffers(GltfParts& parts)
{
    std::string joined;
    std::vector<std::size_t> starts;
    for (const std::string& buffer : parts.buffers) {
        joined.resize((joined.size() + 3) / 4 * 4, '\0');
        starts.push_back(joined.size());
        joined += buffer;
    }
    if (parts.json.contains("bufferViews")) {
        for (Json& view : parts.json["bufferViews"]) {
            const std::size_t start = starts[checkedNumber(view["buffer"])];
            view["buffer"] = 0;
            if (start > 0)
                view["byteOffset"] =
                    start + (view.contains("byteOffset") ? checkedNumber(view["byteOffset"]) : 0);
        }
    }
    Json first = parts.json["buffers"][0];
    first.erase("uri");
    parts.json["buffers"] = Json::array({first});
    parts.buffers.resize(1);
    parts.buffers[0] = std::move(joined);
}

} // namespace

std::vector<SideFile> prepareText(GltfParts& parts, const fs::path& path, const fs::path& folder)
{
    return TextPlan(parts, path, folder).plan();
}

void prepareBinary(GltfParts& parts, const fs::path& folder)
{
    joinBuffers(parts);
    if (parts.json.contains("images")) {
        for (Json& image : parts.json["images"])
            embedImage(parts, image, folder);
    }
    parts.json["buffers"][0]["byteLength"] = parts.buffers[0].size();
}

bool isSameFolder(const fs::path& a, const fs::path& b)
{
    std::error_code ignored;
    const auto real = [&](const fs::path& path) {
        return fs::weakly_canonical(path.empty() ? "." : path, ignored);
    };
    return real(a) == real(b);
}

} // namespace uvtool
