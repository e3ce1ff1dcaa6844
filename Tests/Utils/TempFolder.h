#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>

/// A folder of a test's own, gone with everything in it at the end.
class TempFolder
{
public:
    TempFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "kyuvXXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& path() const { return path_; }

    std::filesystem::path write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path_ / name, std::ios::binary) << text;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};
