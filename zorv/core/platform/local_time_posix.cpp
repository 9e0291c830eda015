#include "zorv/core/platform/local_time.h"

namespace zorv::detail {

bool LocalTime(long long time, std::tm& parts) {
    const std::time_t value = time;
    return ::localtime_r(&value, &parts) != nullptr;
}

std::tm LocalTimeNow() {
    std::tm parts{};
    LocalTime(std::time(nullptr), parts);
    return parts;
}

std::string CtimeText(const std::tm& time) {
    char text[64] = "";
    return ::asctime_r(&time, text) ? text : std::string();
}

}  // namespace zorv::detail
