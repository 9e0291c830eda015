#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "zorv/export.h"

class ZoParser;

/// Shorthand by which a record reads its values from a reader:
///
///     ZoStreamParser in = object->GetStreamParser();
///     in >> id >> x >> y >> name;
///
/// Each extraction takes the token at hand and then advances, so that the next token is at hand afterwards. A token of
/// the wrong type throws ZoParserStatus and is not passed.
class ZORV_API ZoStreamParser {
  public:
    ZoStreamParser() = default;
    ZoStreamParser(std::istream* source, ZoParser* tokens) : stream(source), parser(tokens) {}

    ZoStreamParser& operator>>(int& value);           ///< an integer
    ZoStreamParser& operator>>(unsigned int& value);  ///< an integer; 4294967295 keeps its 32 bits
    ZoStreamParser& operator>>(double& value);        ///< an integer or a float
    ZoStreamParser& operator>>(std::string& value);   ///< a quoted string
    ZoStreamParser& operator>>(std::wstring& value);  ///< a quoted string, from UTF-8

    /// Advances to the next token, unless the parser was told to skip one advance.
    void ParseForToken();

    std::istream* stream = nullptr;
    ZoParser* parser = nullptr;
    std::int32_t state = 0;  ///< for the host; the library never looks at it

  private:
    ZoParser& Tokens() const;
};
