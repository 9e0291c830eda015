#include "zorv/core/platform/local_time.h"

namespace zorv::detail {

bool LocalTime(long long time, std::tm& parts) {
    const std::time_t value = time;
    return ::localtime_r(&value, &parts) != nullptr;
}

}  // namespace zorv::detail
