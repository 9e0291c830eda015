#include "zorv/orientation/bundle_observation_list.h"

#include <cstddef>
#include <memory>
#include <ostream>

#include "zorv/core/archive_list.h"
#include "zorv/core/bulk_change.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/reader.h"
#include "zorv/core/sort_helper.h"
#include "zorv/core/text_writer.h"
#include "zorv/points/point_list.h"

namespace {

/// active; type and the two ids; value, sigma and extra.
constexpr std::size_t kRecordSize = 2 + 3 * 4 + 3 * 8;

}  // namespace

ZoBundleAOBList::ZoBundleAOBList() {
    BringToSlots();
}

void ZoBundleAOBList::BringToSlots() {
    int records = Count();
    for (; records < kNSlots; ++records)
        Add(ZoBundleAOB());
    for (; records > kNSlots; --records)
        const std::unique_ptr<ZoBundleAOB> surplus(SubtractLast());
}

int ZoBundleAOBList::Read(ZoReaderObject* object) {
    Destroy();
    const ZoParser& parser = object->GetReader()->GetParser();
    try {
        for (ZoBundleAOB record;;) {
            record.Read(object);
            Add(record);
        }
    } catch (const ZoParserStatus&) {
        if (parser.GetToken().GetType() != eZoTokenBlockEnd) throw;
    }
    return 1;
}

int ZoBundleAOBList::ReadFile(const std::wstring& fileName) {
    Destroy();
    ReadV50(fileName);
    BringToSlots();
    return 1;
}

int ZoBundleAOBList::ReadFile(const wchar_t* fileName) {
    return fileName ? ReadFile(std::wstring(fileName)) : 0;
}

int ZoBundleAOBList::ReadV50(const std::wstring& fileName) {
    ZoReader reader(fileName);
    reader.RegisterObject(ZoReaderObject(Link(this, &ZoBundleAOBList::ReadRecords)));
    reader.DoProcess(false);
    reader.LogErrorsToApplicationLogger();
    return 1;
}

int ZoBundleAOBList::WriteFile(const std::wstring& fileName, bool gentri) const {
    zorv::detail::FileReplacement file(fileName);
    gentri ? WriteGentri(file.Stream()) : Write(file.Stream());
    return file.Commit() ? 1 : 0;
}

int ZoBundleAOBList::WriteFile(const wchar_t* fileName, bool gentri) const {
    return fileName ? WriteFile(std::wstring(fileName), gentri) : 0;
}

std::ostream& ZoBundleAOBList::Write(std::ostream& stream) const {
    for (const ZoBundleAOB* record = First(); record; record = record->NextConst())
        record->Write(stream) << Zoendl;
    return stream;
}

std::ostream& ZoBundleAOBList::WriteGentri(std::ostream& stream) const {
    for (const ZoBundleAOB* record = First(); record; record = record->NextConst()) {
        if (record->IsActive()) record->WriteGentri(stream) << Zoendl;
    }
    return stream;
}

int ZoBundleAOBList::ValidateActiveAOB(ZoPointList* points) {
    if (!points) return 0;
    const ZoSortHelper<ZoPoint> known(points);
    int active = 0;
    for (ZoBundleAOB* record = First(); record; record = record->Next()) {
        if (!record->IsActive()) continue;
        active += record->SetActive(known.Find(record->id1) && known.Find(record->id2)) ? 1 : 0;
    }
    return active;
}

void ZoBundleAOBList::ReadV9(CZipWrapper* archive) {
    Destroy();
    const auto make = [](CZipWrapper* item) {
        auto record = std::make_unique<ZoBundleAOB>();
        record->ReadV9(item);
        return record.release();
    };
    zorv::detail::BulkChange(*this, [&] { zorv::detail::ReadRecords(*this, archive, kRecordSize, make); });
}

void ZoBundleAOBList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}
