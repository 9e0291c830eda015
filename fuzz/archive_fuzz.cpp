// A project archive of any bytes: every item by index and by name, pulled apart as records would.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "zorv/core/archive.h"
#include "zorv/core/flag.h"
#include "zorv/core/object.h"
#include "zorv/core/zip_state.h"

namespace {

constexpr int kMostItems = 200;

class ReadOnlyArchive final : public CZipWrapper {
  public:
    void WriteItem() override {}
};

void ReadRecords(CZipWrapper& archive) {
    const std::uint64_t count = archive.ReadCount(6);
    for (std::uint64_t i = 0; i < count && !archive.Eof(); ++i) {
        ZoObject object;
        ZoFlag flag;
        std::string text;
        object.ReadV9(&archive);
        flag.ReadV9(&archive);
        archive.Read(&text);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadOnlyArchive archive;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    archive.zipHandle = zorv::detail::OpenZip(std::make_unique<std::istringstream>(bytes));
    ZIPENTRY all;
    ZIPENTRY entry;
    if (ZoUnzipEntry(archive.zipHandle, -1, &all) != eZoZipOk) return 0;
    for (int i = 0; i < all.index && i < kMostItems; ++i) {
        if (archive.UnzipItem(i, &entry)) ReadRecords(archive);
        if (archive.UnzipItem(entry.name, nullptr)) ReadRecords(archive);
        char part[16];
        ZoUnzipItem(archive.zipHandle, i, part, sizeof part);
    }
    return 0;
}
