#pragma once

#include <string>

#include "zorv/core/list.h"
#include "zorv/core/list_node.h"
#include "zorv/export.h"

/// Receives the library's messages. A host derives its own, adds it to the master logger and stays its owner.
///
/// A smaller level is more serious: 1 hard failure, 2 read error, 4 debug note. A logger takes a message whose level
/// is not above its own.
class ZORV_API ZoLogger {
  public:
    ZoLogger() = default;
    explicit ZoLogger(int threshold) : level(threshold) {}

    virtual int Start();
    virtual int Stop();
    /// `text` is the finished line, without a line end.
    virtual int Log(int messageLevel, const wchar_t* text);
    /// `text` is the message as it was given, unformatted.
    virtual int DisplayMsgBox(int messageLevel, bool flag, const std::wstring& text);
    virtual ~ZoLogger();

    int GetLevel() const { return level; }
    void SetLevel(int threshold) { level = threshold; }

    int level = 3;
};

/// A master logger's entry for a logger; does not own it.
class ZORV_API ZoLoggerRef : public TZoListnode<ZoLoggerRef> {
  public:
    ZoLoggerRef() = default;
    explicit ZoLoggerRef(ZoLogger* target) : logger(target) {}

    ZoLogger* GetLogger() const { return logger; }

    ZoLogger* logger = nullptr;
};

/// Formats each message once and passes it on to the loggers that take its level.
class ZORV_API ZoMasterLogger : public ZoLogger {
  public:
    static constexpr int kFormatSize = 200;  ///< characters of the format, its terminator included
    static constexpr int kLineSize = 500;    ///< characters of a finished line, its terminator included

    /// 1 when any logger answered other than 0, else 0. All of them are called.
    int Start() override;
    int Stop() override;
    int Log(int messageLevel, const wchar_t* text) override;
    int DisplayMsgBox(int messageLevel, bool flag, const std::wstring& text) override;

    /// Appends a logger, which must outlive its entry.
    void AddLogger(ZoLogger* logger);
    /// Removes the first entry of that logger; the logger lives on.
    void SubtractLogger(ZoLogger* logger);

    /// The pattern of a line, cut to 199 characters. $day $month $year $hour12 $hour24 $minute $second $ampm and $mesg
    /// stand for the local time and the message.
    void SetFormat(const wchar_t* pattern);

    /// Turns a pattern into the finished text in place. `line` has room for kLineSize characters; a longer text is cut.
    void Format(wchar_t* line, const wchar_t* message);

    TZoListHeader<ZoLoggerRef> loggers;
    wchar_t format[kFormatSize] = L"[$hour24:$minute:$second] $mesg";
};

/// The way of the library's messages to the host, process-wide. Silent until a master logger is registered.
class ZORV_API ZoApplicationLogger {
  public:
    /// The master logger stays the caller's; null takes it away. Uninstall the debug logger before changing it.
    static void RegisterMasterLogger(ZoMasterLogger* master);
    static ZoMasterLogger* GetMasterLogger();

    /// Formats by printf's rules, with `%s` and `%c` as wide text, and cuts to 1499 characters. A message that cannot
    /// be formatted is logged as its bare format. The result is 0.
    static int Log(int level, const wchar_t* format, ...);
    /// Writes the text to the debug channel and hands it to the master logger. The result is 0.
    static int LogText(int level, const wchar_t* text);
    static int DisplayMsgBox(int level, bool flag, const std::wstring& text);
};
