// Makes and reads a cloud file of more than 4 GiB and an archive item of more than 2 GiB in the folder that the
// argument names, compares every value, and removes the files. Exit status 1 when anything is not as it was written.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iterator>
#include <system_error>
#include <utility>

#include "zorv/zorv.h"

namespace {

constexpr std::uint64_t kFourGiB = std::uint64_t{1} << 32;
constexpr std::uint64_t kTwoGiB = std::uint64_t{1} << 31;

bool allGood = true;

void Check(bool isGood, const char* what) {
    if (!isGood) std::printf("  WRONG: %s\n", what);
    allGood = allGood && isGood;
}

void Timed(const char* what, const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("  %-24s %7.1f s\n", what, seconds.count());
    std::fflush(stdout);
}

/// Its size while it is there; the file goes with this.
struct File {
    explicit File(std::filesystem::path where) : path(std::move(where)) {}
    ~File() {
        std::error_code error;
        std::filesystem::remove(path, error);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    std::uint64_t Size() const {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(path, error);
        return error ? 0 : size;
    }
    std::filesystem::path path;
};

/// Every point tells its place: the fields are exact, so that the reader's are compared for equality.
ZoScanPoint3d Point(std::uint64_t i) {
    constexpr std::uint64_t kRow = 10'000;
    ZoScanPoint3d point(500'000.0 + static_cast<double>(i % kRow) / 1024,
                        6'000'000.0 + static_cast<double>(i / kRow) / 1024, static_cast<double>(i) / 4096,
                        static_cast<int>(i));
    point.nbrMeasurements = static_cast<std::uint8_t>(i * 7);
    point.extra[1] = static_cast<float>(i & 0xffff);
    return point;
}

bool Equal(const ZoScanPoint3d& a, const ZoScanPoint3d& b) {
    return a.x() == b.x() && a.y() == b.y() && a.z() == b.z() && a.color == b.color &&
           a.nbrMeasurements == b.nbrMeasurements && a.extra[1] == b.extra[1];
}

/// One cloud that alone goes beyond 4 GiB, and a small one behind it, whose beginning lies beyond.
void CloudFile(const std::filesystem::path& folder) {
    constexpr std::uint64_t kCounts[] = {74'100'000, 1'000};
    const File file(folder / "large.zoptc");
    std::printf("cloud file of %.1f million points\n", static_cast<double>(kCounts[0] + kCounts[1]) / 1e6);
    {
        ZoPointCloudContainer container;
        Timed("make the points", [&] {
            for (const std::uint64_t count : kCounts) {
                ZoPointCloud* const cloud = container.AddCloud(count, L"large");
                Check(cloud != nullptr, "no memory for the points");
                for (std::uint64_t i = 0; cloud && i < count; ++i)
                    cloud->AddPoint(Point(i));
            }
        });
        Timed("write", [&] { Check(container.Write(file.path.wstring()) == 1, "the file was not written"); });
    }
    std::printf("  %-24s %llu bytes\n", "size", static_cast<unsigned long long>(file.Size()));
    Check(file.Size() > kFourGiB, "the file does not exceed 4 GiB");

    ZoPointCloudContainer container;
    ZoPointCloudReadResult result;
    Timed("read", [&] { Check(container.Read(file.path.wstring(), result), "the file was not read"); });
    Timed("compare", [&] {
        Check(container.clouds.Count() == 2 && container.Size() == kCounts[0] + kCounts[1],
              "number of clouds or points");
        std::uint64_t colors = 0, different = 0;
        const std::uint64_t* count = kCounts;
        for (const ZoPointCloud* cloud = container.First(); cloud && count < std::end(kCounts);
             cloud = cloud->NextConst()) {
            Check(cloud->Size() == *count, "number of points of a cloud");
            Check(!cloud->points.empty() && Equal(cloud->points.front(), Point(0)), "first point");
            Check(!cloud->points.empty() && Equal(cloud->points.back(), Point(*count - 1)), "last point");
            for (std::uint64_t i = 0; i < cloud->Size(); ++i) {
                different += Equal(cloud->points[i], Point(i)) ? 0 : 1;
                colors += cloud->points[i].color;
            }
            ++count;
        }
        std::uint64_t expected = 0;
        for (const std::uint64_t n : kCounts)
            expected += n * (n - 1) / 2;
        Check(colors == expected, "sum over the points");
        Check(different == 0, "points differ");
        Check(container.box.GetCount() > 0 && container.center.GetCount() > 0, "box and centre");
    });
}

struct Numbers : CZipWrapper {
    static constexpr std::uint64_t kCount = kTwoGiB / sizeof(std::uint64_t) + 10'000'000;
    /// Eight neighbours are equal, so that the item packs into what an archive holds.
    static std::uint64_t Value(std::uint64_t i) { return i / 8 * 0x9e3779b1; }
    void WriteItem() override {
        for (std::uint64_t i = 0; i < kCount; ++i)
            WriteValue(Value(i));
    }
};

void ArchiveItem(const std::filesystem::path& folder) {
    const File file(folder / "large.zip");
    std::printf("archive item of %.2f GiB\n",
                static_cast<double>(Numbers::kCount * sizeof(std::uint64_t)) / static_cast<double>(kTwoGiB / 2));
    Timed("write", [&] {
        Numbers archive;
        Check(archive.SzOpen(file.path.wstring(), true), "the archive was not opened");
        archive.SzAdd(L"Numbers");
        archive.SzClose();
        Check(archive.GetLastResult() == eZoZipOk, "the archive was not written");
    });
    std::printf("  %-24s %llu bytes\n", "size", static_cast<unsigned long long>(file.Size()));

    Numbers archive;
    Check(archive.SzOpen(file.path.wstring(), false), "the archive was not opened again");
    ZIPENTRY entry;
    Timed("read", [&] { Check(archive.UnzipItem(L"Numbers", &entry) != nullptr, "the item was not unpacked"); });
    Timed("compare", [&] {
        Check(archive.ReadBytesLeft() == Numbers::kCount * sizeof(std::uint64_t), "size of the item");
        Check(entry.unc_size == Numbers::kCount * sizeof(std::uint64_t) + 4, "size in the directory");
        std::uint64_t different = 0, value = 0;
        for (std::uint64_t i = 0; i < Numbers::kCount; ++i)
            different += archive.ReadValue(value) && value == Numbers::Value(i) ? 0 : 1;
        Check(different == 0, "values differ");
        Check(archive.Eof(), "bytes behind the last value");
    });
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::printf("usage: large_files FOLDER\n");
        return 2;
    }
    CloudFile(arguments[1]);
    ArchiveItem(arguments[1]);
    std::printf("%s\n", allGood ? "all as it was written" : "NOT as it was written");
    return allGood ? 0 : 1;
}
