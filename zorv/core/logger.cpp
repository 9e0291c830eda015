#include "zorv/core/logger.h"

#include <cstdarg>
#include <functional>
#include <memory>
#include <utility>

#include "zorv/core/debug_output.h"
#include "zorv/core/log_line.h"
#include "zorv/core/platform/local_time.h"
#include "zorv/core/string_tools.h"
#include "zorv/core/wide_format.h"

namespace zorv::detail {

namespace {

std::wstring Digits(int value, std::size_t width, wchar_t fill) {
    std::wstring text = std::to_wstring(value);
    if (text.size() < width) text.insert(0, width - text.size(), fill);
    return text;
}

}  // namespace

std::wstring LogLine(std::wstring pattern, const std::tm& time, const std::wstring& message) {
    const int hour12 = time.tm_hour > 12 ? time.tm_hour - 12 : time.tm_hour;
    const std::pair<const wchar_t*, std::wstring> words[] = {
        {L"$day", Digits(time.tm_mday, 2, L'0')},
        {L"$month", Digits(time.tm_mon + 1, 2, L'0')},
        {L"$year", Digits(time.tm_year + 1900, 4, L' ')},
        {L"$hour12", Digits(hour12, 2, L'0')},
        {L"$hour24", Digits(time.tm_hour, 2, L'0')},
        {L"$minute", Digits(time.tm_min, 2, L'0')},
        {L"$second", Digits(time.tm_sec, 2, L'0')},
        {L"$ampm", time.tm_hour < 12 ? L"AM" : L"PM"},
        {L"$mesg", message},
    };
    for (const auto& [word, replacement] : words)
        StringReplace(&pattern, word, replacement);
    return pattern;
}

}  // namespace zorv::detail

namespace {

constexpr std::size_t kMessageBuffer = 1500;

ZoMasterLogger* registeredMaster = nullptr;

/// Calls every logger, from first to last; 1 when any answered other than 0. A logger may take itself out meanwhile.
template <class Call>
int ForEachLogger(const TZoListHeader<ZoLoggerRef>& loggers, const Call& call) {
    int result = 0;
    for (ZoLoggerRef* entry = loggers.First(); entry;) {
        ZoLogger* logger = entry->GetLogger();
        entry = entry->Next();
        if (logger && call(*logger) != 0) result = 1;
    }
    return result;
}

}  // namespace

int ZoLogger::Start() {
    return 0;
}

int ZoLogger::Stop() {
    return 0;
}

int ZoLogger::Log(int /*messageLevel*/, const wchar_t* /*text*/) {
    return 0;
}

int ZoLogger::DisplayMsgBox(int /*messageLevel*/, bool /*flag*/, const std::wstring& /*text*/) {
    return 0;
}

ZoLogger::~ZoLogger() = default;

int ZoMasterLogger::Start() {
    return ForEachLogger(loggers, [](ZoLogger& logger) { return logger.Start(); });
}

int ZoMasterLogger::Stop() {
    return ForEachLogger(loggers, [](ZoLogger& logger) { return logger.Stop(); });
}

int ZoMasterLogger::Log(int messageLevel, const wchar_t* text) {
    wchar_t line[kLineSize];
    zorv::detail::CopyToBuffer(line, format);
    Format(line, text);
    return ForEachLogger(loggers, [&](ZoLogger& logger) {
        return logger.GetLevel() < messageLevel ? 0 : logger.Log(messageLevel, line);
    });
}

int ZoMasterLogger::DisplayMsgBox(int messageLevel, bool flag, const std::wstring& text) {
    return ForEachLogger(loggers, [&](ZoLogger& logger) {
        return logger.GetLevel() < messageLevel ? 0 : logger.DisplayMsgBox(messageLevel, flag, text);
    });
}

void ZoMasterLogger::AddLogger(ZoLogger* logger) {
    loggers.Add(std::make_unique<ZoLoggerRef>(logger).release());
}

void ZoMasterLogger::SubtractLogger(ZoLogger* logger) {
    for (ZoLoggerRef* entry = loggers.First(); entry; entry = entry->Next()) {
        if (entry->GetLogger() != logger) continue;
        const std::unique_ptr<ZoLoggerRef> removed(loggers.Subtract(entry));
        return;
    }
}

void ZoMasterLogger::SetFormat(const wchar_t* pattern) {
    zorv::detail::CopyToBuffer(format, pattern ? pattern : L"");
}

void ZoMasterLogger::Format(wchar_t* line, const wchar_t* message) {
    std::wstring text = zorv::detail::LogLine(line, zorv::detail::LocalTimeNow(), message ? message : L"");
    zorv::detail::CutToBuffer(text, kLineSize);
    line[text.copy(line, text.size())] = L'\0';
}

void ZoApplicationLogger::RegisterMasterLogger(ZoMasterLogger* master) {
    registeredMaster = master;
}

ZoMasterLogger* ZoApplicationLogger::GetMasterLogger() {
    return registeredMaster;
}

int ZoApplicationLogger::Log(int level, const wchar_t* format, ...) {
    if (!registeredMaster || !format) return 0;
    std::va_list arguments;
    va_start(arguments, format);
    std::wstring text = zorv::detail::FormatText(format, arguments).value_or(format);
    va_end(arguments);
    zorv::detail::CutToBuffer(text, kMessageBuffer);
    return LogText(level, text.c_str());
}

int ZoApplicationLogger::LogText(int level, const wchar_t* text) {
    if (!registeredMaster) return 0;
    if (!text) text = L"";
    dbgprintf(L"\nLog: %s", text);
    registeredMaster->Log(level, text);
    return 0;
}

int ZoApplicationLogger::DisplayMsgBox(int level, bool flag, const std::wstring& text) {
    if (registeredMaster) registeredMaster->DisplayMsgBox(level, flag, text);
    return 0;
}
