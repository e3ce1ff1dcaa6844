#include "formats/gltf/GltfBuffers.h"

#include "document/FileError.h"
#include "document/OutputFile.h"

#include <QByteArray>
#include <QUrl>

#include <algorithm>
#include <cctype>
#include <limits>

namespace fs = std::filesystem;

namespace uvtool
{
namespace
{

constexpr std::string_view base64Mark = ";base64,";

bool startsWithNoCase(std::string_view text, std::string_view start)
{
    return text.size() >= start.size() &&
           std::equal(start.begin(), start.end(), text.begin(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

/// "http:" and the like; a single letter would be a drive.
bool hasScheme(std::string_view uri)
{
    const std::size_t colon = uri.find(':');
    if (colon == std::string_view::npos || colon < 1)
        return false;
    return std::all_of(uri.begin(), uri.begin() + static_cast<std::ptrdiff_t>(colon), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '-' || c == '.';
    });
}

QByteArray bytesOf(std::string_view text)
{
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()) / 2)
        throw GltfError("holds more than 1 GB embedded as text; use a .glb");
    return {text.data(), static_cast<int>(text.size())};
}

std::string loadBuffer(const GltfObject& buffer, bool isFirst, const fs::path& folder,
                       const std::optional<std::string_view>& binary)
{
    if (!buffer.has("uri")) {
        if (!isFirst || !binary)
            buffer.fail("has no data (is this the text of a .glb?)");
        return std::string(*binary);
    }
    const std::string uri = buffer.textOr("uri", "");
    const GltfUri target = parseUri(uri);
    if (target.kind == GltfUri::Elsewhere)
        buffer.fail("is not beside the file but at " + uri);
    try {
        return target.kind == GltfUri::Embedded ? decodeEmbedded(uri)
                                                : readBeside(folder, target.file);
    } catch (const GltfError& error) {
        buffer.fail(error.what());
    }
}

} // namespace

GltfUri parseUri(const std::string& uri)
{
    if (startsWithNoCase(uri, "data:"))
        return {GltfUri::Embedded, {}};
    const QByteArray decoded = QByteArray::fromPercentEncoding(QByteArray::fromStdString(uri));
    const fs::path file(decoded.toStdString());
    if (uri.empty() || hasScheme(uri) || file.is_absolute() || decoded.contains('\0'))
        return {GltfUri::Elsewhere, {}};
    return {GltfUri::Beside, file};
}

std::string uriIn(const Json& owner)
{
    const bool hasUri = owner.is_object() && owner.contains("uri") && owner["uri"].is_string();
    return hasUri ? owner["uri"].get<std::string>() : std::string();
}

std::string uriOfFile(const fs::path& relative)
{
    const QString path = QString::fromStdString(relative.generic_string());
    return QUrl::toPercentEncoding(path, "/").toStdString();
}

std::string decodeEmbedded(std::string_view uri)
{
    const std::size_t mark = uri.find(base64Mark);
    if (mark == std::string_view::npos)
        throw GltfError("is embedded in an unknown way");
    const auto decoded = QByteArray::fromBase64Encoding(
        bytesOf(uri.substr(mark + base64Mark.size())), QByteArray::AbortOnBase64DecodingErrors);
    if (decoded.decodingStatus != QByteArray::Base64DecodingStatus::Ok)
        throw GltfError("is embedded as damaged base64");
    return decoded.decoded.toStdString();
}

std::string encodeEmbedded(std::string_view bytes, std::string_view like)
{
    std::string uri(like.substr(0, like.find(base64Mark)));
    uri += base64Mark;
    uri += bytesOf(bytes).toBase64().toStdString();
    return uri;
}

std::string readBeside(const fs::path& folder, const fs::path& file)
{
    std::error_code ignored;
    const fs::path path = folder / file;
    // A device would never end.
    if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored))
        throw GltfError("is at " + file.string() + ", which is no file");
    try {
        return readWholeFile(path);
    } catch (const FileError& error) {
        throw GltfError(std::string("is in another file: ") + error.what());
    }
}

std::vector<std::string> loadBuffers(const Json& json, const fs::path& folder,
                                     const std::optional<std::string_view>& binary)
{
    std::vector<std::string> buffers(gltfArray(json, "buffers").size());
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        const GltfObject buffer = gltfElement(json, "buffers", "buffer", i);
        const std::size_t length = buffer.count("byteLength");
        buffers[i] = loadBuffer(buffer, i == 0, folder, binary);
        if (buffers[i].size() < length)
            buffer.fail("should have " + std::to_string(length) + " bytes but there are only " +
                        std::to_string(buffers[i].size()));
        buffers[i].resize(length);
    }
    return buffers;
}

} // namespace uvtool
