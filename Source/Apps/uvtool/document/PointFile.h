#pragma once

#include "document/Document.h"

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// Reads a file of points of the UV plane: "u v" a line, blank lines and what stands behind a `#`
/// passed over. A FileError of kind Read for a line that isn't like that, and for more or fewer
/// than `count` points.
std::vector<Vec2f> readPointFile(const std::filesystem::path& path, std::size_t count);

/// Points as the text of such a file, which reads back as the same floats.
std::string textOfPoints(std::span<const Vec2f> points);

} // namespace uvtool
