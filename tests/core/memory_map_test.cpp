#include "zorv/core/memory_map.h"

#include <cstring>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

/// Open handles of this process, or 0 where the system does not tell.
std::ptrdiff_t OpenHandles() {
    std::error_code error;
    const std::filesystem::directory_iterator handles("/proc/self/fd", error);
    return error ? 0 : std::distance(begin(handles), end(handles));
}

void ExpectClosed(const ZoMemoryMap& map, int errorCode) {
    EXPECT_FALSE(map.IsMemoryMapOpen());
    EXPECT_EQ(std::tuple(map.GetErrorCode(), map.fileHandle, map.memory),
              std::tuple(errorCode, ZoMemoryMap::kInvalidHandle, nullptr));
    EXPECT_EQ(map.MemoryMapFileSize(), 0u);
}

TEST(MemoryMap, ANewFileHoldsWhatIsWrittenIntoMemory) {
    const TempFolder folder;
    const std::wstring name = folder.Write("Wolke €.bin", "a longer old content");
    ZoMemoryMap map(name, 5);
    ASSERT_TRUE(map.IsMemoryMapOpen());
    EXPECT_EQ(map.MemoryMapFileSize(), 5u);
    std::memcpy(map.GetMemoryPtr(1), "bcd", 3);
    map.CloseMemoryMap();
    ExpectClosed(map, 0);
    EXPECT_EQ(folder.Read("Wolke €.bin"), std::string("\0bcd\0", 5));

    ZoMemoryMap again(name, false);
    ASSERT_TRUE(again.IsMemoryMapOpen());
    static_cast<char*>(again.GetMemoryPtr())[0] = 'A';
    EXPECT_EQ(again.MemoryMapMemorySize(), 5u);
    EXPECT_TRUE(again.OpenMemoryMap(name, true) && again.readOnly);
    EXPECT_EQ(std::memcmp(again.GetMemoryPtr(), "Abcd", 4), 0);
}

TEST(MemoryMap, FailuresTellTheStepAndLeaveNothingOpen) {
    const TempFolder folder;
    const std::ptrdiff_t before = OpenHandles();
    ZoMemoryMap map;
    EXPECT_FALSE(map.OpenMemoryMap(folder.Name("missing"), true));
    ExpectClosed(map, 2);
    EXPECT_NE(map.GetSystemError(), 0);
    EXPECT_FALSE(map.OpenMemoryMap(folder.Write("empty", ""), true));
    ExpectClosed(map, 3);
    EXPECT_EQ(map.GetSystemError(), 0);
    EXPECT_FALSE(map.CreateMemoryMap(folder.Name("none/new"), 10));
    ExpectClosed(map, 2);
    for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{1} << 62, ~std::uint64_t{0}}) {
        EXPECT_FALSE(map.CreateMemoryMap(folder.Name("new"), size));
        ExpectClosed(map, 5);
        EXPECT_NE(map.GetSystemError(), 0);
    }
    map.CloseMemoryMap();
    EXPECT_FALSE(ZoMemoryMap(folder.Name(""), true).IsMemoryMapOpen());
    { const ZoMemoryMap closedByItsEnd(folder.Name("new"), 4096); }
    EXPECT_EQ(OpenHandles(), before);
}

}  // namespace
