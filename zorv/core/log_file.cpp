#include "zorv/core/log_file.h"

#include <locale>

#include "zorv/core/platform/files.h"
#include "zorv/core/platform/local_time.h"

ZoLogfile::ZoLogfile(const std::wstring& file, int /*mode*/) {
    OpenFile(file);
}

void ZoLogfile::OpenFile(const std::wstring& file) {
    if (is_open()) close();
    imbue(std::locale::classic());
    open(zorv::detail::NativePath(file), std::ios::out | std::ios::app);
    if (is_open()) clear();
    WriteSmallHeader();
}

void ZoLogfile::WriteSmallHeader() {
    constexpr int kRuleLength = 132;
    *this << std::string(kRuleLength, '/') << '\n';
    *this << "//  " << zorv::detail::CtimeText(zorv::detail::LocalTimeNow());
    *this << "//  ";
}
