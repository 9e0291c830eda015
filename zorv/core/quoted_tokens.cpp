#include "zorv/core/quoted_tokens.h"

#include "zorv/core/field_splitter.h"

char* strstok(char* text, const char* delimiters, char quote) {
    static char* position = nullptr;
    if (!text) text = position;
    if (!text) return nullptr;

    const zorv::detail::DelimiterSet set(delimiters);
    zorv::detail::FieldSplitter splitter(text, set, quote);
    // The view points into the text, which is ours to change.
    char* token = const_cast<char*>(splitter.Next().data());
    // Behind the end the text may be gone when the next call comes.
    position = token ? splitter.Position() : nullptr;
    return token;
}
