// Any bytes as a reseau file, as a list of digital cameras and as an archive record of a descriptor: what comes in is
// no more than the bytes can hold, and what is written reads back as the same.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>

#include "input_file.h"
#include "require.h"
#include "tests/support/archive_item.h"

#include "zorv/photo/reseau_descriptor.h"
#include "zorv/photo/reseau_file_list.h"

namespace {

void UseReseau(ZoReseauFile& reseau, std::size_t size) {
    Require(reseau.IsValid());
    Require(static_cast<std::size_t>(reseau.crossList.Count()) <= size);
    unsigned int ids[2] = {};
    Require(reseau.FindCrossId(ids[0], ids[1]) == !reseau.crossList.IsEmpty());
    reseau.SelectCross(ids, 2);
    Require(reseau.FindUserSelectedCrosses(ids, 2) <= 2);
    reseau.GetCCDMPixel();
    reseau.GetCCDPixelSize();
    reseau.GetDescName();
}

bool IsFinite(const ZoPoint& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool IsFinite(const ZoReseauFile& reseau) {
    for (const ZoRegion* region : {&reseau.photoRegion, &reseau.boxRegion})
        if (!IsFinite(region->LL) || !IsFinite(region->UR)) return false;
    for (const ZoPoint* mark = reseau.crossList.First(); mark; mark = mark->NextConst())
        if (!IsFinite(*mark)) return false;
    return true;
}

/// The text that a file gives after it was read and written; empty when it is none, or holds infinite coordinates,
/// which the text cannot tell.
std::string ReadAndWritten(const InputFile& file, std::size_t size) {
    ZoReseaufileList list;
    if (list.ReadReseauFile(file.Name()) == 0) return {};
    Require(list.Count() == 1);
    UseReseau(*list.First(), size);
    if (!IsFinite(*list.First())) return {};
    std::ostringstream text;
    ZoReseauFile::WriteHeaderComment(text);
    list.First()->Write(text);
    return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    static const InputFile plate(".res");
    plate.Write(bytes);
    if (const std::string text = ReadAndWritten(plate, size); !text.empty()) {
        plate.Write(text);
        Require(ReadAndWritten(plate, text.size()) == text);
    }

    static const InputFile cameras(".dres");
    cameras.Write(bytes);
    ZoReseaufileList list;
    list.ReadReseauFile(cameras.Name());
    Require(static_cast<std::size_t>(list.Count()) <= size);
    for (ZoReseauFile* reseau = list.First(); reseau; reseau = reseau->Next())
        UseReseau(*reseau, ZoReseauFile::kDigitalMarks);
    Require(list.WriteDigitalCameraFormat(cameras.Name()));
    const std::string text = cameras.Read();
    ZoReseaufileList back;
    back.ReadReseauFile(cameras.Name());
    Require(back.Count() == list.Count());
    Require(back.WriteDigitalCameraFormat(cameras.Name()));
    Require(cameras.Read() == text);

    ArchiveItem item(data, size);
    ZoReseauDataDesc desc;
    desc.ReadV9(&item);
    const ZoReseauFile* found = list.FindReseauFile(desc);
    Require(!found || desc.ExactMatch(ZoReseauDataDesc(found->GetName(), found->GetSubId())));
    return 0;
}
