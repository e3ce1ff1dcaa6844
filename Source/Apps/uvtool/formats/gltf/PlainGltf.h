#pragma once

#include "document/Document.h"
#include "formats/gltf/GltfEdit.h"

namespace uvtool
{

/// A glTF of a document that was read from another format: a node and a mesh for each geometry, a
/// primitive for each of its materials; vertices where all attributes agree. Attributes that some
/// corners lack are filled up there: UVs with zero, colours with white, normals with those of the
/// triangle. Polygons become triangles. One buffer without an address.
GltfParts plainGltf(const Document& document);

} // namespace uvtool
