#include "formats/assimp/AssimpFormat.h"

#include "document/Extension.h"
#include "document/FileError.h"
#include "document/Transform.h"
#include "document/Triangulate.h"

#include <assimp/Importer.hpp>
#include <assimp/material.h>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>

namespace uvtool
{
namespace
{

static_assert(slotCount <= AI_MAX_NUMBER_OF_TEXTURECOORDS);

SceneMatrix columnsFirst(const aiMatrix4x4& m)
{
    SceneMatrix matrix{};
    for (unsigned column = 0; column < 4; ++column)
        for (unsigned row = 0; row < 4; ++row)
            matrix[4 * column + row] = static_cast<double>(m[row][column]);
    return matrix;
}

/// A mesh of the scene where it is first shown.
struct MeshPlace
{
    SceneMatrix toWorld{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::string nodeName;
};

/// Walks the tree of nodes depth first.
std::vector<MeshPlace> placesOfMeshes(const aiScene& scene)
{
    std::vector<std::optional<MeshPlace>> places(scene.mNumMeshes);
    std::vector<std::pair<const aiNode*, aiMatrix4x4>> open;
    if (scene.mRootNode != nullptr)
        open.emplace_back(scene.mRootNode, aiMatrix4x4());
    while (!open.empty()) {
        const auto [node, parent] = open.back();
        open.pop_back();
        const aiMatrix4x4 place = parent * node->mTransformation;
        for (unsigned i = 0; i < node->mNumMeshes; ++i) {
            const unsigned mesh = node->mMeshes[i];
            if (mesh < scene.mNumMeshes && !places[mesh])
                places[mesh] = {columnsFirst(place), node->mName.C_Str()};
        }
        for (unsigned i = node->mNumChildren; i-- > 0;)
            open.emplace_back(node->mChildren[i], place);
    }
    std::vector<MeshPlace> filled;
    filled.reserve(places.size());
    for (std::optional<MeshPlace>& place : places)
        filled.push_back(std::move(place).value_or(MeshPlace{}));
    return filled;
}

template <class Number, std::size_t N>
bool isFinite(const std::array<Number, N>& numbers)
{
    return std::all_of(numbers.begin(), numbers.end(), [](Number x) { return std::isfinite(x); });
}

/// Makes a geometry of one mesh.
class MeshReader
{
public:
    MeshReader(const std::filesystem::path& path, const aiMesh& mesh, std::string name)
        : path_(path), mesh_(mesh)
    {
        geometry_.name = std::move(name);
    }

    /// Without polygons when the mesh has none.
    DocumentGeometry read(std::size_t materialCount)
    {
        readFaces();
        if (geometry_.polygonCount() == 0)
            return std::move(geometry_);
        readVectors(geometry_.positions, mesh_.mVertices, "position");
        readVectors(geometry_.normals, mesh_.mNormals, "normal");
        readColors();
        for (unsigned slot = 0; slot < slotCount; ++slot)
            readVectors(geometry_.uvs[slot], mesh_.mTextureCoords[slot], "texture coordinate");
        if (mesh_.mMaterialIndex < materialCount)
            geometry_.materialOfPolygon.assign(geometry_.polygonCount(),
                                               static_cast<std::int32_t>(mesh_.mMaterialIndex));
        triangulatePolygons(geometry_);
        return std::move(geometry_);
    }

private:
    void readFaces()
    {
        std::vector<std::uint32_t>& corners = geometry_.positions.ofCorner;
        for (unsigned f = 0; f < mesh_.mNumFaces; ++f) {
            const aiFace& face = mesh_.mFaces[f];
            if (face.mNumIndices < 3)
                continue;
            for (unsigned k = 0; k < face.mNumIndices; ++k) {
                if (face.mIndices[k] >= mesh_.mNumVertices)
                    fail("face " + std::to_string(f) + " has a vertex that is not in the file");
                corners.push_back(face.mIndices[k]);
            }
            geometry_.polygonOffsets.push_back(static_cast<std::uint32_t>(corners.size()));
            geometry_.sourceOfPolygon.push_back(f);
        }
    }

    template <class Value>
    void readVectors(CornerAttribute<Value>& attribute, const aiVector3D* vectors, const char* what)
    {
        if (vectors == nullptr)
            return;
        attribute.values.resize(mesh_.mNumVertices);
        for (unsigned v = 0; v < mesh_.mNumVertices; ++v) {
            for (unsigned k = 0; k < attribute.values[v].size(); ++k)
                attribute.values[v][k] = static_cast<typename Value::value_type>(vectors[v][k]);
        }
        takeCorners(attribute, what);
    }

    void readColors()
    {
        if (mesh_.mColors[0] == nullptr)
            return;
        for (unsigned v = 0; v < mesh_.mNumVertices; ++v) {
            const aiColor4D& color = mesh_.mColors[0][v];
            geometry_.colors.values.push_back(
                {static_cast<float>(color.r), static_cast<float>(color.g),
                 static_cast<float>(color.b), static_cast<float>(color.a)});
        }
        takeCorners(geometry_.colors, "colour");
    }

