#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "zorv/core/c_locale.h"
#include "zorv/core/char_lookup.h"
#include "zorv/export.h"

/// What a token of the tagged text is.
enum eZoTokentype : int {
    eZoTokenOther = 0,  ///< a word with neither digit nor letter
    eZoTokenInt = 1,
    eZoTokenFloat = 2,
    eZoTokenNumber = 3,   ///< never a token: a request for integer or float
    eZoTokenKeyword = 4,  ///< a word that begins with a letter
    eZoTokenString = 5,   ///< quoted
    eZoTokenWString = 6,  ///< never a token: a wide target of a ZoReaderObject
    eZoTokenBlockBegin = 7,
    eZoTokenBlockEnd = 8,
    eZoTokenEof = 9,
};

/// How reading stands; everything above eZoParserStatusEof is an error.
enum eZoParserStatus : int {
    eZoParserStatusOk = 0,
    eZoParserStatusEof = 1,
    eZoParserErrorStream = 2,
    eZoParserErrorUnterminatedString = 3,
    eZoParserErrorInvalidNumber = 4,
    eZoParserErrorNotSpecifiedToken = 5,
};

/// "ParserStatusOK" and so on; "ParserStatus??" for any other value.
ZORV_API std::wstring GetZoParserStatusText(eZoParserStatus status);

/// Where reading stands and what went wrong; thrown by value by the parser.
class ZORV_API ZoParserStatus {
  public:
    virtual ~ZoParserStatus() = default;
    ZoParserStatus() = default;
    ZoParserStatus(const ZoParserStatus&) = default;
    ZoParserStatus& operator=(const ZoParserStatus&) = default;

    std::int32_t line = 0;        ///< lines read so far, the first line being 1
    std::int32_t tokenCount = 0;  ///< tokens produced so far
    eZoParserStatus status = eZoParserStatusOk;
};

/// One token. Its text points into the parser's line and lasts until the next line is read.
class ZORV_API ZoParserToken {
  public:
    eZoTokentype GetType() const { return type; }
    int GetInt() const { return intValue; }
    double GetFloat() const { return floatValue; }
    const char* GetString() const { return text; }
    /// The value of an integer or a float token as double, else 0. An integer that 32 bits do not hold keeps its value.
    double GetNumber() const;

    eZoTokentype type = eZoTokenOther;
    std::int32_t intValue = 0;
    double floatValue = 0.0;  ///< of a float, and of an integer that 32 bits do not hold
    const char* text = "";
};

/// Turns the lines of a stream into the tokens of the tagged text syntax.
///
/// Tokens are separated by blanks; `;` and `!` begin a comment up to the end of the line; strings stand in double
/// quotes without escapes, on one line; `{` and `}` are tokens of their own. Lines end with LF or CR LF, and a byte
/// order mark in front of the first one is passed. For its life the parser sets the C locale of the process to "C".
class ZORV_API ZoParser {
  public:
    /// Room for a line, its terminator included. A longer line ends the reading with eZoParserErrorStream.
    static constexpr int kLineSize = 8512;

    ZoParser();
    virtual ~ZoParser();
    ZoParser(const ZoParser&) = delete;
    ZoParser& operator=(const ZoParser&) = delete;

    /// Makes a character a comment character (and no separator any more), or takes that away.
    void SetCommentChar(unsigned char c, bool on);
    /// Makes a character a separator (and no comment character any more), or takes that away.
    void SetTokenseperator(unsigned char c, bool on);
    /// The decimal mark of numbers; it is then neither separator nor comment.
    void SetDecPoint(char c);

    /// The token at hand.
    const ZoParserToken& GetToken() const { return token; }
    /// The token at hand when it is of the wanted type; otherwise throws ZoParserStatus with
    /// eZoParserErrorNotSpecifiedToken, or with eZoParserStatusEof at end of file.
    const ZoParserToken& GetToken(eZoTokentype wanted);
    int GetTokenInt() { return GetToken(eZoTokenInt).intValue; }
    double GetTokenFloat() { return GetToken(eZoTokenFloat).floatValue; }
    double GetTokenNumber() { return GetToken(eZoTokenNumber).GetNumber(); }
    const char* GetTokenString() { return GetToken(eZoTokenString).text; }

    /// Forgets the rest of the line.
    void SkipLine();
    /// Makes the next advance do nothing, so that the token at hand is looked at once more.
    void SkipNextParse(bool on) { skipNextParse = on; }
    bool IsSkipNextParse() const { return skipNextParse; }

    const ZoParserStatus& GetStatus() const { return status; }

    char lineBuffer[kLineSize] = {};
    char* tokenStart = nullptr;
    char* cursor = nullptr;  ///< null when a new line must be read
    char savedChar = 0;      ///< the delimiter that the terminator of the last token overwrote
    char decimalPoint = '.';
    ZoChLookup classes;
    ZoParserStatus status;
    ZoParserToken token;
    bool skipNextParse = false;
    ZoCLocale locale;

  protected:
    friend class ZoReader;
    friend class ZoStreamParser;

    /// Moves to the next token, reading lines as needed. Throws ZoParserStatus for a failing stream, an unterminated
    /// string and an invalid number.
    void ParseForToken(std::istream& stream);

  private:
    /// ParseForToken, unless the parser was told to skip one advance.
    void Advance(std::istream& stream) {
        if (skipNextParse) {
            skipNextParse = false;
        } else {
            ParseForToken(stream);
        }
    }
    bool Tokenize();
    bool ScanString();
    bool ScanWord();
    /// A word that is a sign, digits, a point and digits, as nearly all numbers are. False leaves any other word as it
    /// was.
    bool ScanPlainNumber();
    bool EndsWord(char c) const {
        return c == 0 || (classes.table[static_cast<unsigned char>(c)] & ZoChLookup::kDelimiter) != 0;
    }
    void CloseWord(char* end);
    bool SetToken(eZoTokentype type, const char* text);
    void Classify(char* end, int digits, int letters, bool isFloat);
    void ReadLine(std::istream& stream);
    [[noreturn]] void Throw(eZoParserStatus error);

    std::int64_t blockDepth = 0;  // `{` less `}` so far
};
