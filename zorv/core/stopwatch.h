#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "zorv/export.h"

/// A duration split into hours, minutes and seconds.
class ZORV_API ZoHourMinSec {
  public:
    explicit ZoHourMinSec(double duration);  ///< in seconds
    virtual ~ZoHourMinSec() = default;
    ZoHourMinSec(const ZoHourMinSec&) = default;
    ZoHourMinSec& operator=(const ZoHourMinSec&) = default;

    /// "01:02:5.5": two digits each, the seconds with one decimal.
    std::string ValueHMS() const;

    std::int32_t hours = 0;
    std::int32_t minutes = 0;
    double seconds = 0.0;
};

/// A moment as the system clock tells it (UTC); the day of the month plays no part.
struct ZoSystemTime {
    std::int32_t weekday = 0;  ///< 0 is Sunday
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
    std::int32_t millisecond = 0;
};

/// Stopwatch for spans below a week, to the millisecond.
class ZORV_API ZoDifftime {
  public:
    /// Starts.
    ZoDifftime();
    ZoDifftime(const ZoDifftime& other);
    ZoDifftime& operator=(const ZoDifftime& other);
    virtual ~ZoDifftime();

    void Start();
    void Stop();

    /// Seconds from start to stop, or to the last CurrentValue when that came later, from weekday and time of day; 0
    /// when neither came since the start.
    double Value() const;
    /// Seconds from start to now; the watch goes on.
    double CurrentValue();
    void Value(int& hours, int& minutes, double& seconds) const;
    /// As ZoHourMinSec::ValueHMS; empty when the watch is not valid.
    std::string ValueHMS() const;

    bool IsRunning() const { return isRunning; }
    bool IsValid() const { return isValid; }
    void SetValid(bool on) { isValid = on; }

    std::unique_ptr<ZoSystemTime> startTime;
    std::unique_ptr<ZoSystemTime> stopTime;
    bool isRunning = false;
    bool isValid = false;
    std::int64_t startClock = 0;  ///< seconds since 1970
    std::int64_t stopClock = 0;
};
