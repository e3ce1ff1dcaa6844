#include "Unfold3D/Unfold3D.h"

#include <gtest/gtest.h>

using namespace NU3D;

namespace
{

CRef table()
{
    return {VALTYPE_TABLE, VALPROP_VALUE};
}

TEST(Contract, AMissingArrayAndOneOfAnotherTypeReadAsEmpty)
{
    const CRef result = table();
    result->Add("ids", CRef(std::vector<int>{1, 2}, VALPROP_VALUE));
    EXPECT_EQ(result->GetInts("ids"), (std::vector<int>{1, 2}));
    EXPECT_TRUE(result->GetDoubles("ids").empty());
    EXPECT_TRUE(result->GetInts("none").empty());
}

TEST(Contract, AnUnknownCommandIsAnErrorThatNamesIt)
{
    CUnfold3DAPI api;
    const CRef result = api.Do("Fold", table());
    ASSERT_TRUE(CUnfold3DAPI::HasError(result));
    EXPECT_NE(CUnfold3DAPI::GetErrorString(result).find("Fold"), std::string::npos);
    EXPECT_FALSE(CUnfold3DAPI::HasWarning(result));
}

} // namespace
