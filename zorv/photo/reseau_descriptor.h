#pragma once

#include <cstdint>
#include <string>

#include "zorv/export.h"

class CZipWrapper;
class ZoReseauFile;

/// The words by which a photo names its reseau: the name of the reseau file and, for the formats of digital cameras,
/// a second number, of which 0 means none.
class ZORV_API ZoReseauDataDesc {
  public:
    ZoReseauDataDesc() = default;
    explicit ZoReseauDataDesc(const std::wstring& reseauName, unsigned int subId = 0) : name(reseauName), id(subId) {}
    explicit ZoReseauDataDesc(const char* narrowName, unsigned int subId = 0) { Set(narrowName, subId); }
    /// The comment of the copy is empty; assignment takes it over.
    ZoReseauDataDesc(const ZoReseauDataDesc& other) : name(other.name), id(other.id) {}
    ZoReseauDataDesc& operator=(const ZoReseauDataDesc&) = default;
    virtual ~ZoReseauDataDesc() = default;

    /// Name (UTF-8; null for none) and number; the comment, which belonged to the former reseau, goes.
    void Set(const char* narrowName, unsigned int subId);
    /// Takes name, number and comment of a reseau; null does nothing.
    void Set(const ZoReseauFile* reseau);
    const std::wstring& GetName() const { return name; }
    unsigned int GetId() const { return id; }
    const std::wstring& GetComment() const { return comment; }

    /// Whether the names are equal without regard to case.
    bool Match(const ZoReseauDataDesc& other) const;
    /// Whether the numbers are equal as well.
    bool ExactMatch(const ZoReseauDataDesc& other) const { return Match(other) && id == other.id; }
    /// ExactMatch when the other one has a number, else Match. Not symmetric.
    bool operator==(const ZoReseauDataDesc& other) const { return other.id != 0 ? ExactMatch(other) : Match(other); }

    /// Archive record: the number (4 bytes), name, comment.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    std::wstring name;
    std::uint32_t id = 0;
    std::wstring comment;
};
