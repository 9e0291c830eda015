// Any bytes as a camera file in both forms and as an archive record: what comes in is no more than the bytes can hold,
// what is written reads back as the same, and every camera adjusts and inverts points without end or trap.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include <unistd.h>

#include "zorv/core/archive.h"
#include "zorv/core/text_conversion.h"
#include "zorv/photo/camera_list.h"

namespace {

// Tables take milliseconds to make: a few inputs get them, and few of each.
constexpr int kTablesOfAnInput = 2;
constexpr std::size_t kInputsForTables = 16;

void Require(bool condition) {
    if (!condition) std::abort();
}

struct InputFile {
    InputFile() : path(std::filesystem::temp_directory_path() / ("zorv-cameras-" + std::to_string(::getpid()))) {}
    ~InputFile() { std::filesystem::remove(path); }
    void Write(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }
    std::string Read() const {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::wstring Name() const { return string2wstring(path.native()); }
    std::filesystem::path path;
};

/// An item that was unpacked already.
class Item final : public CZipWrapper {
  public:
    Item(const std::uint8_t* data, std::size_t size) {
        buffer = std::make_unique<char[]>(size + 1);
        if (size > 0) std::memcpy(buffer.get(), data, size);
        bufferSize = size;
    }
    void WriteItem() override {}
};

void CheckPoints(const ZoCamera& camera) {
    for (const double at : {0.0, 0.37, -7.9, 20.0, 1e10}) {
        double x = at;
        double y = -0.6 * at;
        camera.Adjust(&x, &y);
        if (!camera.InvAdjust(&x, &y)) continue;
        camera.Calc_drForGraph(x, y);
    }
}

void CheckCameras(const ZoCameraList& cameras, std::size_t size) {
    Require(cameras.IsNotifyEnabled());
    Require(cameras.Count() <= static_cast<int>(size));
    int left = size % kInputsForTables == 0 ? kTablesOfAnInput : 0;
    for (ZoCamera* camera = cameras.First(); camera && left-- > 0; camera = camera->Next()) {
        CheckPoints(*camera);
        ZoCamera digital(*camera);
        digital.CreateLibAutoCam(nullptr, true);
        CheckPoints(ZoCamera(digital));
    }
    ZoCamera::DeleteInvAdjustTables();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    file.Write(std::string(reinterpret_cast<const char*>(data), size));
    ZoCameraList cameras(file.Name());
    CheckCameras(cameras, size);
    // A second writing may differ from the first in names and in a reach of 0, never from a third.
    cameras.WriteFile(file.Name(), false);
    ZoCameraList back(file.Name());
    back.WriteFile(file.Name(), false);
    const std::string twice = file.Read();
    ZoCameraList(file.Name()).WriteFile(file.Name(), false);
    Require(file.Read() == twice);

    Item item(data, size);
    ZoCamera camera;
    camera.ReadV9(&item);
    ZoCameraList one;
    one.Add(camera);
    CheckCameras(one, size + 1);
    return 0;
}
