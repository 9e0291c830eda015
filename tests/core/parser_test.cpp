#include "zorv/core/parser.h"

#include <clocale>
#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

namespace {

struct OpenParser : ZoParser {
    using ZoParser::ParseForToken;
};

// All tokens in one line of text: I12 F1.5 Kkeyword Sstring O- { } and, where reading failed, !status@line.
std::string Tokens(const std::string& text, OpenParser& parser) {
    std::istringstream in(text);
    std::ostringstream all;
    all << std::setprecision(17);
    try {
        for (parser.ParseForToken(in); parser.GetToken().GetType() != eZoTokenEof; parser.ParseForToken(in)) {
            const ZoParserToken& token = parser.GetToken();
            all << (all.view().empty() ? "" : " ") << "OIF-KS-{}"[token.GetType()];
            if (token.GetType() == eZoTokenInt) {
                all << token.GetInt();
            } else if (token.GetType() == eZoTokenFloat) {
                all << token.GetFloat();
            } else {
                all << token.GetString();
            }
        }
    } catch (const ZoParserStatus& error) {
        all << '!' << error.status << '@' << error.line;
    }
    return all.str();
}

std::string Tokens(const std::string& text) {
    OpenParser parser;
    return Tokens(text, parser);
}

TEST(Parser, ClassifiesTokens) {
    const std::pair<std::string, std::string> cases[] = {
        {"-12 +7 0012", "I-12 I7 I12"},
        {"1.5 .5 1e5 1. -.25 1E", "F1.5 F0.5 F100000 F1 F-0.25 F1"},
        {"A1 P2E3 X.Y E5", "KA1 KP2E3 KX.Y KE5"},
        {"1-2 - +. --5 1.2.3", "I1 O- O+. I0 F1.2"},
        {"12ab", "!4@1"},
        {"1 2\n3 0x10", "I1 I2 I3!4@2"},
        {"KEY{1}", "KKEY { I1 }"},
        {"KEY}A\"b\"C", "KKEY } KA Sb KC"},
        {"\"\" \"a;b!c{d}\" e", "S Sa;b!c{d} Ke"},
        {"12;note 13\n!all\n14!x", "I12 I14"},
        {"\"abc", "!3@1"},
        {"1\tA\r\nB\r\n\r\nC", "I1 KA KB KC"},
        {"\xEF\xBB\xBFKEY 1\n\xEF\xBB\xBF", "KKEY I1 O\xEF\xBB\xBF"},
        {std::string("A B\0C D\nE", 9), "KA KB KE"},
        {"\xC3\xA4 \xC3\xA4z \xFF", "O\xC3\xA4!4@1"},
        {"", ""},
        {"\n ;\n", ""},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(Tokens(text), expected) << text;
}

TEST(Parser, NumbersAreThoseOfTheirDigits) {
    const std::pair<std::string, double> cases[] = {
        {"0.1", 0.1},
        {"4500000.123456789", 4500000.123456789},
        {"9007199254740993.5", 9007199254740993.5},
        {"123456789012345678901234567890.0", 123456789012345678901234567890.0},
        {"0.00000000000000000000000000001", 1e-29},
        {"1e400", std::numeric_limits<double>::infinity()},
        {"10.5e9223372036854775807", std::numeric_limits<double>::infinity()},
        {"0.001e-9223372036854775807", 0.0},
        {"5400000000", 5400000000.0},
        {"-99999999999", -99999999999.0},
        {"2147483647", 2147483647.0},
    };
    for (const auto& [text, expected] : cases) {
        OpenParser parser;
        std::istringstream in(text);
        parser.ParseForToken(in);
        EXPECT_EQ(parser.GetTokenNumber(), expected) << text;
        EXPECT_EQ(parser.GetToken().GetString(), text);
    }
    EXPECT_EQ(Tokens("4294967295 4294967296 -3000000000"), "I-1 I-1 I-2147483648");
    OpenParser parser;
    std::istringstream in("-0.0");
    parser.ParseForToken(in);
    EXPECT_TRUE(std::signbit(parser.GetTokenFloat()));
}

TEST(Parser, ClassesCanBeChanged) {
    OpenParser commas;
    commas.SetTokenseperator(';', true);
    commas.SetDecPoint(',');
    commas.SetCommentChar('#', true);
    EXPECT_EQ(Tokens("1,5;2,25#x\n-3,0;1.5", commas), "F1.5 F2.25 F-3 I1");
    OpenParser plain;
    plain.SetCommentChar('!', false);
    plain.SetTokenseperator(' ', false);
    EXPECT_EQ(Tokens("a b!c\td", plain), "Ka b!c Kd");
    OpenParser zero;
    zero.SetTokenseperator(0, true);
    EXPECT_EQ(Tokens("a longer line\nb", zero), "Ka Klonger Kline Kb");  // nothing of the former line
}

eZoParserStatus Refusal(ZoParser& parser, eZoTokentype wanted) {
    try {
        parser.GetToken(wanted);
        return eZoParserStatusOk;
    } catch (const ZoParserStatus& error) {
        return error.status;
    }
}

TEST(Parser, RequestsCheckTheToken) {
    OpenParser parser;
    std::istringstream in("1.5");
    parser.ParseForToken(in);
    EXPECT_EQ(Refusal(parser, eZoTokenInt), eZoParserErrorNotSpecifiedToken);
    EXPECT_EQ(Refusal(parser, eZoTokenNumber), eZoParserStatusOk);
    for (int twice = 0; twice < 2; ++twice) {
        parser.ParseForToken(in);
        for (const eZoTokentype wanted : {eZoTokenInt, eZoTokenNumber, eZoTokenString, eZoTokenBlockEnd})
            EXPECT_EQ(Refusal(parser, wanted), eZoParserStatusEof);
    }
}

TEST(Parser, AnUnterminatedStringIsTheRestOfItsLine) {
    OpenParser parser;
    EXPECT_EQ(Tokens("x \"abc\r\nnext", parser), "Kx!3@1");
    EXPECT_EQ(std::string(parser.GetTokenString()), "abc");
}

TEST(Parser, LinesHaveRoomFor8511Bytes) {
    const std::string line(ZoParser::kLineSize - 1, 'a');
    for (const char* end : {"\nB", "\r\nB"})
        EXPECT_EQ(Tokens(line + end), "K" + line + " KB");
    EXPECT_EQ(Tokens("1\n" + line + "a\nB"), "I1 K" + line + "!2@2");
    EXPECT_EQ(Tokens(std::string("1").append(10'000'000, ' ').append("2")), "I1!2@1");
}

TEST(Parser, KeepsTheProcessLocaleForItsLifeOnly) {
    ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
    {
        const ZoParser parser;
        EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    }
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C.UTF-8");
    std::setlocale(LC_ALL, "C");
}

}  // namespace
