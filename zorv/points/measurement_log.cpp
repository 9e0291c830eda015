#include "zorv/points/measurement_log.h"

#include <fstream>
#include <locale>
#include <memory>
#include <ostream>

#include "zorv/core/bulk_change.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/reader.h"

ZoLogItemList& ZoLogItemList::operator=(const ZoLogItemList& other) {
    if (this == &other) return *this;
    TZoListHeader<ZoLogItem>::operator=(other);
    filename = other.filename;
    return *this;
}

ZoLogItem* ZoLogItemList::WriteItem(ZoLogItem* item) {
    if (!item) return nullptr;
    std::ofstream stream(zorv::detail::NativePath(filename), std::ios::binary | std::ios::app);
    stream.imbue(std::locale::classic());
    if (stream) item->Write(stream) << '\n';
    return item;
}

int ZoLogItemList::ReadFile(const std::wstring& file) {
    ZoReader reader(file);
    reader.RegisterObject(ZoReaderObject(Link(this, &ZoLogItemList::ReadRecord)));
    return reader.DoProcess(false);
}

int ZoLogItemList::Read(ZoReaderObject* object) {
    zorv::detail::BulkChange(*this, [&] {
        try {
            for (;;)
                Add(std::make_unique<ZoLogItem>(object).release());
        } catch (const ZoParserStatus&) {
            if (object->GetReader()->GetParser().GetToken().GetType() != eZoTokenBlockEnd) throw;
        }
    });
    return 1;
}

std::ostream& ZoLogItemList::Write(std::ostream& stream) const {
    stream.imbue(std::locale::classic());
    for (const ZoLogItem* item = First(); item; item = item->NextConst())
        item->Write(stream) << '\n';
    return stream;
}

std::wstring ZoLogItemList::GetDefaultCooFilename() const {
    if (filename.empty()) return L"MLG.coo";
    return ZoMakeFilename(ZoGetPath(filename), ZoGetFilenameNoExt(filename) + L"_MLG.coo");
}

int ZoLogItemList::WriteAsCooFile(const std::wstring& file, unsigned int firstId) const {
    static constexpr eZoPointRWMask kKinds[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
    ZoPointList points;
    int written = 0;
    for (const ZoLogItem* item = First(); item; item = item->NextConst(), ++written)
        points.Add(item->point)->id = firstId++;
    return points.WriteFile(file, ZoPointList::Table(kKinds)) ? written : 0;
}

int ZoLogItemList::WriteAsCooFile(const wchar_t* file, unsigned int firstId) const {
    return file ? WriteAsCooFile(std::wstring(file), firstId) : 0;
}
