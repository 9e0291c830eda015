#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/core/flag.h"
#include "zorv/export.h"

class CZipWrapper;
class ZoReaderObject;

/// An additional observation for a bundle adjustment, between two object points: a code, which says to the adjustment
/// program what was observed, the value and its accuracy. All three are passed on as they are.
class ZORV_API ZoBundleAOB : public TZoFlagNode<ZoBundleAOB> {
  public:
    static constexpr int kActive = 2;
    static constexpr std::int32_t kDefaultType = 123;
    static constexpr double kDefaultSigma = 0.01;

    /// Inactive, of the default type, between no points.
    ZoBundleAOB() = default;
    ZoBundleAOB(const ZoBundleAOB&) = default;
    /// Copies id, name, flags and all fields.
    ZoBundleAOB& operator=(const ZoBundleAOB&) = default;

    /// Makes it a new record again; id, name and the flags other than the active state stay.
    void Init();

    /// Only active records take part in the adjustment.
    bool IsActive() const { return IsFlagSet(kActive) != 0; }
    /// Returns the new state.
    bool SetActive(bool on);

    std::int32_t GetType() const { return type; }
    std::uint32_t GetId1() const { return id1; }
    std::uint32_t GetId2() const { return id2; }
    double GetValue() const { return value; }
    double GetSigma() const { return sigma; }
    double GetExtra() const { return extra; }
    void SetType(std::int32_t code) { type = code; }
    void SetId1(std::uint32_t point) { id1 = point; }
    void SetId2(std::uint32_t point) { id2 = point; }
    void SetValue(double observed) { value = observed; }
    void SetSigma(double accuracy) { sigma = accuracy; }
    void SetExtra(double number) { extra = number; }

    /// Text form, one line without its end: active (0 or 1), type, the two ids, value, sigma, the last two with 8
    /// significant digits. Reading returns 1 and throws ZoParserStatus; what was read before that is in the record.
    int Read(ZoReaderObject* object);
    std::ostream& Write(std::ostream& stream) const;
    /// The line of the adjustment program Gentri: the same without the active state.
    std::ostream& WriteGentri(std::ostream& stream) const;
    /// Archive record: active (2 bytes), type, the two ids, value, sigma, extra. Values behind the end of the item stay
    /// as they are.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    std::int32_t type = kDefaultType;
    std::uint32_t id1 = 0;  ///< the first object point
    std::uint32_t id2 = 0;  ///< the second object point
    double value = 0.0;
    double sigma = kDefaultSigma;
    double extra = 0.0;  ///< in the archive record only
};
