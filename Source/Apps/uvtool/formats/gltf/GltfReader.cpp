#include "formats/gltf/GltfFormat.h"

#include "document/Extension.h"
#include "document/FileError.h"
#include "document/OutputFile.h"
#include "formats/gltf/GlbContainer.h"
#include "formats/gltf/GltfBuffers.h"
#include "formats/gltf/GltfModel.h"
#include "formats/gltf/GltfPayload.h"
#include "formats/gltf/NodePlaces.h"
#include "formats/gltf/PrimitiveTriangles.h"
#include "formats/gltf/VertexPool.h"

#include <algorithm>
#include <cmath>
#include <numeric>

// The JSON itself is what the writer changes and writes back, so that members that nobody here has
// heard of survive. Only what the tool works with is looked at, and all of that is checked before
// it is used.

namespace uvtool
{
namespace
{

constexpr std::uint32_t defaultMode = 4;

/// Compressions that hide the data from a reader that doesn't know them.
bool isCompression(const std::string& extension)
{
    return extension == "KHR_draco_mesh_compression" || extension.ends_with("_meshopt_compression");
}

[[noreturn]] void failCompressed(const std::string& extension)
{
    throw GltfError("is compressed with " + extension +
                    ", which can't be read; save it without compression");
}

void refuseCompressed(const GltfObject& object)
{
    const std::optional<GltfObject> extensions = object.object("extensions");
    if (!extensions)
        return;
    for (const auto& [name, value] : extensions->json().items()) {
        if (isCompression(name))
            failCompressed(name);
    }
}

void checkVersion(const Json& json)
{
    const std::optional<GltfObject> asset = GltfObject(json, "the file").object("asset");
    if (!asset)
        throw GltfError("is no glTF: the JSON has no \"asset\"");
    const std::string version = asset->textOr("version", "");
    if (!version.starts_with("2."))
        throw GltfError("is a glTF of version \"" + version + "\"; only version 2 can be read");
}

/// The writer walks through lists that the reader has no use for.
void checkLists(const Json& json)
{
    for (const char* const key : {"accessors", "animations", "buffers", "bufferViews", "images",
                                  "materials", "meshes", "nodes", "scenes", "skins"})
        gltfArray(json, key);
}

void checkCompression(const Json& json)
{
    for (const Json& extension : gltfArray(json, "extensionsRequired")) {
        if (extension.is_string() && isCompression(extension.get<std::string>()))
            failCompressed(extension.get<std::string>());
    }
    for (std::size_t i = 0; i < gltfArray(json, "bufferViews").size(); ++i)
        refuseCompressed(gltfElement(json, "bufferViews", "buffer view", i));
}

/// Splits the file into its parts and loads its buffers.
void loadParts(const std::filesystem::path& path, GltfPayload& payload)
{
    payload.file = readWholeFile(path);
    payload.folder = path.parent_path();
    std::optional<std::string_view> binary;
    // A name that promises binary must keep its word; a text may turn out to be binary.
    payload.isBinary = lowerExtension(path) == ".glb" || isGlb(payload.file);
    if (payload.isBinary) {
        const std::vector<GlbChunk> chunks = splitGlb(payload.file);
        payload.text = chunks[0].bytes;
        payload.hasBinaryChunk = chunks.size() > 1 && chunks[1].type == GlbChunk::binaryType;
        if (payload.hasBinaryChunk)
            binary = chunks[1].bytes;
        for (std::size_t i = payload.hasBinaryChunk ? 2 : 1; i < chunks.size(); ++i)
            payload.otherChunks.emplace_back(chunks[i].type, chunks[i].bytes);
    }
    payload.json = parseGltfJson(payload.isBinary ? payload.text : payload.file);
    checkVersion(payload.json);
    checkLists(payload.json);
    checkCompression(payload.json);
    payload.buffers = loadBuffers(payload.json, path.parent_path(), binary);
}

/// Makes a geometry of one primitive.
class PrimitiveReader
{
public:
    PrimitiveReader(const GltfModel& model, GltfObject primitive)
        : model_(model), primitive_(std::move(primitive)),
          attributes_(model.attributes(primitive_, "attributes"))
    {}

    /// False for a primitive without triangles, which the tool has nothing to do with.
    bool read(DocumentGeometry& geometry, GltfPayload::Primitive& info)
    {
        const std::size_t mode = primitive_.countOr("mode", defaultMode);
        const std::optional<std::size_t> positions = find("POSITION");
        if (mode < 4 || !positions)
            return false;
        if (mode > 6)
            primitive_.fail("has the unknown mode " + std::to_string(mode));
        refuseCompressed(primitive_);
        const GltfAccessor accessor = accessorFor("POSITION", *positions, 3, 3);
        if (!accessor.view)
            primitive_.fail("has a POSITION without data");
        info.vertexCount = accessor.count;
        info.vertexOfCorner = trianglesOf(static_cast<GltfMode>(mode), readIndices(accessor.count));
        if (info.vertexOfCorner.empty())
            return false;
        checkOtherAttributes(info.vertexCount);
        buildTriangles(geometry, info);
        readValues(geometry, info);
        return true;
    }

private:
    std::optional<std::size_t> find(const std::string& semantic) const
    {
        for (const auto& [name, accessor] : attributes_) {
            if (name == semantic)
                return accessor;
        }
        return std::nullopt;
    }

