#include "zorv/core/stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

#include "zorv/core/number_format.h"

namespace {

constexpr double kSecondsPerHour = 3600.0;
constexpr double kSecondsPerMinute = 60.0;
constexpr int kDaysPerWeek = 7;

std::int32_t FloorToInt(double value) {
    if (std::isnan(value)) return 0;
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<double>(std::floor(value), Limits::min(), Limits::max()));
}

void TakeTime(ZoSystemTime& time, std::int64_t& clock) {
    using namespace std::chrono;
    const auto now = floor<milliseconds>(system_clock::now());
    const auto day = floor<days>(now);
    const hh_mm_ss<milliseconds> ofDay(now - day);
    time.weekday = static_cast<std::int32_t>(weekday(day).c_encoding());
    time.hour = static_cast<std::int32_t>(ofDay.hours().count());
    time.minute = static_cast<std::int32_t>(ofDay.minutes().count());
    time.second = static_cast<std::int32_t>(ofDay.seconds().count());
    time.millisecond = static_cast<std::int32_t>(ofDay.subseconds().count());
    clock = floor<seconds>(now).time_since_epoch().count();
}

double SecondsOfWeek(const ZoSystemTime& time, int day) {
    return ((day * 24.0 + time.hour) * 60.0 + time.minute) * 60.0 + time.second + time.millisecond / 1000.0;
}

std::string TwoDigits(std::int32_t value) {
    const std::string digits = std::to_string(value);
    return digits.size() < 2 ? "0" + digits : digits;
}

}  // namespace

ZoHourMinSec::ZoHourMinSec(double duration) {
    hours = FloorToInt(duration / kSecondsPerHour);
    const double rest = duration - hours * kSecondsPerHour;
    minutes = FloorToInt(rest / kSecondsPerMinute);
    seconds = rest - minutes * kSecondsPerMinute;
}

std::string ZoHourMinSec::ValueHMS() const {
    return TwoDigits(hours) + ":" + TwoDigits(minutes) + ":" + zorv::detail::FixedText(seconds, 1);
}

ZoDifftime::ZoDifftime() : startTime(std::make_unique<ZoSystemTime>()), stopTime(std::make_unique<ZoSystemTime>()) {
    Start();
}

ZoDifftime::ZoDifftime(const ZoDifftime& other)
    : startTime(std::make_unique<ZoSystemTime>(*other.startTime)),
      stopTime(std::make_unique<ZoSystemTime>(*other.stopTime)),
      isRunning(other.isRunning),
      isValid(other.isValid),
      startClock(other.startClock),
      stopClock(other.stopClock) {}

ZoDifftime& ZoDifftime::operator=(const ZoDifftime& other) {
    *startTime = *other.startTime;
    *stopTime = *other.stopTime;
    isRunning = other.isRunning;
    isValid = other.isValid;
    startClock = other.startClock;
    stopClock = other.stopClock;
    return *this;
}

ZoDifftime::~ZoDifftime() = default;

void ZoDifftime::Start() {
    TakeTime(*startTime, startClock);
    *stopTime = *startTime;
    stopClock = startClock;
    isRunning = true;
    isValid = true;
}

void ZoDifftime::Stop() {
    isRunning = false;
    TakeTime(*stopTime, stopClock);
}

double ZoDifftime::Value() const {
    int stopDay = stopTime->weekday;
    if (stopDay < startTime->weekday) stopDay += kDaysPerWeek;
    return SecondsOfWeek(*stopTime, stopDay) - SecondsOfWeek(*startTime, startTime->weekday);
}

double ZoDifftime::CurrentValue() {
    TakeTime(*stopTime, stopClock);
    return Value();
}

void ZoDifftime::Value(int& hours, int& minutes, double& seconds) const {
    const ZoHourMinSec split(Value());
    hours = split.hours;
    minutes = split.minutes;
    seconds = split.seconds;
}

std::string ZoDifftime::ValueHMS() const {
    return isValid ? ZoHourMinSec(Value()).ValueHMS() : std::string();
}
