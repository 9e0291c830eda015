#pragma once

#include <string>
#include <vector>

#include "zorv/core/logger.h"

/// Writes down the messages of the application log, bare and in order, for as long as it lives.
class RecordedLog : public ZoLogger {
  public:
    RecordedLog() : ZoLogger(4), former(ZoApplicationLogger::GetMasterLogger()) {
        master.SetFormat(L"$mesg");
        master.AddLogger(this);
        ZoApplicationLogger::RegisterMasterLogger(&master);
    }
    ~RecordedLog() override { ZoApplicationLogger::RegisterMasterLogger(former); }
    RecordedLog(const RecordedLog&) = delete;
    RecordedLog& operator=(const RecordedLog&) = delete;

    int Log(int messageLevel, const wchar_t* text) override {
        lines.push_back(std::to_wstring(messageLevel) + L" " + text);
        return 0;
    }

    std::vector<std::wstring> lines;  ///< level, blank, text

  private:
    ZoMasterLogger master;
    ZoMasterLogger* former;
};
