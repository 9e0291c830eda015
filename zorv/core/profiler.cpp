#include "zorv/core/profiler.h"

#include <cstdarg>

#include "zorv/core/text_conversion.h"
#include "zorv/core/wide_format.h"

std::map<std::wstring, double> ZoProfilerSum::sums;
int ZoProfiler::m_nInstance = 0;

void ZoProfilerSum::Add(const std::wstring& entry, double seconds) {
    sums[entry] += seconds;
}

void ZoProfilerSum::Dump() {}

ZoProfiler::ZoProfiler() : ZoProfiler(std::wstring()) {}

ZoProfiler::ZoProfiler(const std::wstring& text) : message(text) {
    ++m_nInstance;
    StartMessage();
}

ZoProfiler::ZoProfiler(const char* format, ...) {
    constexpr std::size_t kMessageBuffer = 600;
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = zorv::detail::FormatText(format, arguments).value_or(std::string());
    va_end(arguments);
    zorv::detail::CutToBuffer(text, kMessageBuffer);
    if (text.starts_with('\n')) text.erase(0, 1);
    message = string2wstring(text);
    ++m_nInstance;
    StartMessage();
}

ZoProfiler::~ZoProfiler() {
    StopMessage();
    --m_nInstance;
}

void ZoProfiler::StartMessage() const {}

void ZoProfiler::StopMessage() {
    const double seconds = timer.CurrentValue();
    if (!profilerEntry.empty()) ZoProfilerSum::Add(profilerEntry, seconds);
}

std::wstring ZoProfiler::GetIndentSpaceStr() {
    return std::wstring(2 * static_cast<std::size_t>(m_nInstance), L' ');
}
