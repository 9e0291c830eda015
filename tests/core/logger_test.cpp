#include "zorv/core/logger.h"

#include <iomanip>
#include <sstream>
#include <tuple>

#include "tests/support/recorded_host.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/debug_logger.h"
#include "zorv/core/debug_protocol.h"
#include "zorv/core/log_line.h"

namespace {

struct RecordingLogger : ZoLogger {
    using ZoLogger::ZoLogger;

    int Start() override { return answer; }
    int Stop() override { return answer; }
    int Log(int, const wchar_t* text) override {
        lines.emplace_back(text);
        return answer;
    }
    int DisplayMsgBox(int, bool flag, const std::wstring& text) override {
        boxes.emplace_back(flag, text);
        return answer;
    }

    int answer = 0;
    std::vector<std::wstring> lines;
    std::vector<std::pair<bool, std::wstring>> boxes;
};

class Logger : public testing::Test {
  protected:
    Logger() {
        master.SetFormat(L"$mesg");
        master.AddLogger(&logger);
        ZoApplicationLogger::RegisterMasterLogger(&master);
    }
    ~Logger() override { ZoApplicationLogger::RegisterMasterLogger(nullptr); }

    RecordedHost host;
    RecordingLogger logger;
    ZoMasterLogger master;
};

TEST(LogLine, WordsBecomeTimeAndMessage) {
    using Row = std::tuple<const wchar_t*, int, const wchar_t*>;
    for (const auto& [pattern, hour, expected] : {
             Row{L"$day.$month.$year", 0, L"09.02.2024"},
             Row{L"$hour12 $ampm|$hour24", 0, L"00 AM|00"},
             Row{L"$hour12 $ampm|$hour24", 12, L"12 PM|12"},
             Row{L"$hour12 $ampm|$hour24", 13, L"01 PM|13"},
             Row{L"$hour24:$minute:$second $hour24", 7, L"07:30:05 07"},
             Row{L"$mesg/$mesg", 7, L"cost $day $5/cost $day $5"},
             Row{L"$$day $hour $Mesg $", 7, L"$09 $hour $Mesg $"},
         }) {
        std::tm time{};
        std::istringstream("2024-02-09 30:05") >> std::get_time(&time, "%Y-%m-%d %M:%S");
        time.tm_hour = hour;
        EXPECT_EQ(zorv::detail::LogLine(pattern, time, L"cost $day $5"), expected);
    }
}

TEST_F(Logger, TakesWhatIsNotAboveItsLevel) {
    EXPECT_EQ(logger.GetLevel(), 3);
    ZoApplicationLogger::Log(3, L"%s %d %c", L"Prüfling", 7, L'Ω');
    ZoApplicationLogger::Log(4, L"debug");
    master.DisplayMsgBox(4, true, L"no");
    logger.SetLevel(4);
    ZoApplicationLogger::Log(4, L"$day %%");
    ZoApplicationLogger::Log(1, L"not to be formatted %hs", "\xff");
    EXPECT_EQ(logger.lines, (std::vector<std::wstring>{L"Prüfling 7 Ω", L"$day %", L"not to be formatted %hs"}));
    ASSERT_EQ(host.wide.size(), 4u);
    EXPECT_EQ(std::tuple(host.wide[0], host.wide[1]), std::tuple(L"\nLog: Prüfling 7 Ω", L"\nLog: debug"));
    EXPECT_TRUE(logger.boxes.empty());
    master.SetFormat(L"<$mesg>");
    EXPECT_EQ(ZoApplicationLogger::DisplayMsgBox(1, true, L"text"), 0);
    EXPECT_EQ(logger.boxes, (std::vector<std::pair<bool, std::wstring>>{{true, L"text"}}));
}

TEST_F(Logger, WithoutAMasterNothingHappens) {
    ZoApplicationLogger::RegisterMasterLogger(nullptr);
    EXPECT_EQ(ZoApplicationLogger::Log(1, L"lost"), 0);
    EXPECT_EQ(ZoApplicationLogger::DisplayMsgBox(1, false, L"lost"), 0);
    InstallZorvDebugLogger();
    EXPECT_FALSE(IsZorvDebugLoggerInstalled());
    EXPECT_TRUE(host.wide.empty());
    EXPECT_TRUE(logger.lines.empty());
}

TEST_F(Logger, LongTextIsCutToItsBuffers) {
    const std::wstring text(4000, L'x');
    ZoApplicationLogger::Log(1, L"%s", text.c_str());
    ZoApplicationLogger::LogText(1, text.c_str());
    ASSERT_EQ(logger.lines.size(), 2u);
    EXPECT_EQ(logger.lines[0], text.substr(0, 499));
    EXPECT_EQ(std::tuple(host.wide[0], host.wide[1]), std::tuple(L"\nLog: " + text.substr(0, 1499), L"\nLog: " + text));
    master.SetFormat(text.c_str());
    ZoApplicationLogger::LogText(1, L"");
    EXPECT_EQ(logger.lines[2], text.substr(0, 199));
}

TEST_F(Logger, EveryLoggerIsCalledAndAnyAnswerCounts) {
    RecordingLogger second;
    master.AddLogger(nullptr);
    master.AddLogger(&second);
    EXPECT_EQ(master.Start(), 0);
    logger.answer = 5;
    EXPECT_EQ(master.Start(), 1);
    EXPECT_EQ(master.Stop(), 1);
    EXPECT_EQ(master.Log(1, L"a"), 1);
    EXPECT_EQ(master.DisplayMsgBox(1, false, L"b"), 1);
    EXPECT_EQ(std::tuple(second.lines.size(), second.boxes.size()), std::tuple(1u, 1u));
}

TEST_F(Logger, SubtractTakesTheFirstReferenceOnly) {
    RecordingLogger stranger;
    master.AddLogger(&logger);
    master.SubtractLogger(&stranger);
    EXPECT_EQ(master.loggers.Count(), 2);
    master.SubtractLogger(&logger);
    master.Log(1, L"once");
    master.SubtractLogger(&logger);
    master.SubtractLogger(&logger);
    master.Log(1, L"gone");
    EXPECT_EQ(logger.lines, std::vector<std::wstring>{L"once"});
}

TEST_F(Logger, DebugLoggerAppendsToItsProtocol) {
    const TempFolder folder;
    const std::wstring former = zorv::detail::DebugProtocolFile();
    EXPECT_EQ(former, L"\\ZorvProtokoll.log");
    zorv::detail::DebugProtocolFile() = folder.Name("sub\\..\\Protokoll €.log");
    std::filesystem::create_directory(folder.path / "sub");

    InstallZorvDebugLogger();
    InstallZorvDebugLogger();
    EXPECT_TRUE(IsZorvDebugLoggerInstalled());
    EXPECT_EQ(master.loggers.Count(), 2);
    ZoApplicationLogger::Log(2, L"Höhe %d", 3);
    ZoApplicationLogger::Log(5, L"too deep");
    UninstallZorvDebugLogger();
    UninstallZorvDebugLogger();
    EXPECT_FALSE(IsZorvDebugLoggerInstalled());
    EXPECT_EQ(folder.Read("Protokoll €.log"),
              "4 : InstallZorvDebugLogger()\n2 : Höhe 3\n4 : UninstallZorvDebugLogger()\n");

    zorv::detail::DebugProtocolFile() = folder.Name("sub");
    EXPECT_EQ(ZoZorvDebugLogger().Log(1, L"lost"), 0);
    zorv::detail::DebugProtocolFile() = former;
}

}  // namespace
