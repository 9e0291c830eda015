#pragma once

#include <map>
#include <string>

#include "zorv/core/debug_output.h"
#include "zorv/core/stopwatch.h"
#include "zorv/export.h"

/// Elapsed seconds summed by name, process-wide.
class ZORV_API ZoProfilerSum {
  public:
    static void Add(const std::wstring& entry, double seconds);
    /// Does nothing; a host that wants the sums reads `sums`.
    static void Dump();

    static std::map<std::wstring, double> sums;
};

/// Measures the time of a scope, from its construction to its end. Silent; with an entry set, the time goes to that
/// sum. Profilers nest.
class ZORV_API ZoProfiler {
  public:
    ZoProfiler();
    explicit ZoProfiler(const std::wstring& text);
    /// Formats by printf's rules, cut to 599 bytes of UTF-8; a leading line end is dropped.
    explicit ZoProfiler(const char* format, ...) ZORV_PRINTF(2, 3);
    virtual ~ZoProfiler();
    ZoProfiler(const ZoProfiler&) = delete;
    ZoProfiler& operator=(const ZoProfiler&) = delete;

    /// The name of the sum to which StopMessage adds; empty for none.
    void SetProfilerEntry(const std::wstring& entry) { profilerEntry = entry; }
    void StartMessage() const;
    void StopMessage();

    /// Living profilers, and two blanks for each of them.
    static int GetIndentSpaceNbr() { return m_nInstance; }
    static std::wstring GetIndentSpaceStr();

    std::wstring message;
    std::wstring profilerEntry;
    ZoDifftime timer;

    static int m_nInstance;
};
