#pragma once

#include "document/Document.h"
#include "formats/obj/ObjText.h"

#include <string>

namespace uvtool
{

/// The text that was read, with the new UVs and parted corners in it.
///
/// Where slot 0 of a geometry was changed, its new `vt` lines stand before its first face and the
/// `vt` numbers of its faces point at them, or at those of an earlier geometry where a position
/// that they have in common has one new UV in both; `vt` lines that nothing uses any more go. Where
/// corners of a geometry were parted, the `v` lines of the copies stand there as well, and the `v`
/// numbers of everything behind them move up. A polygon that was split is written as its triangles.
/// Every other character stays as it stood; when nothing was changed, so does the whole text.
std::string rewriteObj(const Document& document, const ObjPayload& payload);

} // namespace uvtool
