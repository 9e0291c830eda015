#include "zorv/core/text_writer.h"

#include <sstream>

#include <gtest/gtest.h>

#include "zorv/core/object.h"
#include "zorv/core/record_text.h"

namespace {

using zorv::detail::FieldWidth;
using zorv::detail::RecordText;

// The lines are worked out by hand from the table of widths.
TEST(TextWriter, PlaneLineHasItsColumns) {
    std::ostringstream out;
    out << ZoBeginBlock;
    ZoObject(1, L"Wall").Write(out) << p16 << w16 << 0.0 << w16 << 0.0 << w16 << 1.0 << w16 << 2.5;
    out << ZoEndBlock;
    EXPECT_EQ(out.str(),
              "{    1 \"Wall\"                     0                     0                     1"
              "                   2.5}");
}

TEST(TextWriter, KeywordAndBlockHaveTheirColumns) {
    std::ostringstream out;
    out << s12 << "PHOTOID" << w4 << ZoBeginBlock;
    ZoObject(7, L"Pano 7").Write(out) << ZoEndBlock << Zoendl;
    out << s12 << "COMMENT" << w4 << '"' << "Text" << '"';
    EXPECT_EQ(out.str(), "PHOTOID         {    7 \"Pano 7\"}\nCOMMENT         \"Text\"");
}

TEST(TextWriter, IndentsByBlocksAndNeverBelowZero) {
    ZoWriterReset();
    std::ostringstream out;
    out << ZoEndBlock << ZoTabMinus << Zoendl << ZoBeginBlockNL << "A" << ZoTabPlus << Zoendl << "B" << ZoTabMinus
        << ZoEndBlockNL << ZoComment << "end" << ZoBeginBlock << Zoendl;
    ZoWriterReset();
    out << Zoendl;
    EXPECT_EQ(out.str(), "}\n{\n    A\n        B\n}; end{\n    \n");
}

TEST(TextWriter, WidthFamiliesFollowTheTable) {
    using Manipulator = std::ostream& (*)(std::ostream&);
    const std::pair<Manipulator, std::size_t> right[] = {{w4, 5},   {w5, 6},   {w6, 9},   {w8, 11}, {w10, 13},
                                                         {w12, 17}, {w14, 19}, {w16, 22}, {w19, 25}};
    for (const auto& [manipulator, width] : right) {
        std::ostringstream out;
        out << std::left << manipulator << 7;
        EXPECT_EQ(out.str(), std::string(width - 1, ' ') + "7");
    }
    const std::pair<Manipulator, std::size_t> left[] = {{s2, 2},   {s4, 4},   {s8, 8},   {s10, 10}, {s12, 12},
                                                        {s14, 14}, {s16, 16}, {s20, 20}, {s30, 30}, {s34, 34}};
    for (const auto& [manipulator, width] : left) {
        std::ostringstream out;
        out << manipulator << 'x' << '|';
        EXPECT_EQ(out.str(), std::string("x").append(width - 1, ' ').append("|"));
    }
}

TEST(TextWriter, RecordTextEqualsTheManipulators) {
    const double values[] = {0.0, -0.0, 1.0, 2.5, 0.1, 1e-7, 123456789.123456789, -1e300, 1e16, 1234567890123456789.0};
    std::ostringstream out;
    RecordText text;
    for (const double value : values) {
        out << p4 << w4 << value << p10 << w12 << value << p16 << w19 << value << w5 << -17 << w6 << 4294967295u;
        out << s8 << "code" << s2 << "longer" << w10 << "abc" << value;
        text.Field(FieldWidth::w4, value, 4).Field(FieldWidth::w12, value, 10).Field(FieldWidth::w19, value, 16);
        text.Field(FieldWidth::w5, -17).Field(FieldWidth::w6, 4294967295u).Left(8, "code").Left(2, "longer");
        text.Field(FieldWidth::w10, "abc").Number(value, 16);
    }
    EXPECT_EQ(text.View(), out.str());
}

TEST(TextWriter, NamesStayReadable) {
    RecordText text;
    text.Quoted(L"a \"b\"\r\nc\u00e4\U0001f600").Char(' ').Quoted(std::wstring(5000, L'x')).Number(5u);
    EXPECT_EQ(text.View(), "\"a 'b'  c\xC3\xA4\xF0\x9F\x98\x80\" \"" + std::string(5000, 'x') + "\"5");
    text.Clear();
    text.Quoted(L"a" + std::wstring(5000, L'\u00e4'));
    EXPECT_EQ(text.View().size(), 1 + 7999U + 1) << "a line that the reader takes, cut at a whole character";
}

}  // namespace
