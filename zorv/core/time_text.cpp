#include "zorv/core/time_text.h"

#include <ctime>

#include "zorv/core/platform/local_time.h"

namespace {

std::string TimeText(long long time, const char* format) {
    std::tm parts{};
    char text[64];
    if (zorv::detail::LocalTime(time, parts) && std::strftime(text, sizeof text, format, &parts)) return text;
    return std::to_string(time);
}

}  // namespace

std::string GetLocalTimeString() {
    return GetLocalTimeString(std::time(nullptr));
}

std::string GetLocalTimeString(long long time) {
    constexpr long long kFirstTime = 1000;
    return time < kFirstTime ? std::to_string(time) : TimeText(time, "%Y-%m-%d  %H:%M:%S");
}

std::string GetLocalTimeStringForFilename() {
    return GetLocalTimeStringForFilename(std::time(nullptr));
}

std::string GetLocalTimeStringForFilename(long long time) {
    return TimeText(time, "%Y-%m-%d__%H_%M_%S");
}
