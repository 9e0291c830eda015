#include "zorv/core/alphanumeric_id.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(AlphanumericId, DigitsAloneAreTheId) {
    const char* const null = nullptr;
    EXPECT_EQ(GetIdFromAlphaNumericString(null), 0u);
    EXPECT_EQ(GetIdFromAlphaNumericString(""), 0u);
    EXPECT_EQ(GetIdFromAlphaNumericString("007"), 7u);
    EXPECT_EQ(GetIdFromAlphaNumericString(L"12"), 12u);
    EXPECT_EQ(GetIdFromAlphaNumericString("4294967295"), 4294967295u);
    EXPECT_EQ(GetIdFromAlphaNumericString("99999999999999999999999"), 4294967295u);
}

TEST(AlphanumericId, EachPrefixHasABaseOfItsOwn) {
    // Other tests of the process may have taken bases already, so that only differences are known.
    const unsigned int first = GetIdFromAlphaNumericString("Aid");
    EXPECT_EQ(first % 1000, 0u);
    EXPECT_GE(first, 1000u);
    EXPECT_EQ(GetIdFromAlphaNumericString("A1i2d3"), first + 123);
    EXPECT_EQ(GetIdFromAlphaNumericString("Bid1"), first + 1001);
    EXPECT_EQ(GetIdFromAlphaNumericString("-7"), first + 2007);
    EXPECT_EQ(GetIdFromAlphaNumericString("Aid07"), first + 7);
    EXPECT_EQ(zorv::detail::IdFromName(std::string_view("Aid45", 4)), first + 4);

    const std::string longName(5000, 'x');
    const unsigned int ofLong = GetIdFromAlphaNumericString((longName + "2").c_str());
    EXPECT_EQ(ofLong, first + 3002);
    EXPECT_EQ(GetIdFromAlphaNumericString(("1" + longName).c_str()), ofLong - 1);
}

TEST(AlphanumericId, WideNamesCountForThemselves) {
    const unsigned int first = GetIdFromAlphaNumericString(L"Wid1");
    GetIdFromAlphaNumericString("narrow1");
    EXPECT_EQ(GetIdFromAlphaNumericString(L"Ωid5"), first + 1004);
    EXPECT_EQ(GetIdFromAlphaNumericString(L"W2id"), first + 1);
}

}  // namespace
