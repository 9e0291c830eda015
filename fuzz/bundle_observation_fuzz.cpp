// Any bytes as an observation file and as an archive record: a list has no more records than the bytes can hold,
// reading a file brings it to its slots, and what is written reads back as the same.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "input_file.h"
#include "record_checks.h"

#include "zorv/orientation/bundle_observation_list.h"
#include "zorv/points/point_list.h"

namespace {

constexpr std::size_t kShortestText = sizeof "0 0 0 0 0 0" - 1;
constexpr std::size_t kArchiveRecord = 38;

/// Numbers without a text form end the reading; all others come back as they were written, but for the sign of 0.
void CheckRoundTrip(const InputFile& file, const ZoBundleAOBList& list) {
    for (const ZoBundleAOB* record = list.First(); record; record = record->NextConst()) {
        if (!std::isfinite(record->GetValue()) || !std::isfinite(record->GetSigma())) return;
    }
    Require(list.WriteFile(file.Name(), false) == 1);
    ZoBundleAOBList back;
    back.ReadV50(file.Name());
    Require(back.Count() == list.Count());
    Require(back.WriteFile(file.Name(), false) == 1);
    ZoBundleAOBList again;
    again.ReadV50(file.Name());
    Require(WrittenText(again) == WrittenText(back));
}

void CheckList(const InputFile& file, ZoBundleAOBList& list, std::size_t most) {
    Require(list.IsNotifyEnabled());
    Require(static_cast<std::size_t>(list.Count()) <= most);
    CheckRoundTrip(file, list);
    ZoPointList points;
    points.Add(ZoPoint(1, 0, 0, 0, 0));
    const int active = list.ValidateActiveAOB(&points);
    std::ostringstream out;
    list.WriteGentri(out);
    const std::string gentri = out.str();
    Require(std::count(gentri.begin(), gentri.end(), '\n') == active);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    file.Write(std::string(reinterpret_cast<const char*>(data), size));
    ZoBundleAOBList slots;
    Require(slots.ReadFile(file.Name()) == 1);
    ZoBundleAOBList all;
    Require(all.ReadV50(file.Name()) == 1);
    CheckList(file, slots, ZoBundleAOBList::kNSlots);
    Require(slots.Count() == ZoBundleAOBList::kNSlots);
    CheckList(file, all, std::max<std::size_t>(size / kShortestText + 1, ZoBundleAOBList::kNSlots));

    ArchiveItem item(data, size);
    ZoBundleAOBList stored;
    stored.ReadV9(&item);
    CheckList(file, stored, size / kArchiveRecord);
    return 0;
}
