#pragma once

#include "document/Document.h"

#include <string>

namespace uvtool
{

/// The text of an OBJ file for a document that was read from another format: objects, names of
/// materials, positions in the scene's space, colours, normals and slot 0.
std::string plainObj(const Document& document);

} // namespace uvtool
