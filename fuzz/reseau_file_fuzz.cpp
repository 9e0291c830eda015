// Any bytes as a reseau file, as a list of digital cameras and as an archive record of a descriptor: what comes in is
// no more than the bytes can hold, and what is written reads back as the same.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

#include <unistd.h>

#include "zorv/core/archive.h"
#include "zorv/core/text_conversion.h"
#include "zorv/photo/reseau_descriptor.h"
#include "zorv/photo/reseau_file_list.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

struct InputFile {
    explicit InputFile(const char* extension)
        : path(std::filesystem::temp_directory_path() / ("zorv-reseaus-" + std::to_string(::getpid()) + extension)) {}
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

    Item item(data, size);
    ZoReseauDataDesc desc;
    desc.ReadV9(&item);
    const ZoReseauFile* found = list.FindReseauFile(desc);
    Require(!found || desc.ExactMatch(ZoReseauDataDesc(found->GetName(), found->GetSubId())));
    return 0;
}
