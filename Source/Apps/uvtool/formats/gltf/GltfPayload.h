#pragma once

#include "document/Document.h"
#include "formats/gltf/GltfJson.h"
#include "formats/gltf/GltfModel.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace uvtool
{

/// What the reader keeps for the writer: the file as it was, and where in it the geometries are.
struct GltfPayload : FormatPayload
{
    struct Primitive
    {
        std::size_t mesh = 0;
        std::size_t number = 0; ///< in the mesh
        /// Vertices in the file of the values of the geometry: those that a triangle uses,
        /// ascending.
        std::vector<std::uint32_t> vertexOfValue;
        std::size_t vertexCount = 0;
        /// Vertices of the triangle corners.
        std::vector<std::uint32_t> vertexOfCorner;
    };

    std::filesystem::path folder; ///< where the file lies
    std::string file;             ///< all bytes
    bool isBinary = false;
    /// Parts of a binary file behind the first two.
    std::vector<std::pair<std::uint32_t, std::string>> otherChunks;
    bool hasBinaryChunk = false;
    std::string text; ///< the JSON of the file, empty when that is all of it
    Json json;
    std::vector<std::string> buffers;
    std::vector<Primitive> primitives; ///< by DocumentGeometry::source
};

} // namespace uvtool