    /// Every vertex has one value of each attribute.
    template <class Value>
    void takeCorners(CornerAttribute<Value>& attribute, const char* what)
    {
        for (std::size_t v = 0; v < attribute.values.size(); ++v) {
            if (!isFinite(attribute.values[v]))
                fail("vertex " + std::to_string(v) + " has a " + what + " that isn't finite");
        }
        attribute.ofCorner = geometry_.positions.ofCorner;
    }

    [[noreturn]] void fail(const std::string& what) const
    {
        throw FileError(FileError::Read, path_, "mesh \"" + geometry_.name + "\": " + what);
    }

    const std::filesystem::path& path_;
    const aiMesh& mesh_;
    DocumentGeometry geometry_;
};

std::vector<DocumentMaterial> readMaterials(const aiScene& scene)
{
    std::vector<DocumentMaterial> materials(scene.mNumMaterials);
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        materials[i].name = scene.mMaterials[i]->GetName().C_Str();
        if (materials[i].name.empty())
            materials[i].name = "material " + std::to_string(i);
        aiColor4D color;
        if (scene.mMaterials[i]->Get(AI_MATKEY_COLOR_DIFFUSE, color) == aiReturn_SUCCESS)
            materials[i].color = {static_cast<float>(color.r), static_cast<float>(color.g),
                                  static_cast<float>(color.b), static_cast<float>(color.a)};
        if (!isFinite(materials[i].color))
            materials[i].color = DocumentMaterial{}.color;
    }
    return materials;
}

std::string nameOf(const aiMesh& mesh, const MeshPlace& place, unsigned number)
{
    if (mesh.mName.length > 0)
        return mesh.mName.C_Str();
    return place.nodeName.empty() ? "mesh " + std::to_string(number) : place.nodeName;
}

/// The library's own words, on one line.
std::string oneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text.empty() ? "not what its name says" : text;
}

/// The library says only that a file can't be opened, not why.
void checkReadable(const std::filesystem::path& path)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        throw FileError(FileError::Read, path, "cannot be read: there is no such file");
    if (!std::filesystem::is_regular_file(path, ignored) || !std::ifstream(path))
        throw FileError(FileError::Read, path, "cannot be read: it is no file, or may not be read");
}

bool endsPlyHeader(std::string_view line)
{
    constexpr std::string_view word = "end_header";
    constexpr std::string_view space = " \t";
    line.remove_prefix(std::min(line.find_first_not_of(space), line.size()));
    return line.starts_with(word) &&
           (line.size() == word.size() || space.find(line[word.size()]) != std::string_view::npos);
}

/// The library looks for the end of the header for ever.
void checkPlyHeader(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    for (std::string lines; std::getline(file, lines);)
        for (const auto line : std::views::split(lines, '\r'))
            if (endsPlyHeader(std::string_view(line.begin(), line.end())))
                return;
    throw FileError(FileError::Read, path,
                    "cannot be understood: its header has no end (is the file complete?)");
}

Document documentOf(const std::filesystem::path& path, const aiScene& scene)
{
    Document document;
    document.materials = readMaterials(scene);
    const std::vector<MeshPlace> places = placesOfMeshes(scene);
    for (unsigned m = 0; m < scene.mNumMeshes; ++m) {
        const aiMesh& mesh = *scene.mMeshes[m];
        MeshReader reader(path, mesh, nameOf(mesh, places[m], m));
        DocumentGeometry geometry = reader.read(document.materials.size());
        if (geometry.polygonCount() == 0)
            continue;
        if (!isFinite(places[m].toWorld))
            throw FileError(FileError::Read, path,
                            "mesh \"" + geometry.name + "\": its place isn't finite");
        geometry.toWorld = places[m].toWorld;
        geometry.source = m;
        document.geometries.push_back(std::move(geometry));
    }
    return document;
}

} // namespace

Document readAssimp(const std::filesystem::path& path)
{
    checkReadable(path);
    if (lowerExtension(path) == ".ply")
        checkPlyHeader(path);
    Assimp::Importer importer;
    const aiScene* const scene = importer.ReadFile(path.string(), 0);
    if (scene == nullptr)
        throw FileError(FileError::Read, path,
                        "cannot be understood: " + oneLine(importer.GetErrorString()));
    Document document = documentOf(path, *scene);
    if (document.geometries.empty())
        throw FileError(FileError::Read, path, "holds no faces");
    return document;
}

bool isAssimpFormat(const std::filesystem::path& path)
{
    const std::string extension = lowerExtension(path);
    return extension.size() > 1 && Assimp::Importer().IsExtensionSupported(extension);
}

} // namespace uvtool
