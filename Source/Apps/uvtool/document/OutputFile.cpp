#include "document/OutputFile.h"

#include "document/FileError.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace uvtool
{
namespace
{

/// The file that a chain of links ends at, so that a rename replaces that file and not the link.
fs::path behindLinks(const fs::path& path)
{
    std::error_code error;
    const fs::path real = fs::weakly_canonical(path, error);
    return error ? path : real;
}

std::string textOf(int error)
{
    return error == 0 ? "unknown error" : std::strerror(error);
}

} // namespace

OutputFile::OutputFile(const fs::path& target) : target_(target)
{
    const fs::path real = behindLinks(target);
    std::error_code ignored;
    const auto status = fs::status(real, ignored);
    if (fs::is_directory(status))
        fail(EISDIR);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        file_ = std::fopen(real.c_str(), "wb");
        if (file_ == nullptr)
            fail(errno);
        return;
    }
    // A rename would replace even a file that may not be written.
    if (fs::exists(status) && ::access(real.c_str(), W_OK) != 0)
        fail(errno);

    std::string name = real.filename().string();
    name.insert(name.begin(), '.');
    name += '.' + std::to_string(::getpid()) + ".tmp";
    target_ = real;
    beside_ = real.parent_path() / name;
    const int descriptor = ::open(beside_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        const int error = errno;
        beside_.clear();
        fail(error);
    }
    if (fs::exists(status))
        fs::permissions(beside_, status.permissions(), ignored);
    file_ = ::fdopen(descriptor, "wb");
}

OutputFile::~OutputFile()
{
    if (file_ != nullptr)
        std::fclose(file_);
    if (!beside_.empty())
        ::unlink(beside_.c_str());
}

void OutputFile::probe(const fs::path& target)
{
    std::error_code ignored;
    const auto status = fs::status(target, ignored);
    if (!fs::is_other(status))
        const OutputFile file(target);
}

void OutputFile::write(std::string_view bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size())
        fail(errno);
}

void OutputFile::finish()
{
    if (file_ == nullptr)
        return;
    if (std::fflush(file_) != 0)
        fail(errno);
    // Devices and pipes have nothing to sync; a full disk may only speak up here.
    if (!beside_.empty() && ::fsync(::fileno(file_)) != 0 && errno != EINVAL)
        fail(errno);
    std::FILE* const file = file_;
    file_ = nullptr;
    if (std::fclose(file) != 0)
        fail(errno);
}

void OutputFile::commit()
{
    finish();
    if (beside_.empty())
        return;
    if (::rename(beside_.c_str(), target_.c_str()) != 0)
        fail(errno);
    beside_.clear();
}

void OutputFile::fail(int error) const
{
    throw FileError(FileError::Write, target_, "cannot be written: " + textOf(error));
}

namespace
{

/// Appends what a stream still has. The number of the error that ended it, or 0.
int readToEnd(std::FILE* file, std::string& bytes)
{
    std::array<char, std::size_t{1} << 16U> block{};
    std::size_t got = 0;
    while ((got = std::fread(block.data(), 1, block.size(), file)) > 0)
        bytes.append(block.data(), got);
    return std::ferror(file) != 0 ? errno : 0;
}

[[noreturn]] void failToRead(const fs::path& path, int error)
{
    throw FileError(FileError::Read, path, "cannot be read: " + textOf(error));
}

} // namespace

std::string readWholeFile(const fs::path& path)
{
    std::error_code ignored;
    if (fs::is_directory(path, ignored))
        failToRead(path, EISDIR);
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        failToRead(path, errno);

    std::string bytes;
    const auto expected = fs::file_size(path, ignored);
    if (!ignored)
        bytes.reserve(expected);
    const int error = readToEnd(file, bytes);
    std::fclose(file);
    if (error != 0)
        failToRead(path, error);
    return bytes;
}

std::string readListFile(const fs::path& path)
{
    if (path != "-")
        return readWholeFile(path);
    std::string bytes;
    if (const int error = readToEnd(stdin, bytes); error != 0)
        failToRead("standard input", error);
    return bytes;
}

} // namespace uvtool
