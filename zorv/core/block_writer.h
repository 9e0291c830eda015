#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "zorv/core/number_format.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"

namespace zorv::detail {

/// Writes the keywords of a block, a line for each value, as BlockKeywords reads them. Infinity and not-a-number, which
/// would end the reading, become 0.
class BlockWriter {
  public:
    explicit BlockWriter(std::ostream& target) : stream(target) {}

    void Value(const char* keyword, const std::wstring& text) {
        RecordText quoted;
        Keyword(keyword) << ' ';
        quoted.Quoted(text).WriteTo(stream);
        stream << Zoendl;
    }
    void Value(const char* keyword, double number) {
        RecordText text;
        Keyword(keyword) << ' ';
        text.Number(FiniteOrZero(number), kExactDigits).WriteTo(stream);
        stream << Zoendl;
    }
    void Value(const char* keyword, std::int32_t number) { Integer(keyword, number); }
    void Value(const char* keyword, std::uint32_t number) { Integer(keyword, number); }
    void Value(const char* keyword, bool on) { Value(keyword, on ? 1 : 0); }
    template <class Write>
    void Block(const char* keyword, Write write) {
        Keyword(keyword) << w4 << ZoBeginBlockNL;
        write(stream);
        stream << ZoEndBlockNL << Zoendl;
    }
    template <class T>
    void Record(const char* keyword, const T& record) {
        Block(keyword, [&record](std::ostream& out) { record.Write(out); });
    }

  private:
    template <class T>
    void Integer(const char* keyword, T number) {
        RecordText text;
        text.Field(FieldWidth::w4, number).WriteTo(Keyword(keyword));
        stream << Zoendl;
    }
    std::ostream& Keyword(const char* keyword) { return stream << s12 << keyword; }

    std::ostream& stream;
};

}  // namespace zorv::detail
