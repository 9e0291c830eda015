#pragma once

#include <cstdint>

#include "zorv/export.h"

/// Character classes of the tagged text syntax: a table of flag words, indexed by the byte value.
class ZORV_API ZoChLookup {
  public:
    enum Class : int {
        kSeparator = 1,
        kComment = 2,
        kQuote = 4,
        kBlockBegin = 8,
        kBlockEnd = 16,
        kDelimiter = kSeparator | kComment | kQuote | kBlockBegin | kBlockEnd,  ///< whatever ends a word
    };

    /// Blank, tab and line feed separate, `;` and `!` begin a comment, `"` quotes, `{` and `}` enclose a block.
    ZoChLookup();

    void SetFlags(unsigned char c, int flags) { table[c] |= static_cast<std::uint32_t>(flags); }
    void SetFlags(const char* characters, int flags);
    void ClearFlags(unsigned char c, int flags) { table[c] &= ~static_cast<std::uint32_t>(flags); }
    void ClearFlags(const char* characters, int flags);
    int GetFlags(unsigned char c) const { return static_cast<int>(table[c]); }

    std::uint32_t table[256] = {};
};
