#include "zorv/rectify/plane_list.h"

#include <memory>

#include "zorv/core/archive_list.h"
#include "zorv/core/block_keywords.h"
#include "zorv/core/bulk_change.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/reader.h"
#include "zorv/core/text_writer.h"

namespace {

/// id, an empty name, flags, a normal without elements, D.
constexpr std::size_t kSmallestRecord = 4 + 2 + 4 + 4 + 8;

}  // namespace

ZoPlane* ZoPlaneList::AddPlane(ZoReaderObject* object) {
    return Add(std::make_unique<ZoPlane>(object).release());
}

int ZoPlaneList::CountActivePlanes() const {
    int active = 0;
    for (const ZoPlane* plane = First(); plane; plane = plane->NextConst())
        active += plane->IsActive() ? 1 : 0;
    return active;
}

ZoPlane* ZoPlaneList::GetActivePlane() const {
    return First() ? First()->First(ZoPlane::kActive) : nullptr;
}

int ZoPlaneList::ReadFile(const std::wstring& fileName) {
    ZoReader reader(fileName);
    reader.RegisterObject(ZoReaderObject(Link(this, &ZoPlaneList::Read50Plane)));
    reader.DoProcess(false);
    reader.LogErrorsToApplicationLogger();
    return 1;
}

long ZoPlaneList::Read50Plane(ZoReaderObject* object) {
    zorv::detail::TakeBlockBegin(object);
    AddPlane(object);
    return 1;
}

int ZoPlaneList::WriteFile(const std::wstring& fileName) const {
    zorv::detail::FileReplacement file(fileName);
    int written = 0;
    for (const ZoPlane* plane = First(); plane; plane = plane->NextConst(), ++written) {
        file.Stream() << ZoBeginBlock;
        plane->Write(file.Stream()) << ZoEndBlock << '\n';
    }
    return file.Commit() ? written : 0;
}

void ZoPlaneList::ReadV9(CZipWrapper* archive) {
    zorv::detail::BulkChange(*this, [&] { zorv::detail::ReadRecords(*this, archive, kSmallestRecord); });
}

void ZoPlaneList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}
