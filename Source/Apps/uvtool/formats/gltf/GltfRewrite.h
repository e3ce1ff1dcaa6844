#pragma once

#include "document/Document.h"
#include "formats/gltf/GltfEdit.h"
#include "formats/gltf/GltfPayload.h"

namespace uvtool
{

/// True when any geometry was changed.
bool isChanged(const Document& document);

/// The file as it was read, with the new UVs in it.
///
/// Of the primitives with new UVs, the accessors of the changed slots are new; where vertices had
/// to be repeated, so are those of all other attributes and morph targets, and the indices.
/// Accessors that other primitives name too stay for these as they are. Strips and fans whose
/// indices change become lists. A slot above the ones that are there brings those between along, as
/// zeros, because the format wants them without gaps.
GltfParts rewriteGltf(const Document& document, const GltfPayload& payload);

} // namespace uvtool
