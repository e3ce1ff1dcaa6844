#pragma once

#include "document/FileError.h"
#include "document/Format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// Expects that a file cannot be read, for a reason of one line that names the file and says this.
inline void expectRefused(const std::filesystem::path& path, const std::string& message)
{
    SCOPED_TRACE(path.filename().string() + " " + message);
    try {
        uvtool::readDocument(path);
        ADD_FAILURE() << "was read";
    } catch (const uvtool::FileError& error) {
        EXPECT_EQ(error.kind(), uvtool::FileError::Read);
        EXPECT_THAT(error.what(), testing::HasSubstr(path.filename().string() + ": "));
        EXPECT_THAT(error.what(), testing::HasSubstr(message));
        EXPECT_THAT(error.what(), testing::Not(testing::HasSubstr("\n")));
    }
}
