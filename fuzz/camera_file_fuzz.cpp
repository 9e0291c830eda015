// Any bytes as a camera file in both forms and as an archive record: what comes in is no more than the bytes can hold,
// what is written reads back as the same, and every camera adjusts and inverts points without end or trap.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "input_file.h"
#include "require.h"
#include "tests/support/archive_item.h"

#include "zorv/photo/camera_list.h"

namespace {

// Tables take milliseconds to make: a few inputs get them, and few of each.
constexpr int kTablesOfAnInput = 2;
constexpr std::size_t kInputsForTables = 16;

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

    ArchiveItem item(data, size);
    ZoCamera camera;
    camera.ReadV9(&item);
    ZoCameraList one;
    one.Add(camera);
    CheckCameras(one, size + 1);
    return 0;
}
