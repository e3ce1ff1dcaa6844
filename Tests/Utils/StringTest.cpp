#include "Utils/kyString.h"

#include <gtest/gtest.h>

TEST(String, JoinsTextsEmptyOnesTooUnlessTheyAreSkipped)
{
    EXPECT_EQ(kyString::join({"", "a", "", "b", ""}, ", "), ", a, , b, ");
    EXPECT_EQ(kyString::join({"", "a", "", "b", ""}, ", ", true), "a, b");
    EXPECT_EQ(kyString::join({"a"}, ", ") + kyString::join({}, ", "), "a");
}
