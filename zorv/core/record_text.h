#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "zorv/core/number_format.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

/// Field widths of the `w` family of manipulators. The number in the name is not always the width.
enum class FieldWidth : int {
    w4 = 4,
    w5 = 5,
    w6 = 8,
    w8 = 10,
    w10 = 12,
    w12 = 16,
    w14 = 18,
    w16 = 21,
    w19 = 24,
};

/// The text of one record, built on the stack and handed to a stream in one write. Its columns are those of the
/// stream manipulators: a field of the `w` family is a blank and then right-aligned text of that width.
///
///     RecordText text;
///     text.Field(FieldWidth::w4, id).Text(" ").Quoted(name).Field(FieldWidth::w16, x, 16).Text("\n");
///     text.WriteTo(stream);
///
/// Nothing is allocated until the text outgrows its inline buffer.
class RecordText {
  public:
    RecordText() = default;
    RecordText(const RecordText&) = delete;
    RecordText& operator=(const RecordText&) = delete;

    /// The text as it is.
    RecordText& Text(std::string_view text) {
        char* out = Reserve(text.size());
        std::memcpy(out, text.data(), text.size());
        end = out + text.size();
        return *this;
    }
    RecordText& Char(char c) {
        *Reserve(1) = c;
        ++end;
        return *this;
    }

    RecordText& Field(FieldWidth width, std::string_view text) {
        const auto padding = static_cast<std::size_t>(std::max(0, static_cast<int>(width) - Size(text)));
        char* out = Reserve(1 + padding + text.size());
        std::memset(out, ' ', 1 + padding);
        end = out + 1 + padding;
        return Text(text);
    }
    RecordText& Field(FieldWidth width, int value) {
        return Number(width, [value](char* out) { return FormatInt(out, value); });
    }
    RecordText& Field(FieldWidth width, unsigned int value) {
        return Number(width, [value](char* out) { return FormatUnsigned(out, value); });
    }
    /// `precision` counts significant digits.
    RecordText& Field(FieldWidth width, double value, int precision) {
        return Number(width, [=](char* out) { return FormatDouble(out, value, precision); });
    }

    /// A left-aligned field, as of the `s` family.
    RecordText& Left(int width, std::string_view text) {
        Text(text);
        const auto padding = static_cast<std::size_t>(std::max(0, width - Size(text)));
        char* out = Reserve(padding);
        std::memset(out, ' ', padding);
        end = out + padding;
        return *this;
    }

    /// Numbers without a field.
    RecordText& Number(int value) {
        return Bare([value](char* out) { return FormatInt(out, value); });
    }
    RecordText& Number(unsigned int value) {
        return Bare([value](char* out) { return FormatUnsigned(out, value); });
    }
    RecordText& Number(double value, int precision) {
        return Bare([=](char* out) { return FormatDouble(out, value, precision); });
    }

    /// UTF-8 in quotes, as the tagged text reader takes it back: `'` for a quote inside, a blank for a line end; of a
    /// very long text its beginning.
    RecordText& Quoted(std::wstring_view text) {
        if (text.size() > kLongestQuotable) return Char('"').Text(QuotableUtf8(text)).Char('"');
        // Plain letters and digits, the usual case, need no conversion.
        char* out = Reserve(text.size() + 2);
        *out++ = '"';
        for (const wchar_t c : text) {
            if (c < L' ' || c > L'~' || c == L'"') {
                Char('"').Text(QuotableUtf8(text));
                return Char('"');
            }
            *out++ = static_cast<char>(c);
        }
        *out++ = '"';
        end = out;
        return *this;
    }

    std::string_view View() const { return {begin, static_cast<std::size_t>(end - begin)}; }
    void Clear() { end = begin; }

    /// One write; a field width that waits in the stream is used up, as by any output.
    void WriteTo(std::ostream& stream) const {
        stream.width(0);
        stream.write(begin, end - begin);
    }

  private:
    static constexpr std::size_t kInlineSize = 1024;

    static int Size(std::string_view text) { return static_cast<int>(std::min<std::size_t>(text.size(), 1u << 30)); }

    /// Room for that many bytes at the end, which is returned.
    char* Reserve(std::size_t bytes) {
        if (static_cast<std::size_t>(limit - end) < bytes) Grow(bytes);
        return end;
    }

    void Grow(std::size_t bytes) {
        const std::size_t used = static_cast<std::size_t>(end - begin);
        const std::size_t size = 2 * (used + bytes);
        std::unique_ptr<char[]> larger(new char[size]);
        std::memcpy(larger.get(), begin, used);
        spilled = std::move(larger);
        begin = spilled.get();
        end = begin + used;
        limit = begin + size;
    }

    template <class Format>
    RecordText& Bare(Format format) {
        end = format(Reserve(kNumberTextSize));
        return *this;
    }

    // The digits are written where the widest padding ends, then moved up against it.
    template <class Format>
    RecordText& Number(FieldWidth width, Format format) {
        const auto room = static_cast<std::ptrdiff_t>(width);
        char* out = Reserve(1 + static_cast<std::size_t>(room) + kNumberTextSize);
        *out++ = ' ';
        char* past = format(out);
        const std::ptrdiff_t length = past - out;
        if (length < room) {
            std::memmove(out + room - length, out, static_cast<std::size_t>(length));
            std::memset(out, ' ', static_cast<std::size_t>(room - length));
            past = out + room;
        }
        end = past;
        return *this;
    }

    char inlineBuffer[kInlineSize];
    std::unique_ptr<char[]> spilled;
    char* begin = inlineBuffer;
    char* end = inlineBuffer;
    char* limit = inlineBuffer + kInlineSize;
};

}  // namespace zorv::detail
