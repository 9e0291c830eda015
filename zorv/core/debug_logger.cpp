#include "zorv/core/debug_logger.h"

#include <fstream>
#include <memory>
#include <string>

#include "zorv/core/debug_protocol.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

std::wstring& DebugProtocolFile() {
    static std::wstring file = L"\\ZorvProtokoll.log";
    return file;
}

}  // namespace zorv::detail

namespace {

std::unique_ptr<ZoZorvDebugLogger> installedLogger;

}  // namespace

int ZoZorvDebugLogger::Log(int messageLevel, const wchar_t* text) {
    std::ofstream file(zorv::detail::NativePath(zorv::detail::DebugProtocolFile()), std::ios::out | std::ios::app);
    // In one piece, so that lines of several writers do not mix.
    const std::string line = std::to_string(messageLevel) + " : " + wstring2string(text) + "\n";
    file.write(line.data(), static_cast<std::streamsize>(line.size()));
    return 0;
}

void InstallZorvDebugLogger() {
    ZoMasterLogger* master = ZoApplicationLogger::GetMasterLogger();
    if (!master || installedLogger) return;
    installedLogger = std::make_unique<ZoZorvDebugLogger>();
    master->AddLogger(installedLogger.get());
    ZoApplicationLogger::Log(4, L"InstallZorvDebugLogger()");
}

void UninstallZorvDebugLogger() {
    ZoMasterLogger* master = ZoApplicationLogger::GetMasterLogger();
    if (!master || !installedLogger) return;
    ZoApplicationLogger::Log(4, L"UninstallZorvDebugLogger()");
    master->SubtractLogger(installedLogger.get());
    installedLogger.reset();
}

bool IsZorvDebugLoggerInstalled() {
    return installedLogger != nullptr;
}
