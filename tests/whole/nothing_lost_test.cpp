// Who saves a file keeps the one that was there before until the new one is complete, whatever comes in between.

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <numeric>
#include <set>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "zorv/cloud/cloud_container.h"
#include "zorv/core/archive.h"
#include "zorv/core/log_file.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/text_conversion.h"
#include "zorv/core/zip.h"
#include "zorv/math/triangle3d.h"
#include "zorv/orientation/bundle_observation_list.h"
#include "zorv/photo/camera_list.h"
#include "zorv/photo/field_of_view.h"
#include "zorv/photo/reseau_file_list.h"
#include "zorv/points/measurement_log.h"
#include "zorv/points/point_list.h"
#include "zorv/rectify/plane_list.h"
#include "zorv/report/html_report.h"

namespace {

constexpr int kRecords = 300;

enum Result { kTells, kSilent, kAppends };

struct Writer {
    const char* file;
    bool (*write)(const std::wstring& path);
    Result result = kTells;
};

struct Archive : CZipWrapper {
    void WriteItem() override {
        for (std::uint32_t i = 0; i < 5000; ++i)
            WriteValue(i * i * 2654435761U);  // packs badly
    }
};

bool WriteCameras(const std::wstring& path, unsigned int mode) {
    ZoCameraList list;
    for (unsigned int i = 0; i < 4; ++i)
        list.Add(ZoCamera(i, 18, 0, 0, 0, 0, 9, "c"))->mode = mode;
    return list.WriteFile(path, false) == 1;
}

const Writer kWriters[] = {
    {"archive.zip",
     [](const std::wstring& path) {
         Archive archive;
         archive.SzOpen(path, true);
         archive.SzAdd(L"item");
         archive.SzClose();
         return archive.GetLastResult() == eZoZipOk;
     }},
    {"streamed.zip",
     [](const std::wstring& path) {
         const std::string bytes(5000, 'b');
         const HZIP zip = CreateZip(path.c_str(), nullptr);
         for (int i = 0; zip && i < 10; ++i)
             ZipAdd(zip, std::to_wstring(i).c_str(), bytes.data(), 5000);
         return zip && CloseZipZ(zip) == eZoZipOk;
     }},
    {"cloud.zoptc",
     [](const std::wstring& path) {
         ZoPointCloudContainer container;
         ZoPointCloud* const cloud = container.AddCloud();
         cloud->scanInfo = ScanDataInfo();  // without the time
         for (int i = 0; i < 10000; ++i)
             cloud->AddPoint(ZoScanPoint3d(i, i, i, i));
         return container.Write(path) == 1;
     }},
    {"points.coo",
     [](const std::wstring& path) {
         ZoPointList list;
         for (int i = 0; i < kRecords; ++i)
             list.Add(ZoPoint());
         return list.WriteFile(path) == 1;
     }},
    {"simple.cam", [](const std::wstring& path) { return WriteCameras(path, 0); }, kSilent},
    {"full.cam", [](const std::wstring& path) { return WriteCameras(path, 1); }, kSilent},
    {"planes.sip",
     [](const std::wstring& path) {
         ZoPlaneList list;
         for (int i = 0; i < kRecords; ++i)
             list.Add(ZoPlane());
         return list.WriteFile(path) == kRecords;
     }},
    {"more.aob", [](const std::wstring& path) { return ZoBundleAOBList().WriteFile(path, false) == 1; }},
    {"reseau.dcr", [](const std::wstring& path) { return ZoReseaufileList().WriteDigitalCameraFormat(path); }},
    {"page.html", [](const std::wstring& path) { return HtmlLib::WriteHTMLFile(path, "", std::string(50'000, 'b')); }},
    {"styles.css", [](const std::wstring& path) { return HtmlLib::WriteCSSFile(ZoGetPath(path)); }},
    {"triangle.ply", [](const std::wstring& path) { return ZoTrinagle3d().WriteAsPly(path); }},
    {"view.ply",
     [](const std::wstring& path) {
         ZoPhotoFieldOfView view;
         view.valid = true;
         return view.WriteAsPly(wstring2string(path).c_str());
     }},
    {"measured.mlg",
     [](const std::wstring& path) {
         ZoLogItemList log;
         log.filename = path;
         return log.AddItem(ZoLogItem()) != nullptr;
     },
     kAppends},
    {"steps.log",
     [](const std::wstring& path) {
         ZoLogfile(path, 1) << "step\n";
         return true;
     },
     kAppends},
};

const std::string kOld(30'000, 'o');

/// A folder with the old file, and the new one as it becomes when nothing comes in between.
struct Scene {
    explicit Scene(const Writer& tried) : writer(tried) {
        const TempFolder other;
        path = folder.Write(writer.file, kOld);
        other.Write(writer.file, writer.result == kAppends ? kOld : "");
        EXPECT_TRUE(writer.write(other.Name(writer.file))) << writer.file;
        fresh = other.Read(writer.file);
    }
    std::string Now() const { return folder.Read(writer.file); }
    /// A ZIP keeps the time, which stays for two seconds.
    bool IsNew(const std::string& bytes) const {
        return path.ends_with(L".zip") ? bytes.size() == fresh.size() && bytes != kOld : bytes == fresh;
    }
    bool IsOldKept(const std::string& bytes) const {
        return writer.result == kAppends ? bytes.starts_with(kOld) : bytes == kOld;
    }
    auto Files() const { return std::distance(std::filesystem::directory_iterator(folder.path), {}); }

    /// Names and sizes.
    std::string State() const {
        std::set<std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path))
            files.insert(entry.path().native() + ":" + std::to_string(entry.file_size()) + " ");
        return std::accumulate(files.begin(), files.end(), std::string());
    }

    const Writer& writer;
    TempFolder folder;
    std::wstring path;
    std::string fresh;
};

/// What the action tells in a process of its own.
bool InChild(const std::function<bool()>& action) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(action() ? 1 : 0);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status) == 1;
}

enum class Ending { kKilled, kCompleted, kNotAllowed };

/// Writes in a process of its own that stops wherever it goes into or comes out of the system, and is killed at the
/// first stop that the action does not let pass.
Ending Trace(const Scene& scene, const std::function<bool()>& passes) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(1);
        ::raise(SIGSTOP);
        scene.writer.write(scene.path);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) return Ending::kNotAllowed;
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL);
    while (passes()) {
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        ::waitpid(child, &status, 0);
        if (WIFEXITED(status)) return Ending::kCompleted;
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    return Ending::kKilled;
}

