// Any bytes as the text form and as the archive record of a local system: what was read can be tested and computed,
// and what is written reads back as the same.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "record_checks.h"

#include "zorv/orientation/similarity.h"

namespace {

/// The definition in the block of this text, and whether all of it was there.
ZoLokalSystemDef Read(const std::string& text, bool& complete) {
    ZoLokalSystemDef def;
    complete = ReadBlock(text, [&def](ZoReaderObject* object) { def.Read(object); }) == 0;
    return def;
}

/// Four points to which the definition is bent, so that the computation is reached.
void Compute(ZoLokalSystemDef def) {
    ZoPointList list;
    for (const double x : {0.0, 1.0, 2.0, 5.0})
        list.Add(ZoPoint(static_cast<unsigned int>(x) + 1, x, x * x, def.x, 0));
    for (const bool bent : {false, true}) {
        if (bent) def.id0 = 1, def.id1 = 2, def.id2 = 3, def.id3 = 6;
        eTrafo3DStatus status = eTrafo3DOk;
        const bool valid = def.IsValid(status, &list, true);
        Require(valid == (status == eTrafo3DOk));
        for (const double fixedScale : {0.0, 2.0}) {
            ZoTrafo3d trafo;
            const bool computed = trafo.CalcByLocalSystem(def, &list, fixedScale, 0.1);
            Require(computed || trafo.GetStatus() != eTrafo3DOk);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    bool complete = false;
    const ZoLokalSystemDef fromText = Read(std::string(reinterpret_cast<const char*>(data), size), complete);
    Compute(fromText);
    if (complete) {
        // 16 digits may miss a last place, once.
        const ZoLokalSystemDef back = Read(WrittenText(fromText), complete);
        Require(!complete || WrittenText(Read(WrittenText(back), complete)) == WrittenText(back));
    }

    ArchiveItem item(data, size);
    ZoLokalSystemDef fromArchive;
    fromArchive.ReadV9(&item);
    Compute(fromArchive);
    const std::string bytes = ArchiveBytes(fromArchive);
    Require(size < bytes.size() || std::memcmp(bytes.data(), data, bytes.size()) == 0);
    return 0;
}
