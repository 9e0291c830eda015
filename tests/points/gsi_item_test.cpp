#include "zorv/points/gsi_item.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <string_view>

namespace {

using Bit = ZoGsiDataItem::Bit;

TEST(GsiItem, TakesTheWordsOfALineOfTheShortForm) {
    const ZoGsiDataItem item(
        "110007+000A0123 21.102+10378200 22.102-00012500 31..00+00005165 81..06+00010000 82..01+00002000 "
        "83..08-00000500 \r\n");
    EXPECT_EQ(std::tuple(item.dataMask, item.pointName, item.pointNumber, item.verticalAngle, item.verticalAngleUnit),
              std::tuple(127U, "A0123", 123U, -12500.0, eGsiGon));
    EXPECT_DOUBLE_EQ(item.GetData(Bit::kSlopeDistance, eZoUnitMm), 5165.0);
    EXPECT_DOUBLE_EQ(item.GetData(Bit::kEasting, eZoUnitM), 1.0);
    EXPECT_DOUBLE_EQ(item.GetData(Bit::kHeight, eZoUnitM), -0.005);
    EXPECT_EQ(item.GetData(Bit::kErrorMessage, eZoUnitM), 0.0);
}

TEST(GsiItem, TakesSixteenDigitsBehindAStar) {
    const ZoGsiDataItem item("*110001+0000000000000123 81..00+0000000565300123 82..00+00005164123 ");
    EXPECT_EQ(std::tuple(item.pointNumber, item.pointName), std::tuple(123U, "123"));
    EXPECT_DOUBLE_EQ(item.GetData(Bit::kEasting, eZoUnitM), 565300.123);
    EXPECT_EQ(item.dataMask, 17U) << "a word of fewer digits is cut short";

    const ZoGsiDataItem full("*110001+STATION-12345678 ");
    EXPECT_EQ(std::tuple(full.pointName, full.pointNumber), std::tuple("STATION-12345678", 12345678U));
    const ZoGsiDataItem zeros("110001+00000000 ");
    EXPECT_EQ(std::tuple(zeros.pointName, zeros.dataMask), std::tuple("", 1U));
}

TEST(GsiItem, LengthsScaleByTheUnitDigit) {
    const std::pair<char, double> units[] = {{'0', 12345.678},  {'1', 12345.678 * 0.3048}, {'5', 1234.5678},
                                             {'6', 1234.5678},  {'7', 1234.5678 * 0.3048}, {'8', 123.45678},
                                             {'9', 12345678.0}, {'.', 12345678.0},         {'2', 12345678.0}};
    for (const auto& [digit, metres] : units) {
        const ZoGsiDataItem item((std::string("31..0") + digit + "+12345678 ").c_str());
        EXPECT_NEAR(item.GetData(Bit::kSlopeDistance, eZoUnitM), metres, 1e-9 * metres) << digit;
    }
    EXPECT_EQ(ZoGsiDataItem().slopeDistanceUnit, 100);
}

TEST(GsiItem, AnglesScaleByTheUnitDigit) {
    // A right angle as gon, degrees, degrees with minutes and seconds, and mil; then 12 degrees 34' 56.7".
    for (const char* word : {"21.102+10000000", "21.103+09000000", "21.104+09000000", "21.105+16000000"}) {
        const ZoGsiDataItem item(word);
        EXPECT_NEAR(item.GetData(Bit::kHorizontalAngle, eZoAngleRadian), std::numbers::pi / 2, 1e-15) << word;
        EXPECT_NEAR(item.GetData(Bit::kHorizontalAngle, eZoAngleGon), 100, 1e-13) << word;
        EXPECT_EQ(item.GetData(Bit::kVerticalAngle, eZoAngleGon), 0.0);
    }
    const ZoGsiDataItem item("22.104-01234567 ");
    EXPECT_NEAR(item.GetData(Bit::kVerticalAngle, eZoAngleDegree), -(12 + 34 / 60.0 + 56.7 / 3600), 1e-13);
}

TEST(GsiItem, MessagesAndAnswersOfTheInstrument) {
    const ZoGsiDataItem item("@W427 110001+00000007 81..00+00001000 ");
    EXPECT_TRUE(item.IsErrorMessage());
    EXPECT_EQ(std::tuple(item.errorCode, item.pointNumber), std::tuple(427U, 7U));
    EXPECT_EQ(item.MaskData(0xffff), 1024 + 1 + 16);
    ZoGsiDataItem gathered("110001+00000001 ");
    gathered.InterpretGSIMessage("31..00+00002000 ");
    EXPECT_EQ(gathered.dataMask, 9U);
    gathered.SetBMData(1);
    EXPECT_EQ(gathered.GetData(Bit::kSlopeDistance, eZoUnitM), 0.0);
    gathered.AddBmData(8);
    EXPECT_EQ(gathered.GetData(Bit::kSlopeDistance, eZoUnitM), 2.0);
    EXPECT_EQ(ZoGsiDataItem("@E1234567\r\n").errorCode, 123U);
    EXPECT_EQ(ZoGsiDataItem("@").dataMask, 1024U);
    EXPECT_EQ(ZoGsiDataItem("!81..00+00001000 82..00+00001000 ").dataMask, 0U);
    EXPECT_EQ(ZoGsiDataItem("?81..00+00001000 82..00+00001000 ").dataMask, 32U);
}

TEST(GsiItem, WordsThatDoNotFitArePassed) {
    const std::pair<const char*, std::uint32_t> lines[] = {
        {nullptr, 0},
        {"", 0},
        {"\r\n110001+00000123", 0},
        {"abc xyz 81..00+00001000", 16},
        {"10....+00000001 84..00+00000001 99..00+00000001", 0},
        {"81..00+0000100", 0},
        {"81..00+100 82..00+00002000 83..00+00000500 ", 32 + 64},
        {"110001+00000123*81..00+00001000*", 17},
        {"81..00+   1000 ", 0},
        {"82..00 00001000 ", 32},
        {"71....+00A 81B 83..00+00000500 ", 64},
    };
    for (const auto& [line, mask] : lines)
        EXPECT_EQ(ZoGsiDataItem(line).dataMask, mask) << (line ? line : "null");
    EXPECT_EQ(ZoGsiDataItem("110001+0000A 12 81..00+00001000").pointName, "A 12");
}

// Whatever is missing at the end, a word is either whole or not taken. Each piece lies at the end of its own block, so
// that the sanitizers see a step too far.
TEST(GsiItem, LinesCutAnywhereKeepTheirWholeWords) {
    for (const std::string_view line :
         {"110001+00000123 21.102+10378200 @W427 31..00+00005165 81..00+00001000 83..00+00000500 ",
          "*110001+0000000000000123 81..00+0000000000001000 83..00+0000000000000500 "}) {
        for (std::size_t size = 0; size <= line.size(); ++size) {
            const std::unique_ptr<char[]> piece(new char[size + 1]);
            line.copy(piece.get(), size);
            piece[size] = 0;
            const ZoGsiDataItem item(piece.get());
            EXPECT_EQ(item.pointNumber, item.MaskData(Bit::kPointNumber) ? 123U : 0U) << size;
            EXPECT_EQ(item.easting, item.MaskData(Bit::kEasting) ? 1000.0 : 0.0) << size;
            EXPECT_EQ(item.height, item.MaskData(Bit::kHeight) ? 500.0 : 0.0) << size;
        }
    }
}

TEST(GsiItem, OfALongLineTheWordsThatFitAreTaken) {
    std::string line;
    while (line.size() < 1480)
        line += "71....+00000000 ";
    ASSERT_EQ(line.size(), 1488U);
    EXPECT_EQ(ZoGsiDataItem((line + "81..00+00001000 ").c_str()).dataMask, 0U);
    EXPECT_EQ(ZoGsiDataItem((line.substr(5) + "81..00+00001000 ").c_str()).dataMask, 16U);
    EXPECT_EQ(ZoGsiDataItem(std::string(100000, '8').c_str()).dataMask, 0U);
}

}  // namespace
