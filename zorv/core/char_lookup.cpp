#include "zorv/core/char_lookup.h"

ZoChLookup::ZoChLookup() {
    SetFlags(" \t\n", kSeparator);
    SetFlags(";!", kComment);
    SetFlags('"', kQuote);
    SetFlags('{', kBlockBegin);
    SetFlags('}', kBlockEnd);
}

void ZoChLookup::SetFlags(const char* characters, int flags) {
    for (; characters && *characters; ++characters)
        SetFlags(static_cast<unsigned char>(*characters), flags);
}

void ZoChLookup::ClearFlags(const char* characters, int flags) {
    for (; characters && *characters; ++characters)
        ClearFlags(static_cast<unsigned char>(*characters), flags);
}
