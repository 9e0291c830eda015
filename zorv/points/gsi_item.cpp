#include "zorv/points/gsi_item.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <string_view>

#include "zorv/core/number_format.h"

namespace {

using zorv::detail::ParseDouble;
using zorv::detail::ParseInt;

// Places of the parts of a data word.
constexpr int kUnitPlace = 5;
constexpr int kSignPlace = 6;
constexpr int kDataPlace = 7;

constexpr std::size_t kDigitsOfLongForm = 16;
constexpr std::size_t kErrorNumberPlace = 2;
constexpr std::size_t kErrorNumberSize = 3;

constexpr std::array<unsigned char, 256> kClasses = [] {
    using Itemizer = GsiLineItemizer;
    std::array<unsigned char, 256> classes{};
    classes['\n'] = classes['\r'] = Itemizer::kLineEnd;
    classes[' '] = classes['*'] = Itemizer::kWordEnd;
    for (char c = '0'; c <= '9'; ++c)
        classes[static_cast<unsigned char>(c)] = Itemizer::kWordStart;
    classes['?'] = classes['@'] = Itemizer::kWordStart;
    classes['!'] = Itemizer::kWordStart | Itemizer::kMessage;
    return classes;
}();

bool IsOfClass(char c, unsigned char mask) {
    return (GsiLineItemizer::ClassOf(c) & mask) != 0;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Index, information and unit, then the sign: how every data word begins. Reads no further than a terminator.
bool LooksLikeDataWord(const char* text) {
    for (int i = 0; i < kSignPlace; ++i) {
        if (!IsDigit(text[i]) && (i < 2 || text[i] != '.')) return false;
    }
    return text[kSignPlace] == '+' || text[kSignPlace] == '-';
}

std::string_view WordOf(const GsiLineItemizer& items) {
    return {items.wordStart, static_cast<std::size_t>(items.wordEnd - items.wordStart)};
}

double Metres(double raw, eGsiUnit unit) {
    constexpr double kFoot = 0.3048;
    switch (unit) {
        case eGsiMetre:
            return raw / 1000;
        case eGsiFoot:
            return raw / 1000 * kFoot;
        case eGsiMil:
        case eGsiMetreFine:
            return raw / 10000;
        case eGsiFootFine:
            return raw / 10000 * kFoot;
        case eGsiMetreFinest:
            return raw / 100000;
        default:
            return raw;
    }
}

// dddmmsst with tenths of seconds, in degrees.
double DegreesFromSexagesimal(double raw) {
    const double tenths = std::fmod(raw, 1000);
    const double minutes = std::fmod(std::trunc(raw / 1000), 100);
    return std::trunc(raw / 100000) + minutes / 60 + tenths / 36000;
}

double Radians(double raw, eGsiUnit unit) {
    constexpr double kHalfCircle = std::numbers::pi;
    switch (unit) {
        case eGsiGon:
            return raw / 100000 / 200 * kHalfCircle;
        case eGsiDegree:
            return raw / 100000 / 180 * kHalfCircle;
        case eGsiSexagesimal:
            return DegreesFromSexagesimal(raw) / 180 * kHalfCircle;
        case eGsiMil:
            return raw / 10000 / 3200 * kHalfCircle;
        default:
            return raw;
    }
}

}  // namespace

unsigned char GsiLineItemizer::ClassOf(char c) {
    return kClasses[static_cast<unsigned char>(c)];
}

void GsiLineItemizer::SetLine(const char* text) {
    std::size_t size = text ? std::strcspn(text, "\r\n") : 0;
    if (size >= kLineSize) {
        // Only as far as a whole word: a word cut short would be a wrong value.
        size = kLineSize - 1;
        while (size > 0 && !IsOfClass(text[size], kWordEnd))
            --size;
    }
    if (size > 0) std::memcpy(line, text, size);
    line[size] = 0;
    wordStart = wordEnd = rest = line;
    longForm = false;
    for (const char* c = line; *c && !IsOfClass(*c, kWordStart); ++c)
        longForm = longForm || *c == '*';
}

bool GsiLineItemizer::NextWord() {
    char* start = rest;
    while (*start && !IsOfClass(*start, kWordStart))
        ++start;
    if (!*start) return false;

    char* end = start + 1;
    if (IsOfClass(*start, kMessage)) {
        end = start + std::strlen(start);
    } else if (*start == '@') {
        while (*end && !IsOfClass(*end, kWordEnd))
            ++end;
    } else {
        end = EndOfDataWord(start);
    }
    rest = *end ? end + 1 : end;
    *end = 0;
    wordStart = start;
    wordEnd = end;
    return true;
}

char* GsiLineItemizer::EndOfDataWord(char* start) const {
    char* c = start;
    for (; *c; ++c) {
        if (!IsOfClass(*c, kWordEnd)) continue;
        if (c - start >= kShortestWord || LooksLikeDataWord(c + 1)) break;
    }
    return c;
}

void ZoGsiDataItem::InterpretGSIMessage(const char* line) {
    GsiLineItemizer items(line);
    while (items.NextWord()) {
        if (*items.wordStart == '?') continue;
        if (*items.wordStart == '@') {
            TakeErrorMessage(items);
            continue;
        }
        // Names may hold blanks, but they have their 8 or 16 characters too.
        const int shortest = items.IsLongForm() ? GsiLineItemizer::kLongestWord : GsiLineItemizer::kShortestWord;
        if (items.wordEnd - items.wordStart < shortest) continue;
        switch (ParseInt(WordOf(items).substr(0, 2))) {
            case 11:
                TakePointNumber(items);
                break;
            case 21:
                TakeValue(items, kHorizontalAngle, horizontalAngle, horizontalAngleUnit);
                break;
            case 22:
                TakeValue(items, kVerticalAngle, verticalAngle, verticalAngleUnit);
                break;
            case 31:
                TakeValue(items, kSlopeDistance, slopeDistance, slopeDistanceUnit);
                break;
            case 81:
                TakeValue(items, kEasting, easting, eastingUnit);
                break;
            case 82:
                TakeValue(items, kNorthing, northing, northingUnit);
                break;
            case 83:
                TakeValue(items, kHeight, height, heightUnit);
                break;
            default:
                break;
        }
    }
}

void ZoGsiDataItem::TakeErrorMessage(const GsiLineItemizer& word) {
    const std::string_view text = WordOf(word);
    const std::string_view number = text.substr(std::min(kErrorNumberPlace, text.size()), kErrorNumberSize);
    errorCode = static_cast<std::uint32_t>(ParseInt(number));
    AddBmData(kErrorMessage);
}

void ZoGsiDataItem::TakePointNumber(const GsiLineItemizer& word) {
    std::string_view data = WordOf(word).substr(kDataPlace, kDigitsOfLongForm);
    data.remove_prefix(std::min(data.find_first_not_of('0'), data.size()));
    pointName = data;
    std::string digits;
    std::copy_if(data.begin(), data.end(), std::back_inserter(digits), IsDigit);
    pointNumber = static_cast<std::uint32_t>(ParseInt(digits));
    AddBmData(kPointNumber);
}

void ZoGsiDataItem::TakeValue(const GsiLineItemizer& word, int bit, double& value, eGsiUnit& unit) {
    const std::string_view text = WordOf(word).substr(0, GsiLineItemizer::kLongestWord);
    // A blank behind the place of the sign says that digits are missing.
    const std::string_view data = text.substr(kDataPlace);
    if (std::any_of(data.begin(), data.end(), [](char c) { return IsOfClass(c, GsiLineItemizer::kWordEnd); })) return;
    value = ParseDouble(text.substr(kSignPlace));
    unit = IsDigit(text[kUnitPlace]) ? static_cast<eGsiUnit>(text[kUnitPlace] - '0') : eGsiUnitNotSet;
    AddBmData(bit);
}

double ZoGsiDataItem::GetData(int bit, eZoUnit unit) const {
    double metres = 0;
    if (!MaskData(bit)) return metres;
    switch (bit) {
        case kSlopeDistance:
            metres = Metres(slopeDistance, slopeDistanceUnit);
            break;
        case kEasting:
            metres = Metres(easting, eastingUnit);
            break;
        case kNorthing:
            metres = Metres(northing, northingUnit);
            break;
        case kHeight:
            metres = Metres(height, heightUnit);
            break;
        default:
            break;
    }
    ConvertUnit(&metres, eZoUnitM, unit);
    return metres;
}

double ZoGsiDataItem::GetData(int bit, eZoAngleUnit unit) const {
    double radians = 0;
    if (!MaskData(bit)) return radians;
    switch (bit) {
        case kVerticalAngle:
            radians = Radians(verticalAngle, verticalAngleUnit);
            break;
        case kHorizontalAngle:
            radians = Radians(horizontalAngle, horizontalAngleUnit);
            break;
        default:
            break;
    }
    return ConvertAngle(radians, eZoAngleRadian, unit);
}