TEST(NothingLost, OnAFullDisk) {
    for (const Writer& writer : kWriters) {
        const Scene scene(writer);
        const std::size_t size = scene.fresh.size();
        for (const std::size_t limit : std::set<std::size_t>{0, 1, 4096, size / 2, size - 1, size}) {
            if (limit > size) continue;
            SCOPED_TRACE(std::string(writer.file) + ", room for " + std::to_string(limit));
            scene.folder.Write(writer.file, kOld);
            const bool told = InChild([&] {
                std::signal(SIGXFSZ, SIG_IGN);
                const rlimit room{limit, limit};
                return ::setrlimit(RLIMIT_FSIZE, &room) == 0 && writer.write(scene.path);
            });
            EXPECT_TRUE(writer.result != kTells || told == (limit == size));
            const std::string now = scene.Now();
            EXPECT_TRUE(limit == size && writer.result != kAppends ? scene.IsNew(now) : scene.IsOldKept(now));
            EXPECT_EQ(scene.Files(), 1);
        }
    }
}

TEST(NothingLost, WhereNobodyMayWrite) {
    constexpr uid_t kNobody = 65534;
    for (const Writer& writer : kWriters) {
        for (const auto& [folderMode, fileMode] : {std::pair<mode_t, mode_t>{0555, 0666}, {0777, 0444}}) {
            SCOPED_TRACE(std::string(writer.file) + (fileMode == 0444 ? ", the file" : ", the folder"));
            const Scene scene(writer);
            ASSERT_EQ(::chmod((scene.folder.path / writer.file).c_str(), fileMode), 0);
            ASSERT_EQ(::chmod(scene.folder.path.c_str(), folderMode), 0);
            const bool told = InChild([&] {
                // Nothing is forbidden to root.
                if (::geteuid() == 0 && ::setresuid(kNobody, kNobody, kNobody) != 0) return false;
                return writer.write(scene.path);
            });
            ASSERT_EQ(::chmod(scene.folder.path.c_str(), 0777), 0);
            EXPECT_TRUE(writer.result != kTells || !told);
            EXPECT_TRUE(scene.IsOldKept(scene.Now()));
            EXPECT_EQ(scene.Files(), 1);
        }
    }
}

TEST(NothingLost, KilledAnywhere) {
    for (const Writer& writer : kWriters) {
        const Scene scene(writer);
        Ending ending = Ending::kKilled;
        int kill = 0;
        while (ending == Ending::kKilled) {
            // What lies on the disk at a stop is what a kill there leaves; the kill itself comes where that changes.
            scene.folder.Write(writer.file, kOld);
            std::string former = scene.State();
            int changes = 0;
            bool isWhole = true;
            ++kill;
            ending = Trace(scene, [&] {
                const std::string now = scene.Now(), state = scene.State();
                isWhole = isWhole && (scene.IsOldKept(now) || scene.IsNew(now));
                changes += state != former ? 1 : 0;
                former = state;
                return changes < kill;
            });
            if (ending == Ending::kNotAllowed) GTEST_SKIP() << "no right to trace a process";
            const std::string now = scene.Now();
            EXPECT_TRUE(isWhole && (scene.IsOldKept(now) || scene.IsNew(now))) << writer.file << ", kill " << kill;
        }
        EXPECT_GT(kill, 1) << writer.file;
        if (writer.result == kAppends) continue;
        scene.folder.Write(writer.file, kOld);
        EXPECT_GT(scene.Files(), 1) << writer.file << ": no kill came while it wrote";
        std::ifstream reader(scene.folder.path / writer.file, std::ios::binary);
        EXPECT_TRUE(writer.write(scene.path)) << writer.file << ": what was left behind is in the way";
        EXPECT_TRUE(scene.IsNew(scene.Now())) << writer.file;
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), kOld) << writer.file;
    }
}

TEST(NothingLost, NamesBesideTheFile) {
    const TempFolder folder;
    const ZoPointList list;
    // What another machine's process of the same number left, or is still writing.
    constexpr int kOthers = 500;
    for (int i = 0; i < kOthers; ++i)
        folder.Write("a.coo." + std::to_string(::getpid()) + "-" + std::to_string(i) + ".tmp", "other");
    EXPECT_EQ(list.WriteFile(folder.Name("a.coo")), 1);
    int others = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path))
        others += folder.Read(entry.path().filename()) == "other" ? 1 : 0;
    EXPECT_EQ(others, kOthers);

    std::string longest = ".coo";
    for (int i = 0; i < 125; ++i)
        longest.insert(0, "\xc3\xa4");
    EXPECT_EQ(list.WriteFile(folder.Name(longest)), 1) << "no room for a longer name";
}

}  // namespace
