#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "zorv/core/units.h"
#include "zorv/export.h"

/// Unit digit of a GSI word and what the last digit of its value counts. 5 stands for mil in an angle, for metres in a
/// length.
enum eGsiUnit : int {
    eGsiMetre = 0,        ///< 0.001 m
    eGsiFoot = 1,         ///< 0.001 ft
    eGsiGon = 2,          ///< 0.00001 gon
    eGsiDegree = 3,       ///< 0.00001 degrees
    eGsiSexagesimal = 4,  ///< a tenth of a second of arc, behind degrees, minutes and seconds
    eGsiMil = 5,          ///< 0.0001 mil, of which the circle has 6400; or 0.0001 m
    eGsiMetreFine = 6,    ///< 0.0001 m
    eGsiFootFine = 7,     ///< 0.0001 ft
    eGsiMetreFinest = 8,  ///< 0.00001 m
    eGsiUnitNotSet = 100,
};

/// Splits one line of a GSI file into its words.
///
/// A word begins at a digit, `?`, `@` or `!` and ends at a blank or `*`. A data word holds its index (2 characters),
/// information (3), the unit digit, the sign and 8 or 16 digits, so its end is looked for behind 15 characters; where
/// an earlier blank stands in front of another data word, the word was cut short and ends there. A word that begins
/// with `@` ends at its first blank, one that begins with `!` with the line.
class ZORV_API GsiLineItemizer {
  public:
    static constexpr std::size_t kLineSize = 1500;  ///< with the terminator
    static constexpr int kShortestWord = 15;        ///< a word with 8 digits
    static constexpr int kLongestWord = 23;         ///< a word with 16 digits

    enum CharClass : unsigned char {
        kLineEnd = 2,
        kMessage = 4,
        kWordEnd = 8,
        kWordStart = 16,
    };

    GsiLineItemizer() { line[0] = 0; }
    explicit GsiLineItemizer(const char* text) { SetLine(text); }
    virtual ~GsiLineItemizer() = default;
    GsiLineItemizer(const GsiLineItemizer&) = delete;
    GsiLineItemizer& operator=(const GsiLineItemizer&) = delete;

    /// Copies the text up to its first line end. Of a text that is too long, the words that fit whole are taken; null
    /// counts as empty.
    void SetLine(const char* text);
    /// Moves wordStart and wordEnd to the next word, which is terminated in place. False at the end of the line.
    bool NextWord();
    /// Whether the line began with `*`, so that its words hold 16 digits.
    bool IsLongForm() const { return longForm; }

    /// Any of CharClass, or 0.
    static unsigned char ClassOf(char c);

    char line[kLineSize];
    char* wordStart = line;
    char* wordEnd = line;

  private:
    char* EndOfDataWord(char* start) const;

    char* rest = line;
    bool longForm = false;
};

/// One decoded line of a GSI file, as Leica total stations write it, in the form of 8 or of 16 digits.
///
/// Values stay raw, as integers of the last digit, until GetData scales them by their unit.
class ZORV_API ZoGsiDataItem {
  public:
    enum Bit : int {
        kPointNumber = 1,
        kVerticalAngle = 2,
        kHorizontalAngle = 4,
        kSlopeDistance = 8,
        kEasting = 16,
        kNorthing = 32,
        kHeight = 64,
        kErrorMessage = 1024,
    };

    ZoGsiDataItem() = default;
    explicit ZoGsiDataItem(const char* line) { InterpretGSIMessage(line); }
    ZoGsiDataItem(const ZoGsiDataItem&) = default;
    ZoGsiDataItem& operator=(const ZoGsiDataItem&) = default;
    virtual ~ZoGsiDataItem() = default;

    /// Takes over the words of a line. Words that do not fit are passed; what an earlier line set stays until a word
    /// of the same index comes, so that the answers of an instrument can be gathered in one item.
    void InterpretGSIMessage(const char* line);

    bool IsAnyDataSet() const { return dataMask != 0; }
    int MaskData(int mask) const { return static_cast<int>(dataMask) & mask; }
    bool IsErrorMessage() const { return MaskData(kErrorMessage) != 0; }
    void SetBMData(int mask) { dataMask = static_cast<std::uint32_t>(mask); }
    void AddBmData(int mask) { dataMask |= static_cast<std::uint32_t>(mask); }

    /// The length of kSlopeDistance, kEasting, kNorthing or kHeight in the unit asked for; 0 when the line had none.
    /// A word without a unit of length counts as metres as it stands.
    double GetData(int bit, eZoUnit unit) const;
    /// The angle of kVerticalAngle or kHorizontalAngle in the unit asked for; 0 when the line had none.
    ///
    /// The raw 10378200 is 103.78200 gon (unit digit 2) or degrees (3), 1234530 is 12 degrees 34' 53.0" (4), and
    /// 12345670 is 1234.5670 mil (5). A word with another unit digit counts as radians as it stands.
    double GetData(int bit, eZoAngleUnit unit) const;

    std::uint32_t dataMask = 0;     ///< which words were found, see Bit
    std::string pointName;          ///< without leading zeros
    std::uint32_t pointNumber = 0;  ///< the digits of the name
    double slopeDistance = 0;
    eGsiUnit slopeDistanceUnit = eGsiUnitNotSet;
    double verticalAngle = 0;
    eGsiUnit verticalAngleUnit = eGsiUnitNotSet;
    double horizontalAngle = 0;
    eGsiUnit horizontalAngleUnit = eGsiUnitNotSet;
    double easting = 0;
    eGsiUnit eastingUnit = eGsiUnitNotSet;
    double northing = 0;
    eGsiUnit northingUnit = eGsiUnitNotSet;
    double height = 0;
    eGsiUnit heightUnit = eGsiUnitNotSet;
    std::uint32_t errorCode = 0;  ///< number of the last `@` message

  private:
    void TakeErrorMessage(const GsiLineItemizer& word);
    void TakePointNumber(const GsiLineItemizer& word);
    void TakeValue(const GsiLineItemizer& word, int bit, double& value, eGsiUnit& unit);
};
