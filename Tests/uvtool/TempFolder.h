#pragma once

#include "Utils/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

inline std::string bytesOf(const std::filesystem::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}
