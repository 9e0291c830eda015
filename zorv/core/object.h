#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "zorv/export.h"

class CZipWrapper;
class ZoReaderObject;

/// Root of all persistent records: a number and a name.
///
/// An id need not be unique; lists and lookups take the first record that has it. 0 stands for "no number yet".
class ZORV_API ZoObject {
  public:
    ZoObject() = default;
    explicit ZoObject(unsigned int objectId) : id(objectId) {}
    explicit ZoObject(const std::wstring& objectName) : name(objectName) {}
    ZoObject(unsigned int objectId, const std::wstring& objectName) : id(objectId), name(objectName) {}
    ZoObject(const ZoObject&) = default;
    ZoObject& operator=(const ZoObject&) = default;
    virtual ~ZoObject() = default;

    /// -1 when the other id is below the own one, 1 when it is above, 0 when equal. The sign is the reverse of the
    /// usual three-way comparison.
    virtual int Compare(const ZoObject* other) const;
    virtual int Compare(unsigned int other) const;

    /// Writes the record to a debugging aid. Does nothing here.
    virtual void Dump() {}

    unsigned int GetId() const { return id; }
    void SetId(unsigned int value) { id = value; }
    void OffsetId(unsigned int offset) { id += offset; }

    const std::wstring& GetName() const { return name; }
    void SetName(const std::wstring& value) { name = value; }
    /// A null pointer empties the name.
    void SetName(const wchar_t* value);

    /// Reads id and name, `7 "Wall"`, from the tokens at hand. Returns 1; throws ZoParserStatus when they do not fit.
    int Read(ZoReaderObject* object);
    /// Writes id and name as Read takes them; quotes and line ends in the name become `'` and a blank.
    std::ostream& Write(std::ostream& stream) const;

    /// Archive record: id (4 bytes), name (UTF-16LE, zero-terminated).
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    std::uint32_t id = 0;
    std::wstring name;
};
