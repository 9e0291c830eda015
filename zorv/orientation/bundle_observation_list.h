#pragma once

#include <iosfwd>
#include <string>

#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/orientation/bundle_observation.h"

class CZipWrapper;
class ZoPointList;
class ZoReaderObject;

/// The additional observations of a project and their file (.aob): a run of records without keywords, one a line.
///
/// A host shows them as a table of fixed length: a new list has kNSlots records, all inactive, and reading a file
/// brings it to that number again. An archive and ReadV50 keep the number of records as it is stored.
class ZORV_API ZoBundleAOBList : public TZoListHeader<ZoBundleAOB>, public LinkHdl {
  public:
    static constexpr int kNSlots = 25;

    /// kNSlots records as they come from Init.
    ZoBundleAOBList();

    /// Replaces the records by those of the block at hand, up to its `}`. Returns 1; throws ZoParserStatus at anything
    /// else, the end of the file included, and then keeps the records that were complete.
    int Read(ZoReaderObject* object);
    /// Replaces the records by the first kNSlots of the file, filled up with new ones. Returns 1; read errors, a
    /// missing file among them, are logged, and what was read before them stays.
    int ReadFile(const std::wstring& fileName);
    int ReadFile(const wchar_t* fileName);  ///< null reads nothing and gives 0
    /// Replaces the records by all those of the file. Returns 1; a file that cannot be opened leaves the list as it
    /// was.
    int ReadV50(const std::wstring& fileName);

    /// Writes a file in the place of an old one, which stays when that fails: all records, or with `gentri` the active
    /// ones as the adjustment program takes them. Returns 1, 0 for a failure.
    int WriteFile(const std::wstring& fileName, bool gentri) const;
    int WriteFile(const wchar_t* fileName, bool gentri) const;  ///< null gives 0

    /// All records, each with a line end.
    std::ostream& Write(std::ostream& stream) const;
    /// The active records as lines of the adjustment program. They are not read back.
    std::ostream& WriteGentri(std::ostream& stream) const;

    /// Makes the active records inactive that name a point which is not in the list. Returns how many active ones are
    /// left; null gives 0 and changes nothing.
    int ValidateActiveAOB(ZoPointList* points);

    /// Archive record: the number of records (8 bytes), then theirs. Reading replaces the list by the records that are
    /// there in full.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

  private:
    long ReadRecords(ZoReaderObject* object) { return Read(object); }
    void BringToSlots();
};
