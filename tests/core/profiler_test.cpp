#include "zorv/core/profiler.h"

#include <gtest/gtest.h>

namespace {

TEST(Profiler, NestsAndCountsTheLiving) {
    const int before = ZoProfiler::GetIndentSpaceNbr();
    {
        const ZoProfiler outer(L"outer"), inner;
        EXPECT_EQ(ZoProfiler::GetIndentSpaceNbr(), before + 2);
        EXPECT_EQ(ZoProfiler::GetIndentSpaceStr(), std::wstring(2 * (before + 2), L' '));
    }
    EXPECT_EQ(ZoProfiler::GetIndentSpaceNbr(), before);
}

TEST(Profiler, MessageLosesOneLeadingLineEnd) {
    EXPECT_EQ(ZoProfiler("\n\nSize %d, Memory write", 7).message, L"\nSize 7, Memory write");
    EXPECT_EQ(ZoProfiler("%s", "Größe").message, L"Größe");
    EXPECT_EQ(ZoProfiler("%s", std::string(2000, 'x').c_str()).message, std::wstring(599, L'x'));
}

TEST(Profiler, TimesAddUpUnderTheirEntry) {
    ZoProfilerSum::sums.clear();
    ZoProfilerSum::Add(L"a", 1.5);
    ZoProfilerSum::Add(L"a", 2.0);
    { const ZoProfiler silent(L"silent"); }
    {
        ZoProfiler profiler(L"timed");
        profiler.SetProfilerEntry(L"b");
    }
    EXPECT_EQ(ZoProfilerSum::sums.at(L"a"), 3.5);
    ASSERT_EQ(ZoProfilerSum::sums.size(), 2u);
    EXPECT_GE(ZoProfilerSum::sums.at(L"b"), 0.0);
    ZoProfilerSum::sums.clear();
}

}  // namespace
