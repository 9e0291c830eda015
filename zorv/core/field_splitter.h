#pragma once

#include <cstddef>
#include <string_view>

namespace zorv::detail {

/// A set of bytes that separate fields.
class DelimiterSet {
  public:
    constexpr explicit DelimiterSet(const char* characters) {
        for (; characters && *characters; ++characters)
            member[static_cast<unsigned char>(*characters)] = true;
    }
    constexpr bool operator()(char c) const { return member[static_cast<unsigned char>(c)]; }

  private:
    bool member[256] = {};
};

/// Cuts a line into fields in place.
///
/// Delimiters in front of a field are skipped. A field that begins with the quote runs behind it to the next quote,
/// whatever delimiters it holds; the character behind the closing quote is taken for a delimiter. Any other field runs
/// to the next delimiter. The byte that ends a field becomes zero, so that the field is a terminated text; only the
/// last field of a range is not, unless the range is followed by a zero. The line ends at `end` or at a zero byte and
/// nothing behind that is looked at.
class FieldSplitter {
  public:
    /// A line of terminated text.
    FieldSplitter(char* line, const DelimiterSet& delimiterSet, char quoteCharacter)
        : FieldSplitter(line, nullptr, delimiterSet, quoteCharacter) {}
    /// The bytes [begin, end). The delimiter set must live as long as the splitter.
    FieldSplitter(char* begin, char* end, const DelimiterSet& delimiterSet, char quoteCharacter)
        : at(begin), last(end), delimiters(delimiterSet), quote(quoteCharacter) {}

    /// The next field; a view without data when there is none.
    std::string_view Next() {
        while (!AtEnd() && delimiters(*at))
            ++at;
        if (AtEnd()) return {};
        char* begin = at;
        if (*at == quote) {
            begin = ++at;
            while (!AtEnd() && *at != quote)
                ++at;
            char* end = at;
            Cut();
            Cut();
            return {begin, static_cast<std::size_t>(end - begin)};
        }
        while (!AtEnd() && !delimiters(*at))
            ++at;
        char* end = at;
        Cut();
        return {begin, static_cast<std::size_t>(end - begin)};
    }

    /// Where the next field is looked for.
    char* Position() const { return at; }

  private:
    bool AtEnd() const { return at == last || *at == 0; }
    void Cut() {
        if (!AtEnd()) *at++ = 0;
    }

    char* at;
    char* last;  ///< null for terminated text, which ends at its zero
    const DelimiterSet& delimiters;
    char quote;
};

}  // namespace zorv::detail
