#pragma once

#include <filesystem>
#include <string>

namespace uvtool
{

/// The extension of a name in small letters, with its dot.
std::string lowerExtension(const std::filesystem::path& path);

} // namespace uvtool
