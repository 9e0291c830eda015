#include "zorv/core/parser.h"

#include <array>
#include <clocale>
#include <cstring>
#include <istream>
#include <limits>
#include <string_view>

#include "zorv/core/number_format.h"
#include "zorv/core/text_conversion.h"

namespace {

// What a byte is inside a word. Only ASCII counts, whatever the locale says.
enum CharKind : unsigned char { kPlain, kDigit, kLetter, kExponent };

constexpr std::array<unsigned char, 256> MakeKinds() {
    std::array<unsigned char, 256> kinds = {};
    for (int c = '0'; c <= '9'; ++c)
        kinds[c] = kDigit;
    for (int c = 'A'; c <= 'Z'; ++c)
        kinds[c] = kinds[c + 'a' - 'A'] = kLetter;
    kinds['E'] = kinds['e'] = kExponent;
    return kinds;
}

constexpr std::array<unsigned char, 256> kKinds = MakeKinds();

// As many digits always fit into 32 bits.
constexpr int kSafeDigits = 9;

unsigned char Byte(char c) {
    return static_cast<unsigned char>(c);
}

// Counts on from the lowest value, rather than overflow, in a file of more than 2^31 tokens.
void CountUp(std::int32_t& count) {
    count = static_cast<std::int32_t>(static_cast<std::uint32_t>(count) + 1);
}

// After a line that filled the buffer: a CR LF behind it is its line end, anything else leaves the stream failed.
void AcceptCarriageReturn(std::istream& stream) {
    stream.clear(stream.rdstate() & ~std::ios::failbit);
    if (stream.get() != '\r' || stream.get() != '\n') stream.setstate(std::ios::failbit);
}

bool FitsInt32(double value) {
    return value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace

std::wstring GetZoParserStatusText(eZoParserStatus status) {
    switch (status) {
        case eZoParserStatusOk:
            return L"ParserStatusOK";
        case eZoParserStatusEof:
            return L"ParserStatusEOF";
        case eZoParserErrorStream:
            return L"ParserErrorStream";
        case eZoParserErrorUnterminatedString:
            return L"ParserErrorUnterminatedString";
        case eZoParserErrorInvalidNumber:
            return L"ParserErrorInvalidNumber";
        case eZoParserErrorNotSpecifiedToken:
            return L"ParserErrorNotSpecifiedToken";
    }
    return L"ParserStatus??";
}

double ZoParserToken::GetNumber() const {
    if (type == eZoTokenFloat) return floatValue;
    if (type != eZoTokenInt) return 0.0;
    return FitsInt32(floatValue) ? intValue : floatValue;
}

ZoParser::ZoParser() : locale(LC_ALL, "C") {
    // The line end of text that was written elsewhere.
    classes.SetFlags('\r', ZoChLookup::kSeparator);
}

ZoParser::~ZoParser() = default;

void ZoParser::SetCommentChar(unsigned char c, bool on) {
    if (on) {
        classes.ClearFlags(c, ZoChLookup::kSeparator);
        classes.SetFlags(c, ZoChLookup::kComment);
    } else {
        classes.ClearFlags(c, ZoChLookup::kComment);
    }
}

void ZoParser::SetTokenseperator(unsigned char c, bool on) {
    if (on) {
        classes.ClearFlags(c, ZoChLookup::kComment);
        classes.SetFlags(c, ZoChLookup::kSeparator);
    } else {
        classes.ClearFlags(c, ZoChLookup::kSeparator);
    }
}

void ZoParser::SetDecPoint(char c) {
    classes.ClearFlags(Byte(c), ZoChLookup::kSeparator | ZoChLookup::kComment);
    decimalPoint = c;
}

const ZoParserToken& ZoParser::GetToken(eZoTokentype wanted) {
    if (token.type == wanted) return token;
    if (wanted == eZoTokenNumber && (token.type == eZoTokenInt || token.type == eZoTokenFloat)) return token;
    if (token.type == eZoTokenEof) throw ZoParserStatus(status);
    Throw(eZoParserErrorNotSpecifiedToken);
}

void ZoParser::SkipLine() {
    tokenStart = nullptr;
    cursor = nullptr;
    savedChar = 0;
}

void ZoParser::ParseForToken(std::istream& stream) {
    while (!Tokenize()) {
        if (!stream.fail()) {
            ReadLine(stream);
        } else if (stream.eof()) {
            token = ZoParserToken();
            token.type = eZoTokenEof;
            status.status = eZoParserStatusEof;
            return;
        } else {
            Throw(eZoParserErrorStream);
        }
    }
}

void ZoParser::ReadLine(std::istream& stream) {
    stream.getline(lineBuffer, kLineSize);
    std::streamsize length = stream.gcount();
    // The line end is counted but not stored; a line that ends with the file or is too long has none.
    if (length > 0 && stream.good()) --length;
    if (length > 0 && lineBuffer[length - 1] == '\r') lineBuffer[length - 1] = 0;
    if (length == kLineSize - 1 && stream.fail()) AcceptCarriageReturn(stream);
    cursor = lineBuffer;
    using zorv::detail::kByteOrderMark;
    if (status.line == 0 && std::strncmp(lineBuffer, kByteOrderMark.data(), kByteOrderMark.size()) == 0)
        cursor += kByteOrderMark.size();
    tokenStart = cursor;
    CountUp(status.line);
}

bool ZoParser::Tokenize() {
    if (status.status == eZoParserStatusEof) return true;
    if (!cursor) return false;
    if (savedChar) {
        *cursor = savedChar;
        savedChar = 0;
    }
    while ((classes.table[Byte(*cursor)] & ZoChLookup::kSeparator) && *cursor)
        ++cursor;

    const std::uint32_t flags = classes.table[Byte(*cursor)];
    if ((flags & ZoChLookup::kComment) || !*cursor) {
        SkipLine();
        return false;
    }
    tokenStart = cursor;
    if (!(flags & ZoChLookup::kDelimiter)) return ScanWord();
    if (flags & ZoChLookup::kQuote) return ScanString();
    ++cursor;
    if (flags & ZoChLookup::kBlockBegin) {
        ++blockDepth;
        return SetToken(eZoTokenBlockBegin, "");
    }
    --blockDepth;
    return SetToken(eZoTokenBlockEnd, "");
}

bool ZoParser::SetToken(eZoTokentype type, const char* text) {
    token.type = type;
    token.intValue = 0;
    token.floatValue = 0.0;
    token.text = text;
    CountUp(status.tokenCount);
    return true;
}

bool ZoParser::ScanString() {
    char* end = ++tokenStart;
    while (*end && !(classes.table[Byte(*end)] & ZoChLookup::kQuote))
        ++end;
    SetToken(eZoTokenString, tokenStart);
    if (!*end) {
        SkipLine();
        Throw(eZoParserErrorUnterminatedString);
    }
    *end = 0;
    cursor = end + 1;
    return true;
}

bool ZoParser::ScanWord() {
    if (ScanPlainNumber()) return true;
    int digits = 0;
    int letters = 0;
    bool isFloat = false;
    char* end = tokenStart;
    for (; !EndsWord(*end); ++end) {
        switch (kKinds[Byte(*end)]) {
            case kDigit:
                ++digits;
                break;
            case kExponent:
                if (digits > 0) {
                    isFloat = true;
                } else {
                    ++letters;
                }
                break;
            case kLetter:
                ++letters;
                break;
            default:
                if (*end == decimalPoint) {
                    *end = '.';
                    isFloat = true;
                }
        }
    }
    CloseWord(end);
    Classify(end, digits, letters, isFloat);
    return true;
}

bool ZoParser::ScanPlainNumber() {
    constexpr std::ptrdiff_t kMostDigits = 18;  // fit into 64 bits
    char* at = tokenStart;
    const bool negative = *at == '-';
    if (negative || *at == '+') ++at;

    std::uint64_t digits = 0;
    const auto passDigits = [&] {
        const char* start = at;
        for (; kKinds[Byte(*at)] == kDigit && !EndsWord(*at); ++at)
            digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
        return at - start;
    };
    std::ptrdiff_t count = passDigits();
    std::ptrdiff_t decimals = 0;
    char* point = *at == decimalPoint && !EndsWord(*at) ? at : nullptr;
    if (point) {
        ++at;
        decimals = passDigits();
        count += decimals;
    }
    if (count == 0 || count > (point ? kMostDigits : kSafeDigits) || !EndsWord(*at)) return false;

    if (point) *point = '.';
    CloseWord(at);
    if (!point) {
        SetToken(eZoTokenInt, tokenStart);
        token.intValue = static_cast<std::int32_t>(negative ? 0 - digits : digits);
        return true;
    }
    SetToken(eZoTokenFloat, tokenStart);
    if (zorv::detail::DecimalToDouble(digits, static_cast<int>(decimals), token.floatValue)) {
        if (negative) token.floatValue = -token.floatValue;
    } else {
        token.floatValue = zorv::detail::ParseDouble(tokenStart);
    }
    return true;
}

void ZoParser::CloseWord(char* end) {
    cursor = end;
    if (*end && (classes.table[Byte(*end)] & ZoChLookup::kSeparator)) {
        ++cursor;
    } else {
        savedChar = *end;
    }
    *end = 0;
}

void ZoParser::Classify(char* end, int digits, int letters, bool isFloat) {
    const std::string_view word(tokenStart, static_cast<std::size_t>(end - tokenStart));
    if (letters > 0) {
        SetToken(eZoTokenKeyword, tokenStart);
        if (kKinds[Byte(*tokenStart)] < kLetter) Throw(eZoParserErrorInvalidNumber);
    } else if (digits == 0) {
        SetToken(eZoTokenOther, tokenStart);
    } else if (isFloat) {
        SetToken(eZoTokenFloat, tokenStart);
        token.floatValue = zorv::detail::ParseDouble(word);
    } else {
        SetToken(eZoTokenInt, tokenStart);
        token.intValue = zorv::detail::ParseInt(word);
        if (digits > kSafeDigits) {
            const double exact = zorv::detail::ParseDouble(word);
            if (!FitsInt32(exact)) token.floatValue = exact;
        }
    }
}

void ZoParser::Throw(eZoParserStatus error) {
    status.status = error;
    throw ZoParserStatus(status);
}