    /// An accessor with the right number of components.
    GltfAccessor accessorFor(const std::string& semantic, std::size_t index, std::size_t least,
                             std::size_t most) const
    {
        GltfAccessor accessor = model_.accessor(index);
        if (accessor.dimension < least || accessor.dimension > most)
            primitive_.fail("has a " + semantic + " with " + std::to_string(accessor.dimension) +
                            " components");
        return accessor;
    }

    std::vector<std::uint32_t> readIndices(std::size_t vertexCount) const
    {
        const std::optional<std::size_t> index =
            primitive_.index("indices", model_.accessorCount());
        if (!index) {
            std::vector<std::uint32_t> all(vertexCount);
            std::iota(all.begin(), all.end(), 0U);
            return all;
        }
        const GltfAccessor accessor = model_.accessor(*index);
        const bool isIndexType = accessor.component == GltfComponent::UnsignedByte ||
                                 accessor.component == GltfComponent::UnsignedShort ||
                                 accessor.component == GltfComponent::UnsignedInt;
        if (!isIndexType || accessor.dimension != 1 || !accessor.view)
            primitive_.fail("has indices of a wrong kind");
        std::vector<std::uint32_t> numbers(accessor.count);
        std::iota(numbers.begin(), numbers.end(), 0U);
        const std::string bytes = model_.elements(accessor, numbers);
        std::vector<std::uint32_t> indices =
            decodeIndices(accessor.component, bytes.data(), accessor.count);
        const auto worst = std::max_element(indices.begin(), indices.end());
        if (*worst >= vertexCount)
            primitive_.fail("has the index " + std::to_string(*worst) + " but only " +
                            std::to_string(vertexCount) + " vertices");
        return indices;
    }

    /// All attributes and morph targets have to follow where vertices are split, so all are checked
    /// here.
    void checkOtherAttributes(std::size_t vertexCount) const
    {
        checkCounts(attributes_, vertexCount);
        if (!primitive_.has("targets"))
            return;
        const Json& targets = primitive_.json()["targets"];
        if (!targets.is_array())
            primitive_.fail("has targets that are no list");
        for (const Json& target : targets) {
            const GltfObject object(target, primitive_.place() + ", morph target");
            checkCounts(model_.attributes(object, nullptr), vertexCount);
        }
    }

    void checkCounts(const GltfAttributes& attributes, std::size_t vertexCount) const
    {
        for (const auto& [semantic, index] : attributes) {
            const std::size_t count = model_.accessor(index).count;
            if (count != vertexCount)
                primitive_.fail("has " + std::to_string(vertexCount) + " vertices but " +
                                std::to_string(count) + " of " + semantic);
        }
    }

    static void buildTriangles(DocumentGeometry& geometry, GltfPayload::Primitive& info)
    {
        std::vector<std::uint32_t> valueOfVertex(info.vertexCount, absentIndex);
        for (const std::uint32_t vertex : info.vertexOfCorner)
            valueOfVertex[vertex] = 0;
        for (std::uint32_t vertex = 0; vertex < info.vertexCount; ++vertex) {
            if (valueOfVertex[vertex] == absentIndex)
                continue;
            valueOfVertex[vertex] = static_cast<std::uint32_t>(info.vertexOfValue.size());
            info.vertexOfValue.push_back(vertex);
        }
        const std::size_t cornerCount = info.vertexOfCorner.size();
        const std::size_t triangleCount = cornerCount / 3;
        geometry.positions.ofCorner.reserve(cornerCount);
        for (const std::uint32_t vertex : info.vertexOfCorner)
            geometry.positions.ofCorner.push_back(valueOfVertex[vertex]);
        geometry.triangles.resize(cornerCount);
        std::iota(geometry.triangles.begin(), geometry.triangles.end(), 0U);
        geometry.polygonOfTriangle.resize(triangleCount);
        std::iota(geometry.polygonOfTriangle.begin(), geometry.polygonOfTriangle.end(), 0U);
        geometry.sourceOfPolygon = geometry.polygonOfTriangle;
        geometry.polygonOffsets.resize(triangleCount + 1);
        for (std::size_t p = 0; p <= triangleCount; ++p)
            geometry.polygonOffsets[p] = static_cast<std::uint32_t>(3 * p);
    }

    /// Components of an attribute at the vertices that are used; empty without the attribute.
    std::vector<double> components(const std::string& semantic, std::size_t least, std::size_t most,
                                   const GltfPayload::Primitive& info, std::size_t& dimension) const
    {
        const std::optional<std::size_t> index = find(semantic);
        if (!index)
            return {};
        const GltfAccessor accessor = accessorFor(semantic, *index, least, most);
        dimension = accessor.dimension;
        std::vector<double> numbers =
            decodeComponents(accessor, model_.elements(accessor, info.vertexOfValue));
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            if (!std::isfinite(numbers[i]))
                primitive_.fail("has a " + semantic + " that isn't finite at vertex " +
                                std::to_string(info.vertexOfValue[i / dimension]));
        }
        return numbers;
    }

