#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace uvtool
{

/// A file that could not be read or written. The text is one line for the user: the file, the
/// place in it (line, mesh, element), what is wrong there and, where it helps, what to do.
class FileError : public std::runtime_error
{
public:
    enum Kind : std::int32_t
    {
        Read,
        Write
    };

    FileError(Kind kind, const std::filesystem::path& file, const std::string& what)
        : std::runtime_error(file.string() + ": " + what), kind_(kind)
    {}

    Kind kind() const { return kind_; }

private:
    Kind kind_;
};

} // namespace uvtool
