#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace uvtool
{

/// A file that appears under its name only when it is complete.
///
/// Bytes go to a file beside the target; finish() flushes it down to the disk and checks that all
/// of it arrived, commit() renames it to the target. Without commit() the target stays as it was
/// and the file beside it goes. A target that isn't a regular file (a device, a pipe) is written
/// directly. Every failure is a FileError of kind Write.
class OutputFile
{
public:
    explicit OutputFile(const std::filesystem::path& target);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Fails as the writing of this file would, as far as that shows beforehand: a folder that
    /// isn't there, no permission. Leaves no trace; devices and pipes are left alone.
    static void probe(const std::filesystem::path& target);

    void write(std::string_view bytes);
    /// No write() comes after it. Of several files that belong together all are finished before the
    /// first commit(), so that a full disk leaves all of them as they were.
    void finish();
    void commit(); ///< finishes where that isn't done yet

private:
    [[noreturn]] void fail(int error) const;

    std::filesystem::path target_;
    std::filesystem::path beside_; ///< empty when the target is written directly
    std::FILE* file_ = nullptr;
};

/// All bytes of a regular file. A FileError of kind Read for a directory, a missing file, one
/// without permission or a read that fails.
std::string readWholeFile(const std::filesystem::path& path);

/// The same for a list that is given by the name of a file: "-" is standard input, once.
std::string readListFile(const std::filesystem::path& path);

} // namespace uvtool