    template <class Value>
    void readAttribute(CornerAttribute<Value>& attribute, const std::string& semantic,
                       std::size_t least, const GltfPayload::Primitive& info,
                       const DocumentGeometry& geometry) const
    {
        std::size_t dimension = 0;
        const std::vector<double> numbers =
            components(semantic, least, std::tuple_size_v<Value>, info, dimension);
        if (numbers.empty())
            return;
        Value value{};
        value.fill(1); // a colour without alpha
        attribute.values.assign(info.vertexOfValue.size(), value);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            attribute.values[i / dimension][i % dimension] =
                static_cast<typename Value::value_type>(numbers[i]);
        attribute.ofCorner = geometry.positions.ofCorner;
    }

    void readValues(DocumentGeometry& geometry, const GltfPayload::Primitive& info) const
    {
        readAttribute(geometry.positions, "POSITION", 3, info, geometry);
        readAttribute(geometry.normals, "NORMAL", 3, info, geometry);
        readAttribute(geometry.colors, "COLOR_0", 3, info, geometry);
        for (std::size_t slot = 0; slot < slotCount; ++slot) {
            readAttribute(geometry.uvs[slot], semanticOf(slot), 2, info, geometry);
            for (Vec2f& uv : geometry.uvs[slot].values)
                uv[1] = 1 - uv[1];
        }
    }

    const GltfModel& model_;
    const GltfObject primitive_;
    const GltfAttributes attributes_;
};

std::vector<DocumentMaterial> readMaterials(const Json& json)
{
    std::vector<DocumentMaterial> materials(gltfArray(json, "materials").size());
    for (std::size_t i = 0; i < materials.size(); ++i) {
        const GltfObject material = gltfElement(json, "materials", "material", i);
        materials[i].name = material.textOr("name", "material " + std::to_string(i));
        materials[i].color = {1, 1, 1, 1};
        const std::optional<GltfObject> pbr = material.object("pbrMetallicRoughness");
        if (!pbr || !pbr->has("baseColorFactor"))
            continue;
        const Json& factor = pbr->json()["baseColorFactor"];
        for (std::size_t k = 0; k < 4 && factor.is_array() && k < factor.size(); ++k) {
            if (factor[k].is_number())
                materials[i].color[k] = factor[k].get<float>();
        }
    }
    return materials;
}

/// Reads all meshes into a document.
class MeshReader
{
public:
    MeshReader(GltfPayload& payload, Document& document)
        : payload_(payload), document_(document), model_(payload.json, payload.buffers),
          places_(placesOfMeshes(payload.json))
    {}

    void read()
    {
        document_.materials = readMaterials(payload_.json);
        for (std::size_t mesh = 0; mesh < places_.size(); ++mesh)
            readMesh(mesh);
        if (document_.geometries.empty())
            throw GltfError("holds no triangles");
    }

private:
    void readMesh(std::size_t number)
    {
        const GltfObject mesh = gltfElement(payload_.json, "meshes", "mesh", number);
        if (!mesh.has("primitives") || !mesh.json()["primitives"].is_array())
            mesh.fail("has no primitives");
        const Json& primitives = mesh.json()["primitives"];
        std::string name = mesh.textOr("name", "");
        if (name.empty())
            name = "mesh " + std::to_string(number);
        for (std::size_t p = 0; p < primitives.size(); ++p) {
            const std::string suffix = primitives.size() > 1 ? '.' + std::to_string(p) : "";
            readPrimitive(mesh, number, p, name + suffix);
        }
    }

    void readPrimitive(const GltfObject& mesh, std::size_t meshNumber, std::size_t number,
                       const std::string& name)
    {
        const GltfObject primitive(mesh.json()["primitives"][number],
                                   mesh.place() + ", primitive " + std::to_string(number));
        GltfPayload::Primitive info{meshNumber, number, {}, 0, {}};
        DocumentGeometry geometry;
        if (!PrimitiveReader(model_, primitive).read(geometry, info))
            return;
        geometry.name = name;
        const auto material = primitive.index("material", document_.materials.size());
        if (material)
            geometry.materialOfPolygon.assign(geometry.polygonCount(),
                                              static_cast<std::int32_t>(*material));
        geometry.toWorld = places_[meshNumber];
        geometry.source = payload_.primitives.size();
        payload_.primitives.push_back(std::move(info));
        document_.geometries.push_back(std::move(geometry));
    }

    GltfPayload& payload_;
    Document& document_;
    const GltfModel model_;
    const std::vector<SceneMatrix> places_;
};

} // namespace

Document readGltf(const std::filesystem::path& path)
{
    auto payload = std::make_shared<GltfPayload>();
    Document document;
    try {
        loadParts(path, *payload);
        MeshReader(*payload, document).read();
    } catch (const GltfError& error) {
        throw FileError(FileError::Read, path, error.what());
    }
    document.payload = std::move(payload);
    return document;
}

} // namespace uvtool
