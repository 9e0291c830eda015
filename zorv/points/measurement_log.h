#pragma once

#include <iosfwd>
#include <string>

#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/points/log_item.h"

class ZoReaderObject;

/// A running log of measured points (.mlg): every item is appended to the log file the moment that it is added.
class ZORV_API ZoLogItemList : public TZoListHeader<ZoLogItem>, public LinkHdl {
  public:
    ZoLogItemList() = default;
    /// Copying takes the items and the file name.
    ZoLogItemList(const ZoLogItemList&) = default;
    ZoLogItemList& operator=(const ZoLogItemList& other);

    void SetFilename(const std::wstring& file) { filename = file; }
    const std::wstring& GetFilename() const { return filename; }

    /// Adds a copy, or the item itself, which the list then owns, writes it to the log file and returns it. When that
    /// cannot be opened the item is in the list only.
    ZoLogItem* AddItem(const ZoLogItem& item) { return WriteItem(Add(item)); }
    ZoLogItem* AddItem(ZoLogItem* item) { return WriteItem(Add(item)); }
    /// Appends the item to the log file and returns it.
    ZoLogItem* WriteItem(ZoLogItem* item);

    /// Appends the items of a log file, by default of this log's. Returns 1, also when some could not be read: those
    /// before the error are there.
    int ReadFile(const std::wstring& file);
    int ReadFile() { return ReadFile(std::wstring(filename)); }
    /// Reads the item at hand up to its `}`, which stays at hand. Returns 1; throws ZoParserStatus when it does not
    /// fit. Observers get one changed event in either case.
    int Read(ZoReaderObject* object);
    /// Writes each item on a line.
    std::ostream& Write(std::ostream& stream) const;

    /// The name of the coordinate file beside the log: `survey_MLG.coo` for `survey.mlg`, `MLG.coo` without a name.
    std::wstring GetDefaultCooFilename() const;
    /// Writes the points as a coordinate file with the ids firstId, firstId + 1, ... The log keeps its ids. Returns the
    /// number of points written.
    int WriteAsCooFile(const std::wstring& file, unsigned int firstId) const;
    int WriteAsCooFile(const wchar_t* file, unsigned int firstId) const;

    std::wstring filename;

  private:
    long ReadRecord(ZoReaderObject* object) { return Read(object); }
};
